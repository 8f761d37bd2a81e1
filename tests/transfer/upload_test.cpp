// The uploads through SignIn and a fake port: the save prompt, the result handling with its
// per-procedure boxes, and tables left alone when the user declines.

#include "transfer/upload.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

const std::string kMessagesImage = "A;" + kP + "CT~r auf" + kP + "@zu" + kP + repeat("@" + kP, 98) +
                                   "Q*T# ok" + kP + "filter" + kP + repeat(kP, 9) + kEnd;
const std::string kPhonesImage = "+4917100" + repeat(kP, 13) + "0171555" + repeat(kP, 14) +
                                 repeat(kP, 21 * 59) + repeat(kP, 20) + kEnd;
const std::string kConfigurationImage = "00" + kP + "0815" + kP + kEnd;
const std::string kFlagsImage = "03000C0500" + kP + "07" + kP + kEnd;

const Box kWrongModuleBox{"Version", "Kestrix ist auf falsches Ger\xE4t eingestellt"};
const Box kNoConnection{"Kestrix", "Keine Verbindung !", BoxIcon::Critical};
const std::string kGermanFragments =
    "Beim Auslesen trat ein Fehler auf.\rSollen die Datenfragmente trotzdem weiterbearbeitet "
    "werden ?";
const Box kLanguageFragments{"Kestrix", kGermanFragments, BoxIcon::Critical, BoxButtons::YesNo,
                             BoxAnswer::No};

// Something in each table that any of the images above would change.
void fillRichProject(Project& project) {
  project.messages.setCell(1, 4, "alt");
  project.phones.setCell(1, 1, "0815");
  project.pin = "1111";
  project.flags.entries[9] = "1;1";
}

