// The downloads through SignIn and a fake port: what each hands to the transfer window, the
// order and continue rule of "Download all", and the status texts.

#include "transfer/download.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

TEST(DownloadAll, ContinuesOnlyWhileTheResultIsZero) {
  struct Row {
    const char* name;
    std::vector<const char*> titles;  // transfer outcomes in order; "" = went well
    const char* pin;
    int textMemory;
    int openResult;
    std::string kinds;
    int result;
  };
  const Row rows[] = {
      {"allWell", {}, "1234", 22272, 0, "MTPY", 0},
      {"cancelInMessagesStops", {"Cancel"}, "1234", 22272, 0, "M", 3},
      {"timeoutInPhonesStops", {"", "Timeout"}, "1234", 22272, 0, "MT", 4},
      {"noConnectionInConfigurationStops", {"", "", "No connection"}, "1234", 22272, 0, "MTP", 5},
      {"noResponseInFlags", {"", "", "", "No response"}, "1234", 22272, 0, "MTPY", 6},
      {"refusedPinDoesNotStop", {}, "12__", 22272, 0, "MTY", 0},
      {"refusedMessagesDoNotStop", {}, "1234", 10, 0, "TPY", 0},
      {"filterOverflowStillSendsMessages", {}, "1234", 206, 0, "MTPY", 0},
      {"portNotOpenedStopsBeforeAnyTransfer", {}, "1234", 22272, 1, "", 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kGerman, {.textMemory = row.textMemory});
    bench.project.pin = row.pin;
    bench.project.filters.setCell(1, 1, "F");
    bench.session.identity.phoneCount = " 62";
    bench.port.openResult = row.openResult;
    for (const char* title : row.titles) script(bench.port, title);
    EXPECT_EQ(bench.run(DownloadAll), row.result);
    EXPECT_EQ(bench.jobKinds(), row.kinds);
    // A module reporting more phones than the table holds is warned about once.
    EXPECT_EQ(std::ranges::count(bench.dialog.texts(), "Falsche Anzahl von Telefonnummern"),
              row.kinds.find('T') != std::string::npos ? 1 : 0);
    // The filters overflowing the text memory still send an empty messages image.
    if (row.textMemory == 206) {
      EXPECT_EQ(bench.port.jobs[0].startIdentifier, "M0000");
    }
    EXPECT_EQ(bench.lastStatus(),
              row.result == 0 ? "Download erfolgreich" : "Fehler bei Download!");
  }
}

TEST(WriteP, OnlyAValidPinIsSent) {
  const std::string german = "PIN ist ung\xFCltig. Download der PIN wird abgebrochen";
  const std::pair<const char*, std::string> rows[] = {
      {"0815", ""}, {"0000", ""}, {"", ""}, {"12__", german}, {"____", german}, {"-123", german}};
  for (const auto& [pin, refusal] : rows) {
    SCOPED_TRACE(pin);
    Bench bench;
    bench.project.pin = pin;
    EXPECT_EQ(bench.run(WriteP), 0);
    EXPECT_EQ(bench.jobKinds(), refusal.empty() ? "P" : "");
    EXPECT_EQ(bench.dialog.boxes,
              onlyIf(!refusal.empty(), Box{"Settings", refusal, BoxIcon::Exclamation}));
  }
}

TEST(Downloads, VersionConflictShowsTheIdentificationAfterTheStatus) {
  for (auto* procedure : {WriteP, DownloadMessages, WriteT, WriteEasy800}) {
    Bench bench;
    bench.project.pin = "1234";
    // The identity is read before the first transfer.
    bench.session.identityRead = false;
    script(bench.port, "", kWrongModule);
    EXPECT_EQ(bench.run(procedure), 7);
    EXPECT_EQ(bench.identificationShown, std::vector<std::string>{"Fehler bei Download!"});
    EXPECT_EQ(bench.jobKinds(), "v");  // only the identity request went out
  }
}

}  // namespace
}  // namespace quillon::testing
