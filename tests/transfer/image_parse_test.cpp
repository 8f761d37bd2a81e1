// Received images into the project: the layouts, the option letters, the receive boxes, and
// input that breaks every rule.

#include "transfer/image_parse.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

const std::string kP = "\xB6";
const std::string kEnd = "\xFD";

std::array<std::string, kReceiveBoxes> inFirstBox(std::string text) {
  return {std::move(text), {}, {}, {}, {}};
}

TEST(ParseMessages, OptionLettersTextsAckRequestAndFilters) {
  Bench bench;
  Table& m = bench.project.messages;
  m.setCell(1, 3, "x");  // emptied by the upload
  m.setCell(1, 5, "comment kept");
  m.setCell(4, 4, "row not in the image stays");
  bench.project.filters.setCell(2, 1, "old filter");
  const std::string image = "A;" + kP +  //
                            "CGr~\x1E"
                            "e" +
                            kP +                //
                            "GT~r [^\\" + kP +  //
                            "D" + kP +          //
                            kEnd;
  ImageEnv env = bench.env();
  const MessagesParse parsed = parseMessages(inFirstBox(image), bench.project, env);
  EXPECT_TRUE(parsed.endMarkSeen);
  EXPECT_FALSE(parsed.malformed);
  EXPECT_EQ(m.cell(1, 1), "x");
  EXPECT_EQ(m.cell(1, 2), "x");
  EXPECT_EQ(m.cell(1, 3), "");
  EXPECT_EQ(m.cell(1, 4),
            "Gr\xFC\xDF"
            "e");
  EXPECT_EQ(m.cell(1, 5), "comment kept");
  EXPECT_EQ(m.cell(2, 1), "x");
  EXPECT_EQ(m.cell(2, 2), "x");
  EXPECT_EQ(m.cell(2, 3), "x");
  EXPECT_EQ(m.cell(2, 4), "T\xFCr \xC4\xDC\xD6");
  EXPECT_EQ(m.cell(3, 1), "");
  EXPECT_EQ(m.cell(3, 2), "");
  EXPECT_EQ(m.cell(3, 3), "x");
  EXPECT_EQ(m.cell(3, 4), "");
  EXPECT_EQ(m.cell(4, 4), "row not in the image stays");
  EXPECT_EQ(bench.project.filters.cell(2, 1), "old filter");
  EXPECT_TRUE(bench.dialog.boxes.empty());
  EXPECT_EQ(bench.status.panel(StatusPanel::Transfer),
            std::vector<std::string>{"Tabellen beschreiben"});
}

