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

TEST(ReadLogger, ResultHandlingIsGermanInEveryLanguage) {
  const Box fragments{"Option Alarmmodul",
                      "Beim Auslesen trat ein Fehler auf. Sollen die Datenfragmente trotzdem "
                      "weiterbearbeitet werden ?",
                      BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
  // Every CR gets a line feed, even one that already has it.
  const std::string kLines = "A\r\nB\r\n\nC\r\n\r\n";
  struct Row {
    const char* name;
    const char* title;
    BoxAnswer answer;
    int result;
    std::vector<Box> boxes;
    std::string monitor;
  };
  const Row rows[] = {
      {"readWell", "", BoxAnswer::No, 0, {}, kLines},
      {"timeoutDeclined", "Timeout", BoxAnswer::No, 4, {fragments}, "old"},
      {"cancelAccepted", "Cancel", BoxAnswer::Yes, 3, {fragments}, kLines},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kEnglish);
    bench.port.script(row.title, "A\rB\r\nC\r\r\xFD");
    bench.dialog.answer(row.answer);
    std::string monitor = "old";
    int result = -1;
    RunNow(ReadLogger(bench.context, monitor, result));
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(bench.dialog.boxes, row.boxes);
    EXPECT_EQ(monitor, row.monitor);
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
      {"cancelKeepsTheFile", "alt", BoxAnswer::Cancel, LoggerSave::Declined, "alt"},
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
