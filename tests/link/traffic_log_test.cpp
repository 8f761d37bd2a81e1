#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "link/traffic_log.h"

namespace quillon::testing {
namespace {

namespace fs = std::filesystem;

TEST(TrafficLogFileName, IsYearDayMonthAndSecondsOfTheDay) {
  EXPECT_EQ(TrafficLogFileName(2012, 3, 15, 45296), "2012_15_0345296.LOG");
  EXPECT_EQ(TrafficLogFileName(2024, 12, 1, 0), "2024_01_120.LOG");
  EXPECT_EQ(TrafficLogFileName(2012, 3, 15, 5), "2012_15_035.LOG");  // seconds are not padded
}

TEST(TrafficLogLines, ControlAndEightBitCodesAsNumbers) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"M0041 ok~", "M0041 ok~"}, {"\x06\x15", "<6><21>"},
      {"ab\375F4", "ab<253>F4"},  {"Gr\xFC\xDF", "Gr<252><223>"},
      {"\x7F", "<127>"},          {std::string("a\0b", 3), "a<0>b"},
      {"\r\n", "<13><10>"}};
  for (const auto& [text, escaped] : rows) EXPECT_EQ(EscapeForLog(text), escaped);
}

TEST(TrafficLogLines, TextsLongerThan200CharactersAreSplitBeforeEscaping) {
  EXPECT_EQ(TrafficLogLines("\x06", "SCHREIBEN: "), "SCHREIBEN: <6>\r\n");
  EXPECT_EQ(TrafficLogLines("", "READ: "), "");
  const std::string a199(199, 'a');
  EXPECT_EQ(TrafficLogLines(a199 + "b", "READ: "), "READ: " + a199 + "b\r\n");
  EXPECT_EQ(TrafficLogLines(a199 + "\xFC" + "\x06", "READ: "),
            "READ: \n\r" + a199 + "<252>\r\n<6>\r\n");
  EXPECT_EQ(TrafficLogLines(std::string(200, 'b') + std::string(250, 'c'), "LESEN: "),
            "LESEN: \n\r" + std::string(200, 'b') + "\r\n" + std::string(250, 'c') + "\r\n");
  EXPECT_EQ(TrafficLogOpenedText("2012_15_0345296.LOG", "/home/anna"),
            "Log file 2012_15_0345296.LOG  in directory:\r/home/anna");
}

std::string slurp(const fs::path& path) {
  std::ostringstream out;
  out << std::ifstream(path, std::ios::binary).rdbuf();
  return out.str();
}

TEST(TrafficLogFile, RecordsAShortExchangeByteForByte) {
  const fs::path dir = fs::path(::testing::TempDir()) / "quillon_traffic_log";
  fs::remove_all(dir);
  fs::create_directories(dir);
  std::ofstream(dir / "2012_15_0345296.LOG") << "an old file of the same name";

  TrafficLog log;
  log.logTraffic("??", "WRITE: ");  // not open yet: nothing
  EXPECT_FALSE(log.open(dir / "missing", "x.LOG"));
  log.logTraffic("??", "WRITE: ");
  EXPECT_FALSE(fs::exists(dir / "missing"));
  ASSERT_TRUE(log.open(dir, "2012_15_0345296.LOG"));
  log.logTraffic("??", "WRITE: ");
  log.logTraffic("", "READ: ");
  log.logTraffic("\x06", "READ: ");
  log.logTraffic("V", "WRITE: ");
  log.logTraffic("V000F", "READ: ");
  log.logTraffic("007B090300003E\375F4", "LESEN: ");
  log.logTraffic("\x06", "SCHREIBEN: ");
  EXPECT_TRUE(log.good());
  log.close();
  log.logTraffic("??", "WRITE: ");  // closed: nothing
  EXPECT_EQ(slurp(dir / "2012_15_0345296.LOG"),
            "WRITE: ??\r\n"
            "READ: <6>\r\n"
            "WRITE: V\r\n"
            "READ: V000F\r\n"
            "LESEN: 007B090300003E<253>F4\r\n"
            "SCHREIBEN: <6>\r\n");
  fs::remove_all(dir);
}

}  // namespace
}  // namespace quillon::testing
