// The logger read-out: the request, the German-only result handling, the line splitting and
// saving with the overwrite question, through real files.

#include "transfer/logger.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include "transfer_bench.h"

namespace quillon::testing {
namespace {

namespace fs = std::filesystem;

TEST(LoggerLines, CarriageReturnGetsALineFeed) {
  struct Row {
    const char* name;
    std::string received;
    std::string shown;
  };
  const Row rows[] = {
      {"empty", "", ""},
      {"noCarriageReturnUnchanged", "12:00 SMS an 1", "12:00 SMS an 1"},
      {"twoLines", "A\rB", "A\r\nB"},
      {"trailingReturn", "A\r", "A\r\n"},
      {"lineFeedAlreadyThereIsKept", "A\r\nB", "A\r\n\nB"},
      {"emptyLines", "\r\r", "\r\n\r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(loggerLines(row.received), row.shown);
  }
}

TEST(ReadLogger, RequestsTheLoggerAndShowsItsLines) {
  Bench bench(kEnglish);
  bench.port.script("", "A\rB\xFD");
  std::string monitor = "old";
  int result = -1;
  ReadLogger(bench.context, monitor, result);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(monitor, "A\r\nB");
  ASSERT_EQ(bench.port.jobs.size(), 1U);
  EXPECT_EQ(bench.port.jobs[0].title, "Upload active");
  EXPECT_EQ(bench.port.jobs[0].contentLabel, "Reading Logger");
  EXPECT_EQ(bench.port.jobs[0].requestLetter, 'l');
}

TEST(ReadLogger, ResultHandlingIsGermanInEveryLanguage) {
  const Box fragments{"Option Alarmmodul",
                      "Beim Auslesen trat ein Fehler auf. Sollen die Datenfragmente trotzdem "
                      "weiterbearbeitet werden ?",
                      BoxIcon::Critical, BoxButtons::YesNo, BoxAnswer::No};
  struct Row {
    const char* name;
    int openResult;
    const char* title;
    BoxAnswer answer;
    int result;
    std::vector<Box> boxes;
    std::string monitor;
  };
  const Row rows[] = {
      {"portNotOpened",
       1,
       "",
       BoxAnswer::Yes,
       1,
       {Box{"Kestrix", "Keine Verbindung !", BoxIcon::Critical}},
       "old"},
      {"timeoutDeclined", 0, "Timeout", BoxAnswer::No, 4, {fragments}, "old"},
      {"cancelAccepted", 0, "Cancel", BoxAnswer::Yes, 3, {fragments}, "x\r\ny"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Bench bench(kEnglish);
    bench.port.openResult = row.openResult;
    bench.port.script(row.title, "x\ry");
    bench.dialog.answer(row.answer);
    std::string monitor = "old";
    int result = 0;
    ReadLogger(bench.context, monitor, result);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(bench.dialog.boxes, row.boxes);
    EXPECT_EQ(monitor, row.monitor);
  }
}

TEST(ReadLogger, VersionConflictShowsTheIdentification) {
  Bench bench;
  bench.session.identityRead = false;
  bench.port.script("", "0064000000003E\xFD");
  std::string monitor = "old";
  int result = 0;
  ReadLogger(bench.context, monitor, result);
  EXPECT_EQ(result, 7);
  EXPECT_EQ(bench.identificationShown.size(), 1U);
  EXPECT_EQ(monitor, "old");
}

class SaveLogger : public ::testing::Test {
 protected:
  void SetUp() override {
    m_dir = fs::temp_directory_path() /
            ("quillon-logger-" + std::to_string(::getpid()) + "-" +
             ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
  }
  void TearDown() override { fs::remove_all(m_dir); }

  static std::string contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::string text;
    std::array<char, 4096> buffer{};
    while (in.read(buffer.data(), buffer.size()) || in.gcount() > 0) {
      text.append(buffer.data(), static_cast<std::size_t>(in.gcount()));
    }
    return text;
  }
  static void write(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  }

  fs::path m_dir;
};

TEST_F(SaveLogger, NewFileHoldsTheTextAndALineBreak) {
  ScriptedDialog dialog;
  const fs::path file = m_dir / "logger.txt";
  EXPECT_EQ(SaveLoggerText(file, "A\r\nB", dialog), LoggerSave::Saved);
  EXPECT_EQ(contents(file), "A\r\nB\r\n");
  EXPECT_TRUE(dialog.boxes.empty());
}

TEST_F(SaveLogger, OverwriteQuestion) {
  struct Row {
    const char* name;
    BoxAnswer answer;
    LoggerSave outcome;
    std::string contents;
  };
  const Row rows[] = {
      {"yesReplaces", BoxAnswer::Yes, LoggerSave::Saved, "neu\r\n"},
      {"noKeepsTheFile", BoxAnswer::No, LoggerSave::Declined, "alt"},
      {"cancelKeepsTheFile", BoxAnswer::Cancel, LoggerSave::Declined, "alt"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const fs::path file = m_dir / "logger.txt";
    write(file, "alt");
    ScriptedDialog dialog({row.answer});
    EXPECT_EQ(SaveLoggerText(file, "neu", dialog), row.outcome);
    EXPECT_EQ(contents(file), row.contents);
    EXPECT_EQ(dialog.boxes,
              (std::vector<Box>{Box{"Kestrix", "Bestehende Datei ersetzen - " + file.string() + "?",
                                    BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Yes}}));
  }
}

TEST_F(SaveLogger, UnwritablePlaceIsReported) {
  ScriptedDialog dialog;
  EXPECT_EQ(SaveLoggerText(m_dir / "missing" / "logger.txt", "x", dialog), LoggerSave::WriteFailed);
  ASSERT_EQ(dialog.boxes.size(), 1U);
  EXPECT_EQ(dialog.boxes[0].icon, BoxIcon::Exclamation);
  EXPECT_NE(dialog.boxes[0].text.find("logger.txt"), std::string::npos);
}

TEST_F(SaveLogger, UndeletableFileEndsTheSave) {
  // A directory in place of the file cannot be removed as a file.
  const fs::path place = m_dir / "busy";
  fs::create_directories(place / "inside");
  ScriptedDialog dialog({BoxAnswer::Yes});
  EXPECT_EQ(SaveLoggerText(place, "x", dialog), LoggerSave::DeleteFailed);
  ASSERT_EQ(dialog.boxes.size(), 2U);
  EXPECT_EQ(dialog.boxes[1].icon, BoxIcon::Exclamation);
  EXPECT_TRUE(fs::is_directory(place / "inside"));
}

}  // namespace
}  // namespace quillon::testing
