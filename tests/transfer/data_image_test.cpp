// The images byte for byte, with every expected byte written out here.

#include "transfer/data_image.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

const std::string kTooMuchText = "Zuviel Text!\rBitte begrenzen Sie Ihre Texte !";

// Shows what a build noted, as a download does, and hands the build on.
template <typename Built>
Built shown(Built built, Bench& bench) {
  showImageNotes(built.notes, bench.dialog, bench.status);
  return built;
}

MessagesImage messagesImage(Bench& bench) {
  return shown(DoMeldSend(bench.project, bench.env.texts, bench.env.limits), bench);
}

std::string phoneImage(Bench& bench, int reported) {
  return shown(DoTelSend(bench.project, bench.env.texts, bench.env.limits, reported), bench).image;
}

TEST(MessagesImage, UmlautsAndEveryOptionCombination) {
  Bench bench;
  Table& m = bench.project.messages;
  m.setCell(1, 1, "x");
  m.setCell(1, 4, "Gr\xFC\xDF\x65");  // Grüße
  m.setCell(2, 2, "x");
  m.setCell(2, 4, "\xD6lstand");
  m.setCell(3, 1, "x");
  m.setCell(3, 2, "x");
  m.setCell(3, 3, "x");
  m.setCell(3, 4, "T\xFCr offen");
  m.setCell(4, 3, "x");  // ring alone is not transmitted
  m.setCell(4, 4, "Alarm \xC4\xDC\xE4\xF6");
  m.setCell(5, 4, "x");
  m.setCell(6, 1, "1");  // any text counts as a mark
  m.setCell(6, 5, "comment stays in the PC");
  m.setCell(7, 4, "a{b;c");
  bench.project.ack = {"*T#", "Danke ??? xx"};
  bench.project.filters.setCell(1, 1, "T\xFCr auf");  // filters are not converted
  bench.project.filters.setCell(1, 2, "filter comment");
  bench.project.filters.setCell(3, 1, "Ein");

  const MessagesImage built = messagesImage(bench);

  EXPECT_EQ(built.failed, 0);
  EXPECT_EQ(built.image, "A;" + kP + "AGr~\x1E\x65" + kP + "B\\lstand" + kP + "CT~r offen" + kP +
                             "@Alarm [^{|" + kP + "@x" + kP + "A" + kP + "@a{b;c" + kP +
                             repeat("@" + kP, 93) + "Q*T# Danke ??? xx" + kP + "T\xFCr auf" + kP +
                             kP + "Ein" + kP + repeat(kP, 7) + kEnd);
  EXPECT_EQ(
      bench.dialog.boxes,
      (std::vector<Box>{{"Kestrix", "Meldungstext in Zeile  4nur 1 Zeichen!", BoxIcon::None}}));
  EXPECT_EQ(bench.status.transfer, std::vector<std::string>{"Meldungen werden zusammengefasst"});
}

TEST(MessagesImage, EmptyAcknowledgementRequestKeepsItsBlank) {
  Bench bench;
  EXPECT_EQ(messagesImage(bench).image,
            "A;" + kP + repeat("@" + kP, 100) + "Q " + kP + repeat(kP, 10) + kEnd);
}

TEST(TextMemory, BoundaryAndTheLoneEndMark) {
  struct Row {
    const char* name;
    std::string image;
    int memory;
    bool tooLong;
  };
  const Row rows[] = {
      {"exactlyFull", std::string(22272, 'a'), 22272, false},
      {"oneOver", std::string(22273, 'a'), 22272, true},
      {"loneEndMarkAlwaysFits", kEnd, 0, false},
      {"endMarkWithMoreFails", kEnd + kEnd, 1, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kGerman, ModuleLimits{.textMemory = row.memory});
    const std::optional<Box> refusal =
        CheckTextMemory(row.image, bench.env.texts, bench.env.limits);
    EXPECT_EQ(refusal, row.tooLong ? std::optional(Box{"Kestrix", kTooMuchText, BoxIcon::Critical})
                                   : std::nullopt);
  }
}

// Empty tables of 100 rows: header 3 + 100 records of 2 + "Q", blank, 182 = 206 characters.
TEST(MessagesImage, WhereTheTextMemoryIsChecked) {
  struct Row {
    const char* name;
    int lastMessageIndex;
    int memory;
    const char* firstMessage;
    std::string firstFilter;
    int failed;
    std::size_t size;  // 0: refused with the box
  };
  const Row rows[] = {
      {"refusedAmongMessages", 99, 10, "Hallo Welt", "", 1, 0},
      {"refusedAfterAckRecordOfBigModule", 399, 500, "", "", 1, 0},
      {"emptyImageAmongFilters", 99, 206, "", "F", 0, 0},
      // 3 + 400 * 2 + 3 = 806 fits; the filters push it past 900 unchecked.
      {"bigModuleUncheckedAmongFilters", 399, 900, "", std::string(150, 'f'), 0, 967},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kGerman, {.textMemory = row.memory, .lastMessageIndex = row.lastMessageIndex});
    bench.project.messages.setCell(1, 4, row.firstMessage);
    bench.project.filters.setCell(1, 1, row.firstFilter);
    const MessagesImage built = messagesImage(bench);
    EXPECT_EQ(built.failed, row.failed);
    EXPECT_EQ(built.image.size(), row.size);
    EXPECT_EQ(bench.dialog.texts(), onlyIf(row.size == 0, kTooMuchText));
  }
}