TEST(ParseMessages, AckRecordVariants) {
  struct Row {
    const char* name;
    std::string record;
    AckRequest ack;
  };
  const Row rows[] = {
      {"emptyPair", "Q ", {"", ""}},
      {"splitAtFirstBlank", "Q*T# a b", {"*T#", "a b"}},
      {"noBlankKeepsThePair", "Qabc", {"old", "pair"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.ack = {"old", "pair"};
    const std::string image =
        "A;" + kP + repeat("@" + kP, 100) + row.record + kP + repeat(kP, 10) + kEnd;
    ImageEnv env = bench.env();
    (void)parseMessages(inFirstBox(image), bench.project, env);
    EXPECT_EQ(bench.project.ack, row.ack);
  }
}

TEST(ParseMessages, RecordsSpanTheFiveReceiveBoxes) {
  Bench bench;
  // One record split over boxes 1 to 3, the next split over boxes 3 and 5 with box 4 empty.
  const std::array<std::string, kReceiveBoxes> received = {
      "A;" + kP + "AEr", "ster ", "Text" + kP + "BZwei", "", "ter" + kP + kEnd};
  ImageEnv env = bench.env();
  const MessagesParse parsed = parseMessages(received, bench.project, env);
  EXPECT_TRUE(parsed.endMarkSeen);
  EXPECT_EQ(bench.project.messages.cell(1, 4), "Erster Text");
  EXPECT_EQ(bench.project.messages.cell(1, 1), "x");
  EXPECT_EQ(bench.project.messages.cell(2, 4), "Zweiter");
  EXPECT_EQ(bench.project.messages.cell(2, 2), "x");
}

TEST(ParseMessages, BigModuleRecordsBeyondTheTableArePassedOver) {
  Bench bench;  // 100 rows
  const std::string image =
      "A;" + kP + repeat("@m" + kP, 100) + "@surplus" + kP + "Qa b" + kP + "filter" + kP + kEnd;
  ImageEnv env = bench.env();
  (void)parseMessages(inFirstBox(image), bench.project, env);
  EXPECT_EQ(bench.project.messages.cell(100, 4), "m");
  EXPECT_EQ(bench.project.ack, (AckRequest{"a", "b"}));
  EXPECT_EQ(bench.project.filters.cell(1, 1), "filter");
}

TEST(ParseMessages, SmallModuleImageInABigTableEndsAtTheAckRecord) {
  ModuleLimits limits;
  limits.lastMessageIndex = 399;
  Bench bench(kGerman, limits);
  bench.project.messages.setCell(3, 4, "stays");
  const std::string image = "A;" + kP + "@a" + kP + "@b" + kP + "Qx y" + kP + "f" + kP + kEnd;
  ImageEnv env = bench.env();
  const MessagesParse parsed = parseMessages(inFirstBox(image), bench.project, env);
  EXPECT_TRUE(parsed.endMarkSeen);
  EXPECT_EQ(bench.project.messages.cell(2, 4), "b");
  EXPECT_EQ(bench.project.messages.cell(3, 4), "stays");
  EXPECT_EQ(bench.project.ack, (AckRequest{"x", "y"}));
  EXPECT_EQ(bench.project.filters.cell(1, 1), "f");
}

TEST(ParsePhoneNumbers, FieldsIntoTheCentreAndTheTable) {
  struct Row {
    const char* name;
    std::string text;
    std::string centre;
    std::string row1;
    std::string row2;
    std::size_t boxes;
  };
  const std::string full = "+491710760000" + repeat(kP, 8) + repeat(kP, 21) +
                           "123456789012345678901" + repeat(kP, 21 * 58) + repeat(kP, 20) + kEnd;
  const Row rows[] = {
      // A 21-character number has no separator left: the field breaks the layout.
      {"fullImage", full, "+491710760000", "", "old2", 1},
      {"padOnlyFieldEmptiesTheCell", repeat(kP, 21) + repeat(kP, 21), "", "", "old2", 0},
      {"shortTextLeavesTheRest", "0171" + kP, "0171", "old1", "old2", 0},
      {"emptyText", "", "old", "old1", "old2", 0},
      {"fieldWithoutSeparatorShowsOneBox", std::string(63, '9'), "old", "old1", "old2", 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.smsCentre = "old";
    bench.project.phones.setCell(1, 1, "old1");
    bench.project.phones.setCell(2, 1, "old2");
    bench.project.phones.setCell(2, 2, "name");
    ImageEnv env = bench.env();
    parsePhoneNumbers(row.text, bench.project, env);
    EXPECT_EQ(bench.project.smsCentre, row.centre);
    EXPECT_EQ(bench.project.phones.cell(1, 1), row.row1);
    EXPECT_EQ(bench.project.phones.cell(2, 1), row.row2);
    EXPECT_EQ(bench.project.phones.cell(2, 2), "name");
    ASSERT_EQ(bench.dialog.boxes.size(), row.boxes);
    if (row.boxes > 0) {
      EXPECT_EQ(bench.dialog.boxes[0],
                (Box{"Kestrix", "Fehler beim Laden der Telefonnummer \rBitte korrigieren.",
                     BoxIcon::Exclamation}));
    }
  }
}

TEST(ParseConfiguration, PinFromCharactersFourToSeven) {
  struct Row {
    const char* name;
    std::string text;
    std::string pin;
    bool box;
  };
  const Row rows[] = {
      {"leadingZerosKept", "00" + kP + "0042" + kP + kEnd, "0042", false},
      {"leadingFieldIgnored", "17" + kP + "1234" + kP + kEnd, "1234", false},
      {"shortPinBreaksTheLayout", "00" + kP + "12" + kP + kEnd, "____", true},
      {"placeholderPin", "00" + kP + "____" + kP + kEnd, "____", true},
      {"truncated", "00" + kP, "____", true},
      {"empty", "", "____", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    ImageEnv env = bench.env();
    parseConfiguration(row.text, bench.project, env);
    EXPECT_EQ(bench.project.pin, row.pin);
    if (row.box) {
      const Box expected{"Kestrix",
                         "Beim Laden der Konfiguration gab es einen Fehler. \r"
                         "Daten bitte korrigieren.",
                         BoxIcon::Exclamation};
      EXPECT_EQ(bench.dialog.boxes, std::vector<Box>{expected});
    } else {
      EXPECT_TRUE(bench.dialog.boxes.empty());
    }
  }
}

TEST(ParseControllerData, RecordsAndReceptionField) {
  Bench bench;
  bench.project.flags.entries[9] = "4;4";
  bench.project.flags.used[9] = true;
  ImageEnv env = bench.env();
  parseControllerData(
      "03000C0500"
      "2001903C00" +
          kP + "07" + kP + kEnd,
      bench.project.flags, env);
  FlagTable expected;
  expected.entries[3] = "12;5";
  expected.used[3] = true;
  expected.entries[32] = "400;60";
  expected.used[32] = true;
  expected.entries[7] = "-2;-1";
  EXPECT_EQ(bench.project.flags, expected);
  EXPECT_TRUE(bench.dialog.boxes.empty());
}

TEST(ParseControllerData, NoReceptionFlagWritesEntryZero) {
  Bench bench;
  ImageEnv env = bench.env();
  parseControllerData(kP + "00" + kP + kEnd, bench.project.flags, env);
  FlagTable expected;
  expected.entries[0] = "-2;-1";
  EXPECT_EQ(bench.project.flags, expected);
}

TEST(ParseControllerData, MalformedInput) {
  struct Row {
    const char* name;
    int language;
    std::string text;
    std::vector<std::pair<int, std::string>> entries;  // besides "-1;-1"
    std::string box;
  };
  const Row rows[] = {
      {"receptionFieldOfOneCharacter",
       kGerman,
       kP + "7" + kP + kEnd,
       {{7, "-2;-1"}},
       "Das Empfangsflag-Feld der Merkertabelle ist fehlerhaft."},
      {"receptionFieldInEnglish",
       kEnglish,
       kP + "123" + kP + kEnd,
       {},
       "The reception flag field of the flag table is malformed."},
      {"indexAboveHundredEndsParsing",
       kGerman,
       "0100010100"
       "FF00010100"
       "0200020200" +
           kP + "05" + kP + kEnd,
       {{1, "1;1"}},
       "Ung\xFCltiger Merker 255 in der Merkertabelle."},
      {"indexHundredIsInRange",
       kGerman,
       "6400010100" + kP + "00" + kP + kEnd,
       {{100, "1;1"}, {0, "-2;-1"}},
       ""},
      {"nonHexDigitsReadAsZero", kGerman, "zz00zz0100" + kP + "00" + kP + kEnd, {{0, "-2;-1"}}, ""},
      {"noSeparatorAtAll",
       kGerman,
       "030001",
       {{0, "-1;-1"}, {3, "-1;-1"}},
       "Das Empfangsflag-Feld der Merkertabelle ist fehlerhaft."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(row.language);
    ImageEnv env = bench.env();
    parseControllerData(row.text, bench.project.flags, env);
    for (const auto& [index, entry] : row.entries) {
      EXPECT_EQ(bench.project.flags.entries[static_cast<std::size_t>(index)], entry) << index;
    }
    if (row.box.empty()) {
      EXPECT_TRUE(bench.dialog.boxes.empty());
    } else {
      EXPECT_EQ(bench.dialog.texts(), std::vector<std::string>{row.box});
    }
  }
}

// Truncated and garbage input: every parser survives it and shows at most one box.
TEST(Parsers, SurviveAnyInput) {
  const std::string messages = "A;" + kP + "CText" + kP + "Qa b" + kP + "f" + kP + kEnd;
  std::vector<std::pair<std::string, std::string>> inputs = {
      {"empty", ""},
      {"endMarkOnly", kEnd},
      {"separatorOnly", kP},
      {"headerWithoutSeparator", "A;"},
      {"controlBytes", std::string("\x00\x01\x02\xFF\xFE", 5)},
      {"separatorsAndEndMarks", repeat(kP + kEnd, 50)},
      {"longDigits", std::string(5000, '7')},
      {"hexLetters", repeat("FFFFFFFFFF", 40) + kP},
  };
  for (std::size_t cut = 0; cut <= messages.size(); ++cut) {
    inputs.emplace_back("messagesCutAt" + std::to_string(cut), messages.substr(0, cut));
  }
  std::string noise;
  unsigned state = 12345;
  for (int i = 0; i < 3000; ++i) {
    state = state * 1103515245U + 12345U;
    noise += static_cast<char>((state >> 16U) & 0xFFU);
  }
  inputs.emplace_back("noise", noise);

  for (const auto& [name, text] : inputs) {
    SCOPED_TRACE(name);
    Bench bench;
    ImageEnv env = bench.env();
    (void)parseMessages(inFirstBox(text), bench.project, env);
    EXPECT_LE(bench.dialog.boxes.size(), 1U);
    bench.dialog.boxes.clear();
    parsePhoneNumbers(text, bench.project, env);
    EXPECT_LE(bench.dialog.boxes.size(), 1U);
    bench.dialog.boxes.clear();
    parseConfiguration(text, bench.project, env);
    EXPECT_LE(bench.dialog.boxes.size(), 1U);
    bench.dialog.boxes.clear();
    parseControllerData(text, bench.project.flags, env);
    EXPECT_LE(bench.dialog.boxes.size(), 1U);
  }
}

TEST(ParseMessages, TruncatedImageReportsWhatHappened) {
  struct Row {
    const char* name;
    std::string text;
    bool endMark;
    bool malformed;
  };
  const Row rows[] = {
      {"cutAtRecordBoundary", "A;" + kP + "@a" + kP, false, false},
      {"cutInsideRecord", "A;" + kP + "@a" + kP + "@hal", false, true},
      {"endMarkAfterTwoRows", "A;" + kP + "@a" + kP + "@b" + kP + kEnd, true, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    ImageEnv env = bench.env();
    const MessagesParse parsed = parseMessages(inFirstBox(row.text), bench.project, env);
    EXPECT_EQ(parsed.endMarkSeen, row.endMark);
    EXPECT_EQ(parsed.malformed, row.malformed);
    EXPECT_EQ(bench.project.messages.cell(1, 4), "a");
    if (row.malformed) {
      EXPECT_EQ(bench.dialog.texts(),
                std::vector<std::string>{
                    "Beim Laden der Meldungen gab es einen Fehler. \rBitte korrigieren."});
    }
  }
}

}  // namespace
}  // namespace quillon::testing
