// Received images into the project: the layouts, the option letters, the receive boxes, and
// input that breaks every rule.

#include "transfer/image_parse.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

std::array<std::string, kReceiveBoxes> inFirstBox(std::string text) {
  return {std::move(text), {}, {}, {}, {}};
}

TEST(ParseMessages, OptionLettersTextsAckRequestAndFilters) {
  Bench bench;
  Table& m = bench.project.messages;
  m.setCell(1, 3, "x");  // emptied by the upload
  m.setCell(1, 5, "comment kept");
  m.setCell(6, 4, "row not in the image stays");
  bench.project.filters.setCell(2, 1, "old filter");
  // The first record spans boxes 1 to 3, the second boxes 3 and 5 with box 4 empty. "A" and "B"
  // tell acknowledgement from call back, which the symmetric "C", "G" and "D" cannot.
  const std::array<std::string, kReceiveBoxes> received = {
      "A;" + kP + "CGr", "~\x1E", "\x65" + kP + "GT~r", "",
      " [^\\" + kP + "D" + kP + "Aa" + kP + "Bb" + kP + kEnd};
  const MessagesParse parsed = parseMessages(received, bench.project, bench.env);
  EXPECT_TRUE(parsed.endMarkSeen);
  EXPECT_FALSE(parsed.malformed);
  const char* expected[6][5] = {{"x", "x", "", "Gr\xFC\xDF\x65", "comment kept"},
                                {"x", "x", "x", "T\xFCr \xC4\xDC\xD6", ""},
                                {"", "", "x", "", ""},
                                {"x", "", "", "a", ""},
                                {"", "x", "", "b", ""},
                                {"", "", "", "row not in the image stays", ""}};
  for (int row = 1; row <= 6; ++row) {
    for (int column = 1; column <= 5; ++column) {
      EXPECT_EQ(m.cell(row, column), expected[row - 1][column - 1]) << row << "/" << column;
    }
  }
  EXPECT_EQ(bench.project.filters.cell(2, 1), "old filter");
  EXPECT_TRUE(bench.dialog.boxes.empty());
  EXPECT_EQ(bench.status.transfer, std::vector<std::string>{"Tabellen beschreiben"});
}

// Images of every length and shape: the "Q" record, images of another module size than the
// table, and images cut short. Before parsing, message 3 holds "stays", filter 1 "old" and the
// acknowledgement pair is "old pair".
TEST(ParseMessages, ImageShapes) {
  const std::string empty100 = "A;" + kP + repeat("@" + kP, 100);
  struct Row {
    const char* name;
    int lastMessageIndex;
    std::string image;
    bool endMark;
    bool malformed;
    const char* ackFirst;
    const char* ackSecond;
    int row;  // a message text afterwards
    const char* text;
    const char* filter;
  };
  const Row rows[] = {
      {"emptyPair", 99, empty100 + "Q " + repeat(kP, 11) + kEnd, true, false, "", "", 3, "", ""},
      {"splitAtFirstBlank", 99, empty100 + "Q*T# a b" + repeat(kP, 11) + kEnd, true, false, "*T#",
       "a b", 3, "", ""},
      {"noBlankKeepsThePair", 99, empty100 + "Qabc" + repeat(kP, 11) + kEnd, true, false, "old",
       "pair", 3, "", ""},
      {"surplusRecordsPassedOver", 99,
       "A;" + kP + repeat("@m" + kP, 100) + "@surplus" + kP + "Qa b" + kP + "f" + kP + kEnd, true,
       false, "a", "b", 100, "m", "f"},
      {"shortImageEndsAtQ", 399, "A;" + kP + "@m" + kP + "@m" + kP + "Qa b" + kP + "f" + kP + kEnd,
       true, false, "a", "b", 3, "stays", "f"},
      {"cutInsideRecord", 99, "A;" + kP + "@a" + kP + "@hal", false, true, "old", "pair", 1, "a",
       "old"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kGerman, {.lastMessageIndex = row.lastMessageIndex});
    bench.project.messages.setCell(3, 4, "stays");
    bench.project.filters.setCell(1, 1, "old");
    bench.project.ack = {"old", "pair"};
    const MessagesParse parsed = parseMessages(inFirstBox(row.image), bench.project, bench.env);
    EXPECT_EQ(parsed.endMarkSeen, row.endMark);
    EXPECT_EQ(parsed.malformed, row.malformed);
    EXPECT_EQ(bench.project.ack, (AckRequest{row.ackFirst, row.ackSecond}));
    EXPECT_EQ(bench.project.messages.cell(row.row, 4), row.text);
    EXPECT_EQ(bench.project.filters.cell(1, 1), row.filter);
    EXPECT_EQ(bench.dialog.texts(),
              onlyIf(row.malformed, std::string("Beim Laden der Meldungen gab es einen Fehler. "
                                                "\rBitte korrigieren.")));
  }
}

