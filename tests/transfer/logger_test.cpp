// The logger read-out: the request, the German-only result handling, the line splitting and
// saving with the overwrite question, through real files.

#include "transfer/logger.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "file_bytes.h"
#include "transfer_bench.h"

namespace quillon::testing {
namespace {

namespace fs = std::filesystem;

TEST(LoggerLines, CarriageReturnGetsALineFeed) {
  const std::pair<std::string, std::string> rows[] = {
      {"12:00 SMS an 1", "12:00 SMS an 1"},
      {"A\rB\r", "A\r\nB\r\n"},
      {"A\r\nB", "A\r\n\nB"},  // a line feed already there is kept
      {"\r\r", "\r\n\r\n"}};
  for (const auto& [received, shown] : rows) EXPECT_EQ(loggerLines(received), shown) << received;
}

TEST(ReadLogger, ResultHandlingIsGermanInEveryLanguage) {
  const Box fragments{"Option Alarmmodul",
                      "Beim Auslesen trat ein Fehler auf. Sollen die Datenfragmente trotzdem "
                      "weiterbearbeitet werden ?",
                      BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
  struct Row {
    const char* name;
    int openResult;
    const char* title;  // none: the module answers the identity request as the wrong one
    BoxAnswer answer;
    int result;
    std::vector<Box> boxes;
    std::string monitor;
  };
  const Row rows[] = {
      {"readWell", 0, "", BoxAnswer::No, 0, {}, "x\r\ny"},
      {"portNotOpened", 1, "", BoxAnswer::Yes, 1, {kNoConnection}, "old"},
      {"timeoutDeclined", 0, "Timeout", BoxAnswer::No, 4, {fragments}, "old"},
      {"cancelAccepted", 0, "Cancel", BoxAnswer::Yes, 3, {fragments}, "x\r\ny"},
      {"versionConflict", 0, nullptr, BoxAnswer::Yes, 7, {kWrongModuleBox}, "old"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kEnglish);
    bench.port.openResult = row.openResult;
    if (row.title == nullptr) {
      bench.session.identityRead = false;
      bench.port.script("", kWrongModule);
    } else {
      bench.port.script(row.title, "x\ry\xFD");
    }
    bench.dialog.answer(row.answer);
    std::string monitor = "old";
    int result = -1;
    ReadLogger(bench.context, monitor, result);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(bench.dialog.boxes, row.boxes);
    EXPECT_EQ(monitor, row.monitor);
    EXPECT_EQ(bench.identificationShown.size(), row.result == 7 ? 1U : 0U);
    if (row.result == 0) {
      EXPECT_EQ(bench.jobKinds(), "l");
      EXPECT_EQ(bench.port.jobs[0].contentLabel, "Reading Logger");
    }
  }
}

TEST(SaveLoggerText, OverwriteQuestionAndFailures) {
  const fs::path dir = fs::temp_directory_path() / ("quillon-logger-" + std::to_string(::getpid()));
  fs::remove_all(dir);
  fs::create_directories(dir / "busy" / "inside");
  struct Row {
    const char* name;
    const char* existing;  // none: no file there, nothing asked
    BoxAnswer answer;
    LoggerSave outcome;
    std::string contents;
  };
  const Row rows[] = {
      {"newFile", nullptr, BoxAnswer::No, LoggerSave::Saved, "neu\r\nB\r\n"},
      {"yesReplaces", "alt", BoxAnswer::Yes, LoggerSave::Saved, "neu\r\nB\r\n"},
      {"noKeepsTheFile", "alt", BoxAnswer::No, LoggerSave::Declined, "alt"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const fs::path file = dir / (std::string(row.name) + ".txt");
    if (row.existing != nullptr) writeBytes(file, row.existing);
    ScriptedDialog dialog({row.answer});
    EXPECT_EQ(SaveLoggerText(file, "neu\r\nB", dialog), row.outcome);
    EXPECT_EQ(readBytes(file), row.contents);
    EXPECT_EQ(dialog.boxes,
              onlyIf(row.existing != nullptr,
                     Box{"Kestrix", "Bestehende Datei ersetzen - " + file.string() + "?",
                         BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Yes}));
  }

  ScriptedDialog dialog;
  EXPECT_EQ(SaveLoggerText(dir / "missing" / "logger.txt", "x", dialog), LoggerSave::WriteFailed);
  // A directory in place of the file cannot be removed as a file.
  EXPECT_EQ(SaveLoggerText(dir / "busy", "x", dialog), LoggerSave::DeleteFailed);
  ASSERT_EQ(dialog.boxes.size(), 3U);  // the failed write, the question, the failed removal
  EXPECT_NE(dialog.boxes[0].text.find("logger.txt"), std::string::npos);
  EXPECT_EQ(dialog.boxes[0].icon, BoxIcon::Exclamation);
  EXPECT_EQ(dialog.boxes[2].icon, BoxIcon::Exclamation);
  EXPECT_TRUE(fs::is_directory(dir / "busy" / "inside"));
  fs::remove_all(dir);
}

}  // namespace
}  // namespace quillon::testing
