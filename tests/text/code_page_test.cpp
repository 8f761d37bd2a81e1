#include "text/code_page.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace quillon {
namespace {

TEST(CodePage, BytesAndTheirCharacters) {
  struct Case {
    const char* name;
    unsigned char byte;
    char32_t code;
  };
  const Case cases[] = {
      {"nul", 0x00, 0x0000},          {"ascii", 0x41, 0x0041},
      {"delete", 0x7F, 0x007F},       {"euro", 0x80, 0x20AC},
      {"undefined81", 0x81, 0x0081},  {"lowQuote", 0x82, 0x201A},
      {"ellipsis", 0x85, 0x2026},     {"capitalSCaron", 0x8A, 0x0160},
      {"undefined8D", 0x8D, 0x008D},  {"capitalZCaron", 0x8E, 0x017D},
      {"undefined8F", 0x8F, 0x008F},  {"undefined90", 0x90, 0x0090},
      {"rightQuote", 0x92, 0x2019},   {"trademark", 0x99, 0x2122},
      {"undefined9D", 0x9D, 0x009D},  {"capitalYDiaeresis", 0x9F, 0x0178},
      {"noBreakSpace", 0xA0, 0x00A0}, {"degree", 0xB0, 0x00B0},
      {"pilcrow", 0xB6, 0x00B6},      {"aUmlaut", 0xE4, 0x00E4},
      {"yDiaeresis", 0xFF, 0x00FF},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(cp1252ToUnicode(c.byte), c.code);
    EXPECT_EQ(unicodeToCp1252(c.code), std::optional<unsigned char>(c.byte));
  }
}

TEST(CodePage, CharactersWithoutAByte) {
  // U+0080 is the one C1 control whose byte 0x80 holds the euro sign instead.
  for (char32_t code : {char32_t{0x0080}, char32_t{0x009F}, char32_t{0x0100}, char32_t{0x03A9},
                        char32_t{0xFFFD}, char32_t{0x1F600}}) {
    EXPECT_EQ(unicodeToCp1252(code), std::nullopt) << static_cast<unsigned>(code);
  }
}

TEST(CodePage, EveryByteSurvivesARoundTripThroughUtf8) {
  std::string all;
  for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(utf8ToCp1252(cp1252ToUtf8(all)), all);
}

TEST(CodePage, ToUtf8) {
  EXPECT_EQ(cp1252ToUtf8("Gr\xFC\xDF"
                         "e"),
            "Gr\xC3\xBC\xC3\x9F"
            "e");
  EXPECT_EQ(cp1252ToUtf8("\x80\x85\xB0"), "\xE2\x82\xAC\xE2\x80\xA6\xC2\xB0");
  EXPECT_EQ(cp1252ToUtf8("\x81"), "\xC2\x81");
  EXPECT_EQ(cp1252ToUtf8(""), "");
}

TEST(CodePage, FromUtf8) {
  struct Case {
    const char* name;
    std::string utf8;
    std::string cp1252;
  };
  const Case cases[] = {
      {"plainAscii", "Meldung 1", "Meldung 1"},
      {"umlauts",
       "Gr\xC3\xBC\xC3\x9F"
       "e",
       "Gr\xFC\xDF"
       "e"},
      {"euroAndEllipsis", "\xE2\x82\xAC \xE2\x80\xA6", "\x80 \x85"},
      {"degreeSign", "N\xC2\xB0", "N\xB0"},
      {"omegaHasNoByte", "\xCE\xA9", "?"},
      {"emojiHasNoByte",
       "a\xF0\x9F\x98\x80"
       "b",
       "a?b"},
      {"loneLatin1ByteKept", "M\xFCller", "M\xFCller"},
      {"truncatedSequenceKept", "a\xC3", "a\xC3"},
      {"badContinuationKept", "\xC3(", "\xC3("},
      {"strayContinuationKept", "\x80x", "\x80x"},
      {"empty", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(utf8ToCp1252(c.utf8), c.cp1252);
  }
}

}  // namespace
}  // namespace quillon
