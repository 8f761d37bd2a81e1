#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "link/traffic_log.h"

namespace quillon::testing {
namespace {

namespace fs = std::filesystem;

struct NameRow {
  const char* name;
  int year, month, day, seconds;
  std::string expected;
};

class LogFileName : public ::testing::TestWithParam<NameRow> {};

TEST_P(LogFileName, IsYearDayMonthAndSecondsOfTheDay) {
  const auto& r = GetParam();
  EXPECT_EQ(TrafficLogFileName(r.year, r.month, r.day, r.seconds), r.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LogFileName,
    ::testing::Values(NameRow{"afternoon", 2012, 3, 15, 45296, "2012_15_0345296.LOG"},
                      NameRow{"justAfterMidnight", 2024, 12, 1, 0, "2024_01_120.LOG"},
                      NameRow{"fewSecondsAreNotPadded", 2012, 3, 15, 5, "2012_15_035.LOG"},
                      NameRow{"lastSecondOfTheDay", 2009, 1, 2, 86399, "2009_02_0186399.LOG"}),
    [](const auto& p) { return std::string(p.param.name); });

struct EscapeRow {
  const char* name;
  std::string text;
  std::string expected;
};

class Escape : public ::testing::TestWithParam<EscapeRow> {};

TEST_P(Escape, ControlAndEightBitCodesAsNumbers) {
  EXPECT_EQ(EscapeForLog(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Rows, Escape,
                         ::testing::Values(EscapeRow{"plainText", "M0041 ok~", "M0041 ok~"},
                                           EscapeRow{"ack", "\x06", "<6>"},
                                           EscapeRow{"nak", "\x15", "<21>"},
                                           EscapeRow{"endOfBlock",
                                                     "ab\xFD"
                                                     "F4",
                                                     "ab<253>F4"},
                                           EscapeRow{"umlaut", "Gr\xFC\xDF", "Gr<252><223>"},
                                           EscapeRow{"delete", "\x7F", "<127>"},
                                           EscapeRow{"nul", std::string("a\0b", 3), "a<0>b"},
                                           EscapeRow{"crLf", "\r\n", "<13><10>"}),
                         [](const auto& p) { return std::string(p.param.name); });

TEST(TrafficLogLines, ShortTextIsOneLine) {
  EXPECT_EQ(TrafficLogLines("\x06", "SCHREIBEN: "), "SCHREIBEN: <6>\r\n");
  EXPECT_EQ(TrafficLogLines("", "READ: "), "");
  const std::string two100(200, 'a');
  EXPECT_EQ(TrafficLogLines(two100, "READ: "), "READ: " + two100 + "\r\n");
}

TEST(TrafficLogLines, LongTextIsSplitAfter200CharactersBeforeEscaping) {
  const std::string text = std::string(199, 'a') + "\xFC" + "\x06";  // 201 characters
  EXPECT_EQ(TrafficLogLines(text, "READ: "),
            "READ: \n\r" + std::string(199, 'a') + "<252>\r\n<6>\r\n");
  const std::string long2 = std::string(200, 'b') + std::string(250, 'c');
  EXPECT_EQ(TrafficLogLines(long2, "LESEN: "),
            "LESEN: \n\r" + std::string(200, 'b') + "\r\n" + std::string(250, 'c') + "\r\n");
}

TEST(TrafficLogLines, OpenedMessage) {
  EXPECT_EQ(TrafficLogOpenedText("2012_15_0345296.LOG", "/home/anna"),
            "Log file 2012_15_0345296.LOG  in directory:\r/home/anna");
}

std::string slurp(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::string out;
  char buffer[4096];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    out.append(buffer, static_cast<std::size_t>(in.gcount()));
  }
  return out;
}

class TrafficLogFile : public ::testing::Test {
 protected:
  void SetUp() override {
    m_dir = fs::path(::testing::TempDir()) /
            ("quillon_log_" +
             std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
  }
  void TearDown() override { fs::remove_all(m_dir); }
  fs::path m_dir;
};

TEST_F(TrafficLogFile, RecordsAShortExchangeByteForByte) {
  TrafficLog log;
  log.logTraffic("??", "WRITE: ");  // not open yet: nothing
  ASSERT_TRUE(log.open(m_dir, "2012_15_0345296.LOG"));
  EXPECT_EQ(log.fileName(), "2012_15_0345296.LOG");
  log.logTraffic("??", "WRITE: ");
  log.logTraffic("", "READ: ");
  log.logTraffic("\x06", "READ: ");
  log.logTraffic("V", "WRITE: ");
  log.logTraffic("V000F", "READ: ");
  log.logTraffic(
      "007B090300003E\xFD"
      "F4",
      "LESEN: ");
  log.logTraffic("\x06", "SCHREIBEN: ");
  EXPECT_TRUE(log.good());
  EXPECT_EQ(slurp(m_dir / "2012_15_0345296.LOG"),
            "WRITE: ??\r\n"
            "READ: <6>\r\n"
            "WRITE: V\r\n"
            "READ: V000F\r\n"
            "LESEN: 007B090300003E<253>F4\r\n"
            "SCHREIBEN: <6>\r\n");
  log.close();
  log.logTraffic("??", "WRITE: ");
  EXPECT_EQ(slurp(m_dir / "2012_15_0345296.LOG").size(), 91U);  // nothing after closing
}

TEST_F(TrafficLogFile, OpeningOverwritesAnOldFileOfTheSameName) {
  {
    std::ofstream old(m_dir / "x.LOG", std::ios::binary);
    old << "old content";
  }
  TrafficLog log;
  ASSERT_TRUE(log.open(m_dir, "x.LOG"));
  log.logTraffic("A", "WRITE: ");
  EXPECT_EQ(slurp(m_dir / "x.LOG"), "WRITE: A\r\n");
}

TEST_F(TrafficLogFile, MissingDirectoryLeavesTheLogClosed) {
  TrafficLog log;
  EXPECT_FALSE(log.open(m_dir / "missing", "x.LOG"));
  EXPECT_FALSE(log.isOpen());
  log.logTraffic("A", "WRITE: ");
  EXPECT_FALSE(fs::exists(m_dir / "missing"));
}

}  // namespace
}  // namespace quillon::testing
