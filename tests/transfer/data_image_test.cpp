// The images byte for byte, with every expected byte written out here.

#include "transfer/data_image.h"

#include <gtest/gtest.h>

#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

const std::string kP = "\xB6";  // pad and separator
const std::string kEnd = "\xFD";

TEST(MessagesImage, UmlautsAndEveryOptionCombination) {
  Bench bench;
  Table& m = bench.project.messages;
  m.setCell(1, 1, "x");
  m.setCell(1, 4,
            "Gr\xFC\xDF"
            "e");  // Grüße
  m.setCell(2, 2, "x");
  m.setCell(2, 4, "\xD6lstand");  // Ölstand
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

  ImageEnv env = bench.env();
  const MessagesImage built = DoMeldSend(bench.project, env);

  const std::string expected = "A;" + kP +  //
                               "AGr~\x1E"
                               "e" +
                               kP +                                   //
                               "B\\lstand" + kP +                     //
                               "CT~r offen" + kP +                    //
                               "@Alarm [^{|" + kP +                   //
                               "@x" + kP +                            //
                               "A" + kP +                             //
                               "@a{b;c" + kP +                        //
                               repeat("@" + kP, 93) +                 //
                               "Q*T# Danke ??? xx" + kP +             //
                               "T\xFCr auf" + kP + kP + "Ein" + kP +  //
                               repeat(kP, 7) + kEnd;
  EXPECT_EQ(built.failed, 0);
  EXPECT_EQ(built.image, expected);
  ASSERT_EQ(bench.dialog.boxes.size(), 1U);
  EXPECT_EQ(bench.dialog.boxes[0],
            (Box{"Kestrix", "Meldungstext in Zeile  4nur 1 Zeichen!", BoxIcon::None}));
  EXPECT_EQ(bench.status.panel(StatusPanel::Transfer),
            std::vector<std::string>{"Meldungen werden zusammengefasst"});
}

TEST(MessagesImage, EmptyProjectAndEmptyAcknowledgementRequest) {
  Bench bench;
  ImageEnv env = bench.env();
  const MessagesImage built = DoMeldSend(bench.project, env);
  EXPECT_EQ(built.image, "A;" + kP + repeat("@" + kP, 100) + "Q " + kP + repeat(kP, 10) + kEnd);
  EXPECT_EQ(built.image.size(), 3U + 200U + 3U + 10U + 1U);
  EXPECT_TRUE(bench.dialog.boxes.empty());
}

TEST(MessagesImage, OneCharacterWarningInEnglishCountsFromZero) {
  Bench bench(kEnglish);
  bench.project.messages.setCell(1, 4, "?");
  ImageEnv env = bench.env();
  (void)DoMeldSend(bench.project, env);
  EXPECT_EQ(bench.dialog.texts(),
            std::vector<std::string>{"Message text in line 0only 1 character"});
  EXPECT_EQ(bench.status.last(StatusPanel::Transfer), "Packing messages");
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
    ModuleLimits limits;
    limits.textMemory = row.memory;
    Bench bench(kGerman, limits);
    ImageEnv env = bench.env();
    EXPECT_EQ(CheckTextMemory(row.image, env), row.tooLong);
    if (row.tooLong) {
      ASSERT_EQ(bench.dialog.boxes.size(), 1U);
      EXPECT_EQ(
          bench.dialog.boxes[0],
          (Box{"Kestrix", "Zuviel Text!\rBitte begrenzen Sie Ihre Texte !", BoxIcon::Critical}));
    } else {
      EXPECT_TRUE(bench.dialog.boxes.empty());
    }
  }
}