TEST(Uploads, SavePromptComesFirst) {
  struct Row {
    const char* name;
    Task<> (*run)(TransferContext&, int&);
    bool changed;
    BoxAnswer answer;
    std::vector<std::size_t> saveAsAtJob;
    const char* kinds;
  };
  const Row rows[] = {
      {"yesSavesBeforeAnyTransfer", ReadAll, true, BoxAnswer::Yes, {0}, "mtpy"},
      {"noReadsWithoutSaving", ReadAll, true, BoxAnswer::No, {}, "mtpy"},
      {"unchangedProjectIsNotAsked", ReadAll, false, BoxAnswer::Yes, {}, "mtpy"},
      {"UploadMessages", UploadMessages, true, BoxAnswer::Yes, {0}, "m"},
      {"UploadPhoneNumbers", UploadPhoneNumbers, true, BoxAnswer::Yes, {0}, "t"},
      {"ReadP", ReadP, true, BoxAnswer::Yes, {0}, "p"},
      {"ReadEasy800", ReadEasy800, true, BoxAnswer::Yes, {0}, "y"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.changed = row.changed;
    bench.dialog.answer(row.answer);
    bench.run(row.run);
    EXPECT_EQ(bench.saveAsAtJob, row.saveAsAtJob);
    EXPECT_EQ(bench.jobKinds(), row.kinds);
    EXPECT_EQ(bench.port.jobs.front().direction, TransferDirection::Upload);
    EXPECT_EQ(bench.project.changed, row.changed && row.answer == BoxAnswer::No);
    const Box prompt{"Kestrix", "Daten ge\xE4ndert. Abspeichern ?", BoxIcon::Exclamation,
                     BoxButtons::YesNo, BoxAnswer::Yes};
    EXPECT_EQ(!bench.dialog.boxes.empty() && bench.dialog.boxes[0] == prompt, row.changed);
  }
}

// Every failure leaves the tables as they were unless the user asks for the fragments; a wrong
// module shows its identification.
TEST(Uploads, ResultHandlingPerProcedure) {
  struct Procedure {
    const char* name;
    Task<> (*run)(TransferContext&, int&);
    std::string image;
    Box fragments;
  };
  // The configuration always asks in English; the flag table asks under the module's title.
  const Box configurationFragments{
      "Option Alarmmodul",
      "An error occurred while reading. Should be still processed the data fragments?",
      BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
  const Box flagFragments{"Option Alarmmodul", kGermanFragments, BoxIcon::Critical,
                          BoxButtons::YesNo, BoxAnswer::No};
  const Procedure procedures[] = {
      {"UploadMessages", UploadMessages, kMessagesImage, kLanguageFragments},
      {"UploadPhoneNumbers", UploadPhoneNumbers, kPhonesImage, kLanguageFragments},
      {"ReadP", ReadP, kConfigurationImage, configurationFragments},
      {"ReadEasy800", ReadEasy800, kFlagsImage, flagFragments},
  };
  struct Row {
    const char* name;
    int openResult;
    const char* title;  // none: the module answers the identity request as the wrong one
    int result;
    bool fragmentsAsked;
    bool parsed;
  };
  const Row rows[] = {
      {"portNotOpened", 1, "", 1, false, false},
      {"cancelDeclined", 0, "Cancel", 3, true, false},
      {"noResponseDeclined", 0, "No response", 6, true, false},
      {"timeoutAccepted", 0, "Timeout", 4, true, true},
      {"versionConflict", 0, nullptr, 7, false, false},
  };
  for (const auto& procedure : procedures) {
    for (const auto& row : rows) {
      SCOPED_TRACE(std::string(procedure.name) + "/" + row.name);
      Bench bench;
      fillRichProject(bench.project);
      const Project before = bench.project;
      bench.port.openResult = row.openResult;
      if (row.title == nullptr) {
        bench.session.identityRead = false;
        bench.port.script("", kWrongModule);
      } else {
        bench.port.script(row.title, procedure.image);
      }
      if (row.parsed) bench.dialog.answer(BoxAnswer::Yes);
      EXPECT_EQ(bench.run(procedure.run), row.result);
      EXPECT_EQ(bench.project != before, row.parsed);
      std::vector<Box> expected;
      if (row.openResult != 0) expected.push_back(kNoConnection);
      if (row.fragmentsAsked) expected.push_back(procedure.fragments);
      if (row.result == 7) expected.push_back(kWrongModuleBox);
      EXPECT_EQ(bench.dialog.boxes, expected);
      EXPECT_EQ(bench.identificationShown.size(), row.result == 7 ? 1U : 0U);
    }
  }
}

TEST(ReadAll, StopsAtTheFirstFailureWithTablesOfLaterKindsUntouched) {
  Bench bench;
  fillRichProject(bench.project);
  bench.port.script("", kMessagesImage);
  bench.port.script("Timeout", kPhonesImage);
  EXPECT_EQ(bench.run(ReadAll), 4);
  EXPECT_EQ(bench.jobKinds(), "mt");
  EXPECT_EQ(bench.project.messages.cell(2, 4), "zu");
  EXPECT_EQ(bench.project.phones.cell(1, 1), "0815");
  EXPECT_EQ(bench.project.pin, "1111");
  EXPECT_EQ(bench.dialog.boxes, std::vector<Box>{kLanguageFragments});
}

TEST(UploadMessages, StatusTellsHowTheDataCameIn) {
  const std::string cut = "A;" + kP + "@eins" + kP;
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"", kMessagesImage, "Upload Meldetexte korrekt."},
      {"Cancel", cut, "Upload Meldetexte gest\xF6rt."},
      {"", cut, "Upload Meldetexte nicht korrekt abgeschlossen."},
  };
  for (const auto& [title, image, status] : rows) {
    Bench bench;
    bench.port.script(title, image);
    bench.dialog.answer(BoxAnswer::Yes);  // process the fragments
    bench.run(UploadMessages);
    EXPECT_TRUE(bench.lastStatus().starts_with(status)) << bench.lastStatus();
  }
}

// Declining the ready question is told as no connection, and nothing is read or changed.
TEST(Uploads, DeclinedReadyQuestionTellsNoConnection) {
  const Box ready{"Kestrix", "Telvane ready ?", BoxIcon::Question, BoxButtons::OkCancel,
                  BoxAnswer::Ok};
  for (const auto procedure : {UploadMessages, UploadPhoneNumbers, ReadP, ReadEasy800}) {
    Bench bench;
    fillRichProject(bench.project);
    const Project before = bench.project;
    bench.session.readyConfirmed = false;
    bench.dialog.answer(BoxAnswer::Cancel);
    EXPECT_EQ(bench.run(procedure), 2);
    EXPECT_EQ(bench.dialog.boxes, (std::vector<Box>{ready, kNoConnection}));
    EXPECT_TRUE(bench.port.jobs.empty());
    EXPECT_TRUE(bench.project == before);
  }
}

}  // namespace
}  // namespace quillon::testing
