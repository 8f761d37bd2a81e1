// The module's field rules, each expectation written out from what the field means.

#include "wire/wire_format.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace quillon::wire {
namespace {

const std::string kP = "\xB6";

TEST(HexField, PaddedCutAndTwosComplement) {
  struct Row {
    std::int64_t value;
    std::size_t digits;
    const char* expected;
  };
  const Row rows[] = {
      {10, 2, "0A"},  {0xAB, 2, "AB"},   {300, 2, "2C"},  // cut to the last two
      {0, 4, "0000"}, {1234, 4, "04D2"}, {65536, 4, "0000"},  {-1, 4, "FFFF"},
      {-2, 2, "FE"},  {0xABC, 3, "ABC"}, {0x12345, 3, "345"}, {32000, 4, "7D00"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(hexField(row.value, row.digits), row.expected) << row.value << "/" << row.digits;
  }
}

TEST(HexField, DigitsWithoutLeadingZeros) {
  const std::pair<std::uint32_t, const char*> rows[] = {
      {0, "0"}, {10, "A"}, {0xAB, "AB"}, {0x100, "100"}, {0xFFFFFFFF, "FFFFFFFF"}};
  for (const auto& [value, expected] : rows) EXPECT_EQ(hexDigits(value), expected) << value;
}

TEST(HexField, ReceivedFieldsReadTheirLeadingDigits) {
  struct Row {
    std::string text;
    unsigned expected;
  };
  const Row rows[] = {
      {"04D2", 1234},
      {"04d2", 1234},
      {"7D00" + kP, 0x7D00},
      {"1G", 1},
      {"", 0},
      {"xyz", 0},
      {" 1", 0},
      {"FFFFFFFF", 0xFFFFFFFF},
      {"123456789", 0xFFFFFFFF},  // saturates instead of wrapping
  };
  for (const auto& row : rows) EXPECT_EQ(hexPrefixValue(row.text), row.expected) << row.text;
}

TEST(HexField, FixedFieldAtOneBasedPosition) {
  struct Row {
    std::size_t position;
    std::size_t width;
    std::string_view expected;
  };
  const Row rows[] = {{1, 2, "AB"}, {2, 3, "BCD"}, {5, 4, "EF"},
                      {6, 1, "F"},  {7, 1, ""},    {0, 2, ""}};
  for (const auto& row : rows) {
    EXPECT_EQ(fixedField("ABCDEF", row.position, row.width), row.expected) << row.position;
  }
}

TEST(PaddedField, FilledOrCutToItsWidth) {
  struct Row {
    std::string_view text;
    std::size_t width;
    std::string expected;
  };
  const Row rows[] = {
      {"123", 5, "123" + kP + kP},
      {"12345678", 5, "12345"},
      {"", 2, kP + kP},
      {"12", 2, "12"},
  };
  for (const auto& row : rows) EXPECT_EQ(padded(row.text, row.width), row.expected) << row.text;
}

TEST(PaddedField, ReadingBackStopsAtThePad) {
  struct Row {
    std::string text;
    std::string withoutPads;
    std::optional<std::string> beforeFirstPad;
  };
  const Row rows[] = {
      {"0171" + kP + kP, "0171", "0171"},
      {kP + "1", kP + "1", ""},
      {"12" + kP + "3" + kP, "12" + kP + "3", "12"},
      {"123", "123", std::nullopt},  // a field without a pad breaks the layout
      {"", "", std::nullopt},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(withoutTrailingPads(row.text), row.withoutPads) << row.text;
    const std::optional<std::string_view> before = beforePad(row.text);
    EXPECT_EQ(before.has_value(), row.beforeFirstPad.has_value()) << row.text;
    if (before && row.beforeFirstPad) {
      EXPECT_EQ(*before, *row.beforeFirstPad) << row.text;
    }
  }
}

TEST(OptionLetter, EveryCombinationOfTheThreeMarks) {
  struct Row {
    char letter;
    bool acknowledge;
    bool callBack;
    bool ring;
  };
  const Row rows[] = {
      {'@', false, false, false}, {'A', true, false, false}, {'B', false, true, false},
      {'C', true, true, false},   {'D', false, false, true}, {'E', true, false, true},
      {'F', false, true, true},   {'G', true, true, true},
  };
  for (const auto& row : rows) {
    const MessageOptions options{row.acknowledge, row.callBack, row.ring};
    EXPECT_EQ(optionLetter(options), row.letter);
    EXPECT_EQ(optionsOfLetter(row.letter), options) << row.letter;
  }
}

TEST(OptionLetter, OtherCharactersCarryNoMarks) {
  for (char letter : {'?', 'H', 'Q', 'a', '\0', '\xC0'}) {
    EXPECT_EQ(optionsOfLetter(letter), std::nullopt) << static_cast<int>(letter);
  }
}

TEST(SemicolonSplit, ProjectRecordsTrimTheFirstPart) {
  struct Row {
    std::string_view body;
    std::string_view before;
    std::string_view after;
  };
  const Row rows[] = {
      {" 12 ;5 x", "12", "5 x"}, {"a;b;c", "a", "b;c"}, {"a;", "a", ""}, {"   ;b", "", "b"},
      {"12", "", "12"},          {"x", "", ""},         {";", "", ""},   {"", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(splitProjectRecord(row.body), (SemicolonSplit{row.before, row.after})) << row.body;
  }
}

TEST(SemicolonSplit, FlagAssignmentsKeepBothParts) {
  struct Row {
    std::string_view entry;
    std::string_view before;
    std::string_view after;
  };
  const Row rows[] = {
      {" 12 ;5", " 12 ", "5"}, {"a;b;c", "a", "b;c"}, {"12", "12", ""},
      {"x", "x", ""},          {";", "", ""},         {"", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(splitFlagAssignment(row.entry), (SemicolonSplit{row.before, row.after})) << row.entry;
  }
}

TEST(SemicolonSplit, UmlautCellsComeOffTheFront) {
  struct Row {
    std::string_view text;
    std::string_view cell;
    std::string_view rest;
  };
  const Row rows[] = {
      {"a;b;", "a", "b;"}, {"abc", "abc", ""}, {";x", "", "x"}, {";", "", ""}, {"", "", ""},
  };
  for (const auto& row : rows) {
    std::string_view rest = row.text;
    EXPECT_EQ(takeUmlautCell(rest), row.cell) << row.text;
    EXPECT_EQ(rest, row.rest) << row.text;
  }
}

}  // namespace
}  // namespace quillon::wire
