// The downloads through SignIn and a fake port: what each hands to the transfer window, the
// order and continue rule of "Download all", and the status texts.

#include "transfer/download.h"

#include <gtest/gtest.h>

#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

const std::string kP = "\xB6";
const std::string kEnd = "\xFD";

TEST(DownloadAll, SendsMessagesPhonesConfigurationFlagsInThisOrder) {
  Bench bench;
  bench.project.pin = "1234";
  bench.project.smsCentre = "+491710760000";
  bench.project.flags.entries[3] = "12;5";
  int result = 0;
  DownloadAll(bench.context, result);

  EXPECT_EQ(result, 0);
  ASSERT_EQ(bench.port.jobs.size(), 4U);
  struct Expected {
    const char* label;
    const char* identifier;
  };
  // Empty messages image 217 = D9; phones 1302 = 516; configuration 9; flags 15 = F.
  const Expected expected[] = {{"Messages", "M00D9"},
                               {"Phone numbers", "T0516"},
                               {"Configuration", "P0009"},
                               {"Millenium", "Y000F"}};
  for (std::size_t i = 0; i < 4; ++i) {
    SCOPED_TRACE(expected[i].label);
    EXPECT_EQ(bench.port.jobs[i].title, "Download active");
    EXPECT_EQ(bench.port.jobs[i].contentLabel, expected[i].label);
    EXPECT_EQ(bench.port.jobs[i].startIdentifier, expected[i].identifier);
    EXPECT_EQ(bench.port.jobs[i].sendText2, "");
  }
  EXPECT_EQ(bench.port.jobs[2].sendText, "00" + kP + "1234" + kP + kEnd);
  EXPECT_EQ(bench.port.jobs[3].sendText, "03000C0500" + kP + "00" + kP + kEnd);
  EXPECT_EQ(bench.status.last(StatusPanel::Transfer), "Download erfolgreich");
  EXPECT_EQ(bench.eventRuns, 2);
  EXPECT_TRUE(bench.dialog.boxes.empty());
}