TEST(ParsePhoneNumbers, FieldsIntoTheCentreAndTheTable) {
  struct Row {
    const char* name;
    std::string text;
    std::string centre;
    std::string row1;
    std::string row2;
    bool box;
  };
  const std::string full = "+491710760000" + repeat(kP, 8) + repeat(kP, 21) +
                           "123456789012345678901" + repeat(kP, 21 * 58) + repeat(kP, 20) + kEnd;
  const Row rows[] = {
      // A 21-character number has no separator left: the field breaks the layout.
      {"fullImage", full, "+491710760000", "", "old2", true},
      {"padOnlyFieldEmptiesTheCell", repeat(kP, 42), "", "", "old2", false},
      {"shortTextLeavesTheRest", "0171" + kP, "0171", "old1", "old2", false},
      {"fieldWithoutSeparator", std::string(63, '9'), "old", "old1", "old2", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.smsCentre = "old";
    bench.project.phones.setCell(1, 1, "old1");
    bench.project.phones.setCell(2, 1, "old2");
    bench.project.phones.setCell(2, 2, "name");
    parsePhoneNumbers(row.text, bench.project, bench.env);
    EXPECT_EQ(bench.project.smsCentre, row.centre);
    EXPECT_EQ(bench.project.phones.cell(1, 1), row.row1);
    EXPECT_EQ(bench.project.phones.cell(2, 1), row.row2);
    EXPECT_EQ(bench.project.phones.cell(2, 2), "name");
    EXPECT_EQ(
        bench.dialog.boxes,
        onlyIf(row.box, Box{"Kestrix", "Fehler beim Laden der Telefonnummer \rBitte korrigieren.",
                            BoxIcon::Exclamation}));
  }
}

TEST(ParseConfiguration, PinFromCharactersFourToSeven) {
  struct Row {
    const char* name;
    std::string text;
    std::string pin;
  };
  const Row rows[] = {
      {"leadingFieldIgnoredZerosKept", "17" + kP + "0042" + kP + kEnd, "0042"},
      {"shortPinBreaksTheLayout", "00" + kP + "12" + kP + kEnd, "____"},
      {"placeholderPin", "00" + kP + "____" + kP + kEnd, "____"},
      {"truncated", "00" + kP, "____"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    parseConfiguration(row.text, bench.project, bench.env);
    EXPECT_EQ(bench.project.pin, row.pin);
    EXPECT_EQ(bench.dialog.boxes,
              onlyIf(row.pin == "____", Box{"Kestrix",
                                            "Beim Laden der Konfiguration gab es einen Fehler. \r"
                                            "Daten bitte korrigieren.",
                                            BoxIcon::Exclamation}));
  }
}

// Every entry not listed must be "-1;-1"; entry 9 is set before, and parsing clears it.
TEST(ParseControllerData, RecordsReceptionFieldAndMalformedInput) {
  const auto image = [](const std::string& records, const std::string& reception) {
    return records + kP + reception + kP + kEnd;
  };
  const std::string badReception = "Das Empfangsflag-Feld der Merkertabelle ist fehlerhaft.";
  struct Row {
    const char* name;
    std::string text;
    std::vector<std::pair<int, std::string>> entries;
    std::string box;
  };
  const Row rows[] = {
      {"recordsAndReception",
       image("03000C0500"
             "2001903C00",
             "07"),
       {{3, "12;5"}, {32, "400;60"}, {7, "-2;-1"}},
       ""},
      {"noReceptionFlagWritesEntryZero", image("", "00"), {{0, "-2;-1"}}, ""},
      {"receptionOnTheLastFlag", image("", "20"), {{32, "-2;-1"}}, ""},
      {"receptionFieldOfOneCharacter", image("", "7"), {{7, "-2;-1"}}, badReception},
      {"indexAboveHundredEndsParsing",
       image("0100010100"
             "FF00010100"
             "0200020200",
             "05"),
       {{1, "1;1"}},
       "Ung\xFCltiger Merker 255 in der Merkertabelle."},
      {"indexHundredIsInRange", image("6400010100", "00"), {{100, "1;1"}, {0, "-2;-1"}}, ""},
      {"noSeparatorAtAll", "030001", {}, badReception},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.flags.entries[9] = "4;4";
    bench.project.flags.used[9] = true;
    parseControllerData(row.text, bench.project.flags, bench.env);
    FlagTable expected;
    for (const auto& [index, entry] : row.entries) {
      const auto at = static_cast<std::size_t>(index);
      expected.entries[at] = entry;
      // Only a record marks its flag as in use, never the reception field.
      if (at >= 1 && at <= 32 && entry != "-2;-1") expected.used[at] = true;
    }
    EXPECT_EQ(bench.project.flags, expected);
    EXPECT_EQ(bench.dialog.texts(), onlyIf(!row.box.empty(), row.box));
  }
}

// Truncated and garbage input: every parser survives it and shows at most one box.
TEST(Parsers, SurviveAnyInput) {
  const std::string messages = "A;" + kP + "CText" + kP + "Qa b" + kP + "f" + kP + kEnd;
  std::vector<std::string> inputs = {std::string("\x00\x01\xFF", 3), repeat(kP + kEnd, 50),
                                     std::string(5000, '7'), repeat("FFFFFFFFFF", 40) + kP, ""};
  for (unsigned i = 0, state = 12345; i < 3000; ++i, state = state * 1103515245U + 12345U)
    inputs.back() += static_cast<char>((state >> 16U) & 0xFFU);
  for (std::size_t cut = 0; cut <= messages.size(); ++cut)
    inputs.push_back(messages.substr(0, cut));
  using Parser = void (*)(const std::string&, Bench&);
  const Parser parsers[] = {
      [](const std::string& t, Bench& b) { (void)parseMessages(inFirstBox(t), b.project, b.env); },
      [](const std::string& t, Bench& b) { parsePhoneNumbers(t, b.project, b.env); },
      [](const std::string& t, Bench& b) { parseConfiguration(t, b.project, b.env); },
      [](const std::string& t, Bench& b) { parseControllerData(t, b.project.flags, b.env); }};
  for (const std::string& text : inputs) {
    for (const Parser parse : parsers) {
      Bench bench;
      parse(text, bench);
      EXPECT_LE(bench.dialog.boxes.size(), 1U) << text.substr(0, 40);
    }
  }
}

}  // namespace
}  // namespace quillon::testing