TEST(MessagesImage, TextMemoryHasThreeOutcomes) {
  struct Row {
    const char* name;
    int lastMessageIndex;
    int memory;
    const char* firstMessage;
    const char* firstFilter;
    int failed;
  };
  // Empty tables of 100 rows: header 3 + 100 records of 2 + "Q", blank, 182 = 206 characters.
  const Row rows[] = {
      {"refusedAmongMessages", 99, 10, "Hallo Welt", "", 1},
      {"refusedAfterAckRecordOfBigModule", 399, 500, "", "", 1},
      {"emptyImageAmongFilters", 99, 206, "", "F", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ModuleLimits limits;
    limits.lastMessageIndex = row.lastMessageIndex;
    limits.textMemory = row.memory;
    Bench bench(kGerman, limits);
    bench.project.messages.setCell(1, 4, row.firstMessage);
    bench.project.filters.setCell(1, 1, row.firstFilter);
    ImageEnv env = bench.env();
    const MessagesImage built = DoMeldSend(bench.project, env);
    EXPECT_EQ(built.failed, row.failed);
    EXPECT_EQ(built.image, "");
    EXPECT_EQ(bench.dialog.texts(),
              std::vector<std::string>{"Zuviel Text!\rBitte begrenzen Sie Ihre Texte !"});
  }
}

TEST(MessagesImage, BigModuleIsNotCheckedAmongMessagesOrFilters) {
  ModuleLimits limits;
  limits.lastMessageIndex = 399;
  limits.textMemory = 900;  // 3 + 400 * 2 + 3 = 806 fits; the filters push it past 900
  Bench bench(kGerman, limits);
  bench.project.filters.setCell(1, 1, std::string(150, 'f'));
  ImageEnv env = bench.env();
  const MessagesImage built = DoMeldSend(bench.project, env);
  EXPECT_EQ(built.failed, 0);
  EXPECT_EQ(built.image.size(), 806U + 151U + 9U + 1U);
  EXPECT_TRUE(bench.dialog.boxes.empty());
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

  ImageEnv env = bench.env();
  const std::string image = DoTelSend(bench.project, env, 60);

  const std::string expected = "+491710760000" + repeat(kP, 8) +  //
                               "0171123456" + repeat(kP, 11) +    //
                               repeat(kP, 21) +                   //
                               "+4917112345678901234" + kP +      //
                               "123456789012345678901" +          //
                               "123456789012345678901" +          //
                               "b12" + repeat(kP, 18) +           //
                               repeat(kP, 21 * 54) + repeat(kP, 20) + kEnd;
  EXPECT_EQ(image, expected);
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
  EXPECT_EQ(bench.status.panel(StatusPanel::Transfer),
            (std::vector<std::string>{"Telefonnummern werden zusammengefasst", "fertig ..."}));
}

TEST(PhoneImage, WarningsNeverStopTheBuild) {
  struct Row {
    const char* name;
    int language;
    int reported;
    const char* centre;
    std::vector<Box> boxes;
  };
  const Row rows[] = {
      {"tooManyReported",
       kGerman,
       62,
       "+49171",
       {Box{"Download Telefonnummern", "Falsche Anzahl von Telefonnummern", BoxIcon::Exclamation}}},
      {"shortCentre",
       kGerman,
       60,
       "123",
       {Box{"Kestrix",
            "Bitte \xFC"
            "berpr\xFC"
            "fen: Telefonnummer des SMSC",
            BoxIcon::Exclamation}}},
      {"emptyCentreInEnglish",
       kEnglish,
       0,
       "",
       {Box{"Kestrix", "Please check: SMSC phone N\xB0", BoxIcon::Exclamation}}},
      {"bothInEnglish",
       kEnglish,
       61,
       "12",
       {Box{"Download phone numbers", "Wrong number of Phone N\xB0s", BoxIcon::Exclamation},
        Box{"Kestrix", "Please check: SMSC phone N\xB0", BoxIcon::Exclamation}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(row.language);
    bench.project.smsCentre = row.centre;
    ImageEnv env = bench.env();
    const std::string image = DoTelSend(bench.project, env, row.reported);
    EXPECT_EQ(image.size(), 1302U);
    EXPECT_EQ(bench.dialog.boxes, row.boxes);
  }
}

TEST(PhoneImage, ClosingFieldVariableKeepsItsFilledValue) {
  Bench bench;
  bench.project.phoneSuffix = "0123456789012345678901234";
  ImageEnv env = bench.env();
  const std::string image = DoTelSend(bench.project, env, 60);
  EXPECT_EQ(image.substr(21 * 61), "01234567890123456789" + kEnd);
  EXPECT_EQ(bench.project.phoneSuffix, "01234567890123456789");
}

TEST(ConfigurationImage, PinTravelsAsEntered) {
  EXPECT_EQ(configurationImage("1234"), "00" + kP + "1234" + kP + kEnd);
  EXPECT_EQ(configurationImage("0042"), "00" + kP + "0042" + kP + kEnd);
}

TEST(ConfigurationImage, PinCheck) {
  struct Row {
    const char* pin;
    bool refused;
  };
  const Row rows[] = {{"1234", false}, {"0000", false}, {"12__", true},
                      {"____", true},  {"-123", true},  {"", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.pin);
    EXPECT_EQ(pinRefused(row.pin), row.refused);
  }
}

TEST(ControllerDataImage, RecordsAndReceptionField) {
  struct Row {
    const char* name;
    std::vector<std::pair<int, std::string>> entries;
    std::string image;
  };
  const Row rows[] = {
      {"noFlags", {}, kP + "00" + kP + kEnd},
      {"flagThreeMessageTwelvePhoneFive", {{3, "12;5"}}, "03000C0500" + kP + "00" + kP + kEnd},
      {"ascendingWithReception",
       {{32, "400;60"}, {10, "07;3"}, {7, "-2;-1"}, {3, "12;5"}, {5, "-1;-1"}},
       "03000C0500"
       "0A00070300"
       "2001903C00" +
           kP + "07" + kP + kEnd},
      {"lastReceptionWins", {{4, "-2;-1"}, {20, "-2;-1"}}, kP + "14" + kP + kEnd},
      {"blanksAroundMessageNumber", {{1, " 9 ;2"}}, "0100090200" + kP + "00" + kP + kEnd},
      {"otherNegativeSkipped", {{2, "-5;1"}}, kP + "00" + kP + kEnd},
      {"fieldsCutToTheirWidth", {{1, "70000;300"}}, "0111702C00" + kP + "00" + kP + kEnd},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    FlagTable flags;
    for (const auto& [index, entry] : row.entries)
      flags.entries[static_cast<std::size_t>(index)] = entry;
    EXPECT_EQ(controllerDataImage(flags), row.image);
  }
}

TEST(Handover, SplitAndStartIdentifier) {
  struct Row {
    const char* name;
    char kind;
    std::size_t length;
    std::string identifier;
    std::size_t first;
    std::size_t second;
  };
  const Row rows[] = {
      {"configuration", 'P', 9, "P0009", 9, 0},
      {"fullFirstPart", 'M', 32000, "M7D00", 32000, 0},
      {"secondPartFrom32001", 'M', 32001, "M7D01", 32000, 1},
      {"fortyThousand", 'M', 40000, "M9C40", 32000, 8000},
      {"largestLength", 'M', 65535, "MFFFF", 32000, 33535},
      {"lengthCutToFourDigits", 'M', 65536, "M0000", 32000, 33536},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::string image(row.length, 'x');
    image.back() = '\xFD';
    const TransferJob job = downloadJob(row.kind, "Messages", image);
    EXPECT_EQ(job.title, "Download active");
    EXPECT_EQ(job.contentLabel, "Messages");
    EXPECT_EQ(job.startIdentifier, row.identifier);
    EXPECT_EQ(job.sendText.size(), row.first);
    EXPECT_EQ(job.sendText2.size(), row.second);
    EXPECT_EQ(job.sendText + job.sendText2, image);
  }
}

}  // namespace
}  // namespace quillon::testing