TEST(DownloadAll, ContinuesOnlyWhileTheResultIsZero) {
  struct Row {
    const char* name;
    std::vector<const char*> titles;  // transfer outcomes in order; "" = went well
    const char* pin;
    int textMemory;
    int openResult;
    std::string kinds;
    int result;
    const char* lastStatus;
  };
  const Row rows[] = {
      {"allWell", {}, "1234", 22272, 0, "MTPY", 0, "Download erfolgreich"},
      {"cancelInMessagesStops", {"Cancel"}, "1234", 22272, 0, "M", 3, "Fehler bei Download!"},
      {"timeoutInPhonesStops", {"", "Timeout"}, "1234", 22272, 0, "MT", 4, "Fehler bei Download!"},
      {"noConnectionInConfigurationStops",
       {"", "", "No connection"},
       "1234",
       22272,
       0,
       "MTP",
       5,
       "Fehler bei Download!"},
      {"noResponseInFlags",
       {"", "", "", "No response"},
       "1234",
       22272,
       0,
       "MTPY",
       6,
       "Fehler bei Download!"},
      {"refusedPinDoesNotStop", {}, "12__", 22272, 0, "MTY", 0, "Download erfolgreich"},
      {"refusedMessagesDoNotStop", {}, "1234", 10, 0, "TPY", 0, "Download erfolgreich"},
      {"portNotOpenedStopsBeforeAnyTransfer", {}, "1234", 22272, 1, "", 1, "Fehler bei Download!"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ModuleLimits limits;
    limits.textMemory = row.textMemory;
    Bench bench(kGerman, limits);
    bench.project.pin = row.pin;
    bench.port.openResult = row.openResult;
    for (const char* title : row.titles) bench.port.script(title);
    int result = 0;
    DownloadAll(bench.context, result);
    EXPECT_EQ(bench.jobKinds(), row.kinds);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(bench.status.last(StatusPanel::Transfer), row.lastStatus);
  }
}

TEST(WriteP, RefusedPinSendsNothingAndLeavesTheResult) {
  for (const char* pin : {"12__", "____", "-1"}) {
    SCOPED_TRACE(pin);
    Bench bench;
    bench.project.pin = pin;
    int result = 42;
    WriteP(bench.context, result);
    EXPECT_EQ(result, 42);
    EXPECT_TRUE(bench.port.jobs.empty());
    EXPECT_EQ(bench.dialog.boxes, (std::vector<Box>{Box{"Settings",
                                                        "PIN ist ung\xFC"
                                                        "ltig. Download der PIN wird abgebrochen",
                                                        BoxIcon::Exclamation}}));
  }
}

TEST(WriteP, EnglishRefusalAndTheDownloadStatus) {
  Bench bench(kEnglish);
  bench.project.pin = "1_34";
  int result = 0;
  WriteP(bench.context, result);
  EXPECT_EQ(bench.dialog.texts(),
            std::vector<std::string>{"PIN is not valid. Download of the PIN is cancelled"});

  Bench accepted(kEnglish);
  accepted.project.pin = "0815";
  WriteP(accepted.context, result);
  const auto panel2 = accepted.status.panel(StatusPanel::Transfer);
  ASSERT_FALSE(panel2.empty());
  EXPECT_EQ(panel2.front(), " Download ...");
  EXPECT_EQ(panel2.back(), "Download successful");
}

TEST(Downloads, VersionConflictShowsTheIdentificationAfterTheStatus) {
  using Procedure = void (*)(TransferContext&, int&);
  struct Row {
    const char* name;
    Procedure procedure;
  };
  const Row rows[] = {{"WriteP", WriteP},
                      {"DownloadMessages", DownloadMessages},
                      {"WriteT", WriteT},
                      {"WriteEasy800", WriteEasy800}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.pin = "1234";
    // The identity is read before the first transfer; a device type 0 is the wrong module.
    bench.session.identityRead = false;
    bench.port.script("", "0064000000003E" + kEnd);
    int result = 0;
    row.procedure(bench.context, result);
    EXPECT_EQ(result, 7);
    EXPECT_EQ(bench.identificationShown, std::vector<std::string>{"Fehler bei Download!"});
    // Only the identity request went out.
    ASSERT_EQ(bench.port.jobs.size(), 1U);
    EXPECT_FALSE(bench.port.jobs[0].sending());
  }
}

TEST(DownloadMessages, TextMemoryRefusalTouchesNoTransfer) {
  ModuleLimits limits;
  limits.textMemory = 10;
  Bench bench(kGerman, limits);
  bench.project.messages.setCell(1, 4, "Hallo Welt");
  int result = 42;
  DownloadMessages(bench.context, result);
  EXPECT_EQ(result, 42);
  EXPECT_TRUE(bench.port.jobs.empty());
  EXPECT_EQ(
      bench.status.panel(StatusPanel::Transfer),
      (std::vector<std::string>{"Download Meldungen ...", "Meldungen werden zusammengefasst"}));
  EXPECT_EQ(bench.dialog.texts(),
            std::vector<std::string>{"Zuviel Text!\rBitte begrenzen Sie Ihre Texte !"});
}

TEST(DownloadMessages, FilterOverflowHandsOverAnEmptyImage) {
  ModuleLimits limits;
  limits.textMemory = 206;
  Bench bench(kGerman, limits);
  bench.project.filters.setCell(1, 1, "F");
  int result = 0;
  DownloadMessages(bench.context, result);
  ASSERT_EQ(bench.port.jobs.size(), 1U);
  EXPECT_EQ(bench.port.jobs[0].sendText, "");
  EXPECT_EQ(bench.port.jobs[0].startIdentifier, "M0000");
}

TEST(WriteT, CleanedNumbersAreSentAndShown) {
  Bench bench;
  bench.project.smsCentre = "+49 (0)171 5";
  bench.project.phones.setCell(2, 1, "0049-89-1234");
  int result = 0;
  WriteT(bench.context, result);
  ASSERT_EQ(bench.port.jobs.size(), 1U);
  const TransferJob& job = bench.port.jobs[0];
  EXPECT_EQ(job.startIdentifier, "T0516");
  EXPECT_EQ(job.sendText.substr(0, 63),
            "+4901715" + repeat(kP, 13) + repeat(kP, 21) + "0049891234" + repeat(kP, 11));
  EXPECT_EQ(bench.project.smsCentre, "+4901715");
  EXPECT_EQ(bench.project.phones.cell(2, 1), "0049891234");
  const auto panel2 = bench.status.panel(StatusPanel::Transfer);
  EXPECT_EQ(panel2[0], "Telefonnummern werden zusammengefasst");
  EXPECT_EQ(panel2[1], "fertig ...");
  EXPECT_EQ(panel2[2], "Download Telefonnummern");
  EXPECT_EQ(panel2.back(), "Download erfolgreich");
}

TEST(WriteT, ModuleReportingMorePhonesIsWarnedOnce) {
  Bench bench;
  bench.project.smsCentre = "+491710760000";
  bench.session.identity.phoneCount = " 62";
  int result = 0;
  WriteT(bench.context, result);
  EXPECT_EQ(bench.dialog.boxes,
            (std::vector<Box>{Box{"Download Telefonnummern", "Falsche Anzahl von Telefonnummern",
                                  BoxIcon::Exclamation}}));
  EXPECT_EQ(bench.port.jobs.size(), 1U);
}

}  // namespace
}  // namespace quillon::testing
