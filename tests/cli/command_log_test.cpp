// The traffic log of the module commands: --log=FILE, and a log of the same second that is
// never overwritten, on real files.

#include "cli/command_log.h"

#include <QDir>
#include <filesystem>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "cli/link_options.h"
#include "file_bytes.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

// 15 March 2012, 12:34:56: second 45296 of the day.
const QDateTime kNow(QDate(2012, 3, 15), QTime(12, 34, 56));

class CommandLogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(m_dir);
    m_previous = QDir::currentPath();
    QDir::setCurrent(QString::fromStdString(m_dir.string()));
  }
  void TearDown() override {
    QDir::setCurrent(m_previous);
    fs::remove_all(m_dir);
  }

  const fs::path m_dir =
      fs::temp_directory_path() / ("quillon-log-" + std::to_string(std::random_device{}()));
  QString m_previous;
};

TEST_F(CommandLogTest, ALogOfTheSameSecondIsNeverOverwritten) {
  struct Row {
    const char* name;
    std::vector<std::string> taken;
    std::string file;
    std::string err;
  };
  const Row rows[] = {
      {"secondFree", {}, "2012_15_0345296.LOG", ""},
      {"secondTaken",
       {"2012_15_0345296.LOG"},
       "2012_15_0345297.LOG",
       "quillon-cli: 2012_15_0345296.LOG exists already; this log is 2012_15_0345297.LOG\n"},
      {"twoTaken",
       {"2012_15_0345296.LOG", "2012_15_0345297.LOG"},
       "2012_15_0345298.LOG",
       "quillon-cli: 2012_15_0345296.LOG exists already; this log is 2012_15_0345298.LOG\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    for (const auto& entry : fs::directory_iterator(m_dir)) fs::remove(entry.path());
    for (const std::string& taken : row.taken) writeBytes(m_dir / taken, "first run");
    std::ostringstream err;
    TrafficLog log;

    const auto opened = cli::OpenCommandLog(log, "", kNow, err);

    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->fileName, row.file);
    EXPECT_EQ(fs::path(opened->directory), fs::canonical(m_dir));
    EXPECT_EQ(err.str(), row.err);
    log.logTraffic("??", "WRITE: ");
    log.close();
    EXPECT_EQ(readBytes(m_dir / row.file), "WRITE: ??\r\n");
    for (const std::string& taken : row.taken) EXPECT_EQ(readBytes(m_dir / taken), "first run");
  }
}

TEST_F(CommandLogTest, NamedFileIsReplacedOnlyWhenTheLogCloses) {
  writeBytes(m_dir / "modem.log", "older log");
  std::ostringstream err;
  {
    TrafficLog log;
    const auto opened = cli::OpenCommandLog(log, "modem.log", kNow, err);
    ASSERT_TRUE(opened.has_value());
    EXPECT_EQ(opened->fileName, "modem.log");
    log.logTraffic("??", "WRITE: ");
    EXPECT_EQ(readBytes(m_dir / "modem.log"), "older log");
  }
  EXPECT_EQ(readBytes(m_dir / "modem.log"), "WRITE: ??\r\n");
  EXPECT_EQ(err.str(), "");

  fs::create_directory(m_dir / "folder.log");
  for (const auto& [file, reason] :
       {std::pair<std::string, std::string>{"missing/modem.log", "No such file or directory"},
        {"folder.log", "Is a directory"}}) {
    TrafficLog log;
    std::ostringstream failed;
    EXPECT_FALSE(cli::OpenCommandLog(log, file, kNow, failed).has_value());
    EXPECT_EQ(failed.str(), "quillon-cli: cannot write the log " + file + ": " + reason + "\n");
    EXPECT_FALSE(log.isOpen());
  }
}

TEST(LogOption, TakesAFileOnlyAfterAnEqualsSign) {
  const std::array table{cli::kPortOption, cli::kYesOption, cli::kLogOption};
  struct Row {
    std::vector<std::string> arguments;
    bool log;
    std::string file;
    std::vector<std::string> positional;
    std::optional<std::string> error;
  };
  const Row rows[] = {
      {{"--port", "1", "--log=modem.log"}, true, "modem.log", {}, std::nullopt},
      {{"--log", "modem.log", "--port", "1"}, true, "", {"modem.log"}, std::nullopt},
      {{"--port", "1"}, false, "", {}, std::nullopt},
      {{"--port", "1", "--yes=ja"}, false, "", {}, "--yes takes no value"},
  };
  for (const auto& row : rows) {
    cli::ParsedOptions parsed;
    EXPECT_EQ(cli::parseOptions(row.arguments, table, parsed), row.error);
    if (row.error) continue;
    cli::LinkOptions options;
    EXPECT_EQ(cli::readLinkOptions(parsed, "identify", options), std::nullopt);
    EXPECT_EQ(options.log, row.log);
    EXPECT_EQ(options.logFile, row.file);
    EXPECT_EQ(parsed.positional, row.positional);
  }
}

}  // namespace
}  // namespace quillon