TEST(PhoneImage, NumbersAreCleanedFittedAndWrittenBack) {
  Bench bench;
  bench.project.smsCentre = " +49 171 0760000";
  Table& t = bench.project.phones;
  t.setCell(1, 1, "0171/123456");
  t.setCell(1, 2, "Meier");
  t.setCell(2, 1, "12");
  t.setCell(3, 1, "+4917112345678901234");
  t.setCell(4, 1, "123456789012345678901");
  t.setCell(5, 1, "1234567890123456789012");
  t.setCell(6, 1, "ab12");

  const std::string image = phoneImage(bench, 60);

  EXPECT_EQ(image, "+491710760000" + repeat(kP, 8) + "0171123456" + repeat(kP, 11) +
                       repeat(kP, 21) + "+4917112345678901234" + kP + "123456789012345678901" +
                       "123456789012345678901" + "b12" + repeat(kP, 18) + repeat(kP, 21 * 54) +
                       repeat(kP, 20) + kEnd);
  EXPECT_EQ(image.size(), 1302U);
  EXPECT_EQ(bench.project.smsCentre, "+491710760000");
  EXPECT_EQ(t.cell(1, 1), "0171123456");
  EXPECT_EQ(t.cell(1, 2), "Meier");
  EXPECT_EQ(t.cell(2, 1), "");
  EXPECT_EQ(t.cell(5, 1), "1234567890123456789012");
  EXPECT_EQ(t.cell(6, 1), "b12");
  EXPECT_EQ(bench.project.phoneSuffix, repeat(kP, 20));
  // The number check warns about the SMS centre, row 1 and row 6; this image adds nothing.
  EXPECT_EQ(bench.dialog.boxes.size(), 3U);
  EXPECT_EQ(bench.status.transfer,
            (std::vector<std::string>{"Telefonnummern werden zusammengefasst", "fertig ..."}));
}

TEST(PhoneImage, WarningsNeverStopTheBuild) {
  const Box wrongCount{"Download Telefonnummern", "Falsche Anzahl von Telefonnummern",
                       BoxIcon::Exclamation};
  const Box checkCentre{"Kestrix",
                        "Bitte \xFC"
                        "berpr\xFC"
                        "fen: Telefonnummer des SMSC",
                        BoxIcon::Exclamation};
  struct Row {
    const char* name;
    int reported;  // 0: the module did not say
    const char* centre;
    const char* sent;  // the centre's field up to its pads
    bool wrongCountShown;
    bool checkCentreShown;
  };
  const Row rows[] = {
      {"tooManyReported", 62, "+49171", "+49171", true, false},
      {"emptyCentre", 0, "", "", false, true},
      {"twoCharactersAreDropped", 61, "12", "", true, true},
      {"threeCharactersAreSentButChecked", 0, "123", "123", false, true},
      {"fourCharactersPass", 0, "1234", "1234", false, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.smsCentre = row.centre;
    const std::string image = phoneImage(bench, row.reported);
    EXPECT_EQ(image.size(), 1302U);
    EXPECT_EQ(image.substr(0, image.find(kP)), row.sent);
    std::vector<Box> expected = onlyIf(row.wrongCountShown, wrongCount);
    if (row.checkCentreShown) expected.push_back(checkCentre);
    EXPECT_EQ(bench.dialog.boxes, expected);
  }
}

TEST(ControllerDataImage, RecordsAndReceptionField) {
  struct Row {
    const char* name;
    std::vector<std::pair<int, std::string>> entries;
    std::string records;  // ten characters each: flag, message, phone, 00
    std::string reception;
  };
  const Row rows[] = {
      {"noFlags", {}, "", "00"},
      {"ascendingWithReception",
       {{32, "400;60"}, {10, "07;3"}, {7, "-2;-1"}, {3, "12;5"}, {5, "-1;-1"}},
       "03000C0500"
       "0A00070300"
       "2001903C00",
       "07"},
      {"lastReceptionWins", {{4, "-2;-1"}, {20, "-2;-1"}}, "", "14"},
      {"blanksAroundMessageNumber", {{1, " 9 ;2"}}, "0100090200", "00"},
      {"otherNegativeSkipped", {{2, "-5;1"}}, "", "00"},
      {"fieldsCutToTheirWidth", {{1, "70000;300"}}, "0111702C00", "00"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    FlagTable flags;
    for (const auto& [index, entry] : row.entries)
      flags.entries[static_cast<std::size_t>(index)] = entry;
    EXPECT_EQ(controllerDataImage(flags), row.records + kP + row.reception + kP + kEnd);
  }
}

TEST(Handover, SplitAndStartIdentifier) {
  struct Row {
    char kind;
    std::size_t length;
    std::string identifier;
    std::size_t second;  // length of the second part
  };
  const Row rows[] = {
      {'P', 9, "P0009", 0},
      {'M', 32000, "M7D00", 0},
      {'M', 32001, "M7D01", 1},
      {'M', 40000, "M9C40", 8000},
      {'M', 65535, "MFFFF", 33535},
      {'M', 65536, "M0000", 33536},  // the length is cut to four hex digits
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.identifier);
    std::string image(row.length, 'x');
    image.back() = '\xFD';
    const TransferJob job = downloadJob(row.kind, "Messages", image);
    EXPECT_EQ(job.direction, TransferDirection::Download);
    EXPECT_EQ(job.contentLabel, "Messages");
    EXPECT_EQ(job.startIdentifier, row.identifier);
    EXPECT_EQ(job.sendText2.size(), row.second);
    EXPECT_EQ(job.sendText + job.sendText2, image);
  }
}

}  // namespace
}  // namespace quillon::testing
