// The uploads through SignIn and a fake port: the save prompt, the result handling with its
// per-procedure boxes, tables left alone when the user declines, and a full round trip.

#include "transfer/upload.h"

#include <gtest/gtest.h>

#include <string>

#include "transfer/download.h"
#include "transfer_bench.h"

namespace quillon::testing {
namespace {

const std::string kP = "\xB6";
const std::string kEnd = "\xFD";

const std::string kMessagesImage = "A;" + kP + "CT~r auf" + kP + "@zu" + kP + repeat("@" + kP, 98) +
                                   "Q*T# ok" + kP + "filter" + kP + repeat(kP, 9) + kEnd;
const std::string kPhonesImage = "+4917100" + repeat(kP, 13) + "0171555" + repeat(kP, 14) +
                                 repeat(kP, 21 * 59) + repeat(kP, 20) + kEnd;
const std::string kConfigurationImage = "00" + kP + "0815" + kP + kEnd;
const std::string kFlagsImage = "03000C0500" + kP + "07" + kP + kEnd;

const Box kLanguageFragments{
    "Kestrix",
    "Beim Auslesen trat ein Fehler auf.\rSollen die Datenfragmente trotzdem weiterbearbeitet "
    "werden ?",
    BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
const Box kConfigurationFragments{
    "Option Alarmmodul",
    "An error occurred while reading. Should be still processed the data fragments?",
    BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
const Box kFlagFragments{"Option Alarmmodul", kLanguageFragments.text, BoxIcon::Critical,
                         BoxButtons::YesNo, BoxAnswer::No};

void fillRichProject(Project& project) {
  project.messages.setCell(1, 4, "alt");
  project.messages.setCell(1, 5, "Kommentar");
  project.filters.setCell(1, 1, "alter Filter");
  project.phones.setCell(1, 1, "0815");
  project.phones.setCell(1, 2, "Meier");
  project.smsCentre = "+49";
  project.pin = "1111";
  project.ack = {"a", "b"};
  project.flags.entries[9] = "1;1";
  project.flags.used[9] = true;
}

TEST(ReadAll, ReadsTheFourKindsIntoTheProject) {
  Bench bench;
  fillRichProject(bench.project);
  bench.port.script("", kMessagesImage);
  bench.port.script("", kPhonesImage);
  bench.port.script("", kConfigurationImage);
  bench.port.script("", kFlagsImage);
  int result = 0;
  ReadAll(bench.context, result);

  EXPECT_EQ(result, 0);
  EXPECT_EQ(bench.jobKinds(), "mtpy");
  const char* labels[] = {"Messages", "Phone numbers", "Configuration", "Millenium"};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(bench.port.jobs[i].title, "Upload active");
    EXPECT_EQ(bench.port.jobs[i].contentLabel, labels[i]);
  }
  const Project& p = bench.project;
  EXPECT_EQ(p.messages.cell(1, 1), "x");
  EXPECT_EQ(p.messages.cell(1, 2), "x");
  EXPECT_EQ(p.messages.cell(1, 4), "T\xFCr auf");
  EXPECT_EQ(p.messages.cell(1, 5), "Kommentar");
  EXPECT_EQ(p.messages.cell(2, 4), "zu");
  EXPECT_EQ(p.ack, (AckRequest{"*T#", "ok"}));
  EXPECT_EQ(p.filters.cell(1, 1), "filter");
  EXPECT_EQ(p.smsCentre, "+4917100");
  EXPECT_EQ(p.phones.cell(1, 1), "0171555");
  EXPECT_EQ(p.phones.cell(1, 2), "Meier");
  EXPECT_EQ(p.pin, "0815");
  EXPECT_EQ(p.flags.entries[3], "12;5");
  EXPECT_EQ(p.flags.entries[7], "-2;-1");
  EXPECT_EQ(p.flags.entries[9], "-1;-1");
  EXPECT_TRUE(bench.dialog.boxes.empty());
  EXPECT_EQ(bench.status.last(StatusPanel::Port), kPortText);
}

TEST(ReadAll, SavePromptComesFirst) {
  struct Row {
    const char* name;
    bool changed;
    BoxAnswer answer;
    std::vector<std::size_t> saveAsAtJob;
    bool changedAfter;
  };
  const Row rows[] = {
      {"yesSavesBeforeAnyTransfer", true, BoxAnswer::Yes, {0}, false},
      {"noReadsWithoutSaving", true, BoxAnswer::No, {}, true},
      {"unchangedProjectIsNotAsked", false, BoxAnswer::Yes, {}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench;
    bench.project.changed = row.changed;
    bench.dialog.answer(row.answer);
    int result = 0;
    ReadAll(bench.context, result);
    EXPECT_EQ(bench.saveAsAtJob, row.saveAsAtJob);
    EXPECT_EQ(bench.project.changed, row.changedAfter);
    EXPECT_EQ(bench.jobKinds(), "mtpy");
    if (row.changed) {
      ASSERT_FALSE(bench.dialog.boxes.empty());
      EXPECT_EQ(bench.dialog.boxes[0],
                (Box{"Kestrix", "Daten ge\xE4ndert. Abspeichern ?", BoxIcon::Exclamation,
                     BoxButtons::YesNo, BoxAnswer::Yes}));
    }
  }
}

TEST(Uploads, SingleUploadsAskTheSavePromptToo) {
  using Procedure = void (*)(TransferContext&, int&);
  for (Procedure procedure : {UploadMessages, UploadPhoneNumbers, ReadP, ReadEasy800}) {
    Bench bench(kEnglish);
    bench.project.changed = true;
    bench.dialog.answer(BoxAnswer::Yes);
    int result = 0;
    procedure(bench.context, result);
    ASSERT_FALSE(bench.dialog.boxes.empty());
    EXPECT_EQ(bench.dialog.boxes[0].text, "Data changed. Save?");
    EXPECT_EQ(bench.saveAsAtJob, std::vector<std::size_t>{0});
  }
}

struct ProcedureRow {
  const char* name;
  void (*procedure)(TransferContext&, int&);
  std::string image;
  Box fragments;
};

const ProcedureRow kProcedures[] = {
    {"UploadMessages", UploadMessages, kMessagesImage, kLanguageFragments},
    {"UploadPhoneNumbers", UploadPhoneNumbers, kPhonesImage, kLanguageFragments},
    {"ReadP", ReadP, kConfigurationImage, kConfigurationFragments},
    {"ReadEasy800", ReadEasy800, kFlagsImage, kFlagFragments},
};

TEST(Uploads, FailedTransfersLeaveTheProjectAsItWas) {
  struct Row {
    const char* name;
    int openResult;
    const char* title;
    int result;
    std::vector<Box> boxes;  // besides the fragments question
    bool fragmentsAsked;
    int identification;
  };
  const Row rows[] = {
      {"portNotOpened",
       1,
       "",
       1,
       {Box{"Kestrix", "Keine Verbindung !", BoxIcon::Critical}},
       false,
       0},
      {"cancelDeclined", 0, "Cancel", 3, {}, true, 0},
      {"timeoutDeclined", 0, "Timeout", 4, {}, true, 0},
      {"noConnectionDeclined", 0, "No connection", 5, {}, true, 0},
      {"noResponseDeclined", 0, "No response", 6, {}, true, 0},
  };
  for (const auto& procedure : kProcedures) {
    for (const auto& row : rows) {
      SCOPED_TRACE(std::string(procedure.name) + "/" + row.name);
      Bench bench;
      fillRichProject(bench.project);
      const Project before = bench.project;
      bench.port.openResult = row.openResult;
      bench.port.script(row.title, procedure.image);
      int result = 0;
      procedure.procedure(bench.context, result);
      EXPECT_EQ(result, row.result);
      EXPECT_EQ(bench.project, before);
      std::vector<Box> expected = row.boxes;
      if (row.fragmentsAsked) expected.push_back(procedure.fragments);
      EXPECT_EQ(bench.dialog.boxes, expected);
    }
  }
}

TEST(Uploads, VersionConflictShowsTheIdentification) {
  for (const auto& procedure : kProcedures) {
    SCOPED_TRACE(procedure.name);
    Bench bench;
    fillRichProject(bench.project);
    const Project before = bench.project;
    bench.session.identityRead = false;
    bench.port.script("", "0064000000003E" + kEnd);
    int result = 0;
    procedure.procedure(bench.context, result);
    EXPECT_EQ(result, 7);
    EXPECT_EQ(bench.identificationShown.size(), 1U);
    EXPECT_EQ(bench.project, before);
  }
}

TEST(Uploads, AcceptedFragmentsAreParsed) {
  for (const auto& procedure : kProcedures) {
    SCOPED_TRACE(procedure.name);
    Bench bench;
    fillRichProject(bench.project);
    const Project before = bench.project;
    bench.port.script("Timeout", procedure.image);
    bench.dialog.answer(BoxAnswer::Yes);
    int result = 0;
    procedure.procedure(bench.context, result);
    EXPECT_EQ(result, 4);
    EXPECT_NE(bench.project, before);
  }
}

TEST(ReadAll, StopsAtTheFirstFailureWithTablesOfLaterKindsUntouched) {
  Bench bench;
  fillRichProject(bench.project);
  bench.port.script("", kMessagesImage);
  bench.port.script("Timeout", kPhonesImage);
  int result = 0;
  ReadAll(bench.context, result);
  EXPECT_EQ(result, 4);
  EXPECT_EQ(bench.jobKinds(), "mt");
  EXPECT_EQ(bench.project.messages.cell(2, 4), "zu");
  EXPECT_EQ(bench.project.smsCentre, "+49");
  EXPECT_EQ(bench.project.pin, "1111");
  EXPECT_EQ(bench.dialog.boxes, std::vector<Box>{kLanguageFragments});
}

TEST(UploadMessages, StatusTellsHowTheTextsCameIn) {
  struct Row {
    const char* name;
    int language;
    const char* title;
    std::string image;
    const char* status;
  };
  const Row rows[] = {
      {"complete", kGerman, "", kMessagesImage, "Upload Meldetexte korrekt."},
      {"completeInEnglish", kEnglish, "", kMessagesImage, "Text upload correctly"},
      {"fragmentsAfterAnError", kGerman, "Cancel", "A;" + kP + "@eins" + kP,
       "Upload Meldetexte gest\xF6rt."},
      {"endMarkMissing", kGerman, "", "A;" + kP + "@eins" + kP,
       "Upload Meldetexte nicht korrekt abgeschlossen."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(row.language);
    bench.port.script(row.title, row.image);
    bench.dialog.answer(BoxAnswer::Yes);
    int result = 0;
    UploadMessages(bench.context, result);
    EXPECT_EQ(bench.status.last(StatusPanel::Transfer), row.status);
    EXPECT_EQ(bench.project.messages.cell(1, 4),
              row.image == kMessagesImage ? "T\xFCr auf" : "eins");
  }
}

TEST(ReadP, ShowsEntry37Afterwards) {
  Bench bench;
  bench.port.script("", kConfigurationImage);
  int result = 0;
  ReadP(bench.context, result);
  EXPECT_EQ(bench.project.pin, "0815");
  EXPECT_EQ(bench.status.last(StatusPanel::Transfer).rfind("SLIn ist der Empfangsbereich", 0), 0U);
}

// What a download sends comes back through an upload: texts with umlauts, options but ring,
// the acknowledgement pair, filters, numbers, PIN and flags. Comments, names and ring do not
// travel.
TEST(RoundTrip, DownloadAllThenReadAllIntoAnEmptyProject) {
  Bench sender;
  Project& a = sender.project;
  a.messages.setCell(1, 1, "x");
  a.messages.setCell(1, 4,
                     "\xC4rger \xFC"
                     "ber Gr\xFC\xDF"
                     "e");
  a.messages.setCell(2, 2, "x");
  a.messages.setCell(2, 3, "x");
  a.messages.setCell(2, 4,
                     "R\xFC"
                     "ckruf");
  a.messages.setCell(2, 5, "nur im PC");
  a.messages.setCell(100, 4, "letzte");
  a.filters.setCell(10, 1, "ZEHN");
  a.ack = {"*T#", "Vielen?Dank"};
  a.smsCentre = "+491710760000";
  a.phones.setCell(60, 1, "0171123");
  a.phones.setCell(60, 2, "Name");
  a.pin = "0042";
  a.flags.entries[1] = "100;60";
  a.flags.entries[32] = "-2;-1";
  int result = 0;
  DownloadAll(sender.context, result);
  ASSERT_EQ(result, 0);
  ASSERT_EQ(sender.port.jobs.size(), 4U);

  Bench receiver;
  for (const auto& job : sender.port.jobs) receiver.port.script("", job.sendText + job.sendText2);
  ReadAll(receiver.context, result);
  ASSERT_EQ(result, 0);
  const Project& b = receiver.project;
  for (int row = 1; row <= 100; ++row) {
    EXPECT_EQ(b.messages.cell(row, 1), a.messages.cell(row, 1)) << row;
    EXPECT_EQ(b.messages.cell(row, 2), a.messages.cell(row, 2)) << row;
    EXPECT_EQ(b.messages.cell(row, 4), a.messages.cell(row, 4)) << row;
  }
  EXPECT_EQ(b.messages.cell(2, 3), "");
  EXPECT_EQ(b.messages.cell(2, 5), "");
  EXPECT_EQ(b.filters, a.filters);
  EXPECT_EQ(b.ack, a.ack);
  EXPECT_EQ(b.smsCentre, a.smsCentre);
  EXPECT_EQ(b.phones.cell(60, 1), "0171123");
  EXPECT_EQ(b.phones.cell(60, 2), "");
  EXPECT_EQ(b.pin, "0042");
  EXPECT_EQ(b.flags.entries[1], "100;60");
  EXPECT_EQ(b.flags.entries[32], "-2;-1");
  EXPECT_TRUE(b.flags.used[1]);
  EXPECT_TRUE(receiver.dialog.boxes.empty());
}

}  // namespace
}  // namespace quillon::testing
