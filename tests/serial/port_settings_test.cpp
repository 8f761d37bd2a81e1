// The settings string, the port status text and the port test's box text.

#include "serial/port_settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "serial/port_test.h"

namespace quillon {
namespace {

TEST(PortStatusText, EveryHandshakingSuffixOpenAndClosed) {
  struct Row {
    const char* name;
    int number;
    int handshaking;
    bool open;
    const char* expect;
  };
  const std::vector<Row> rows = {
      {"NoHandshakeClosed", 1, 0, false, "COM 1,9600, N ,8 ,1 not active"},
      {"NoHandshakeOpen", 1, 0, true, "COM 1,9600, N ,8 ,1 active"},
      {"XonXoff", 2, 1, true, "COM 2,9600, N ,8 ,1 , XON/XOFF active"},
      {"RtsCts", 12, 2, false, "COM 12,9600, N ,8 ,1 , RTS/CTS not active"},
      {"BothAreXonRts", 3, 3, true, "COM 3,9600, N ,8 ,1 , XON-RTS active"},
      {"BothClosed", 3, 3, false, "COM 3,9600, N ,8 ,1 , XON-RTS not active"},
      {"NegativeNumberHasNoBlank", -1, 0, false, "COM-1,9600, N ,8 ,1 not active"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(
        PortStatusText(PortNumberText(row.number), "9600, N ,8 ,1", row.handshaking, row.open),
        row.expect)
        << row.name;
  }
}

TEST(SettingsString, ParsedWithItsBlanks) {
  struct Row {
    const char* name;
    const char* text;
    std::optional<LineSettings> expect;
  };
  const std::vector<Row> rows = {
      {"TheLiteral", "9600, N ,8 ,1", LineSettings{9600, 'N', 8, StopBits::One}},
      {"BuiltByTheDialog", "19200,E,7,2", LineSettings{19200, 'E', 7, StopBits::Two}},
      {"DotMarksOneAndAHalf", "4800,o,8,1.5", LineSettings{4800, 'O', 8, StopBits::OneAndHalf}},
      {"MarkAndSpace", "300,S,5,1", LineSettings{300, 'S', 5, StopBits::One}},
      {"UnknownParity", "9600,X,8,1", std::nullopt},
      {"ThreeParts", "9600,N,8", std::nullopt},
      {"SpeedNotANumber", "fast,N,8,1", std::nullopt},
      {"StopBitsThree", "9600,N,8,3", std::nullopt},
      {"Empty", "", std::nullopt},
  };
  for (const Row& row : rows) EXPECT_EQ(ParseSettingsString(row.text), row.expect) << row.name;
}

TEST(SettingsString, BuiltFromTheDialogLists) {
  EXPECT_EQ(BuildSettingsString(" 9600 ", "None", "8", "1"), "9600,N,8,1");
  EXPECT_EQ(BuildSettingsString("115200", "Even", " 7", "1.5 "), "115200,E,7,1.5");
  EXPECT_EQ(BuildSettingsString("110", "Space", "4", "2"), "110,S,4,2");
}

TEST(SettingsString, SelectsTheDialogEntries) {
  struct Row {
    const char* name;
    const char* text;
    SettingsSelection expect;
  };
  const std::vector<Row> rows = {
      {"TheLiteral", "9600, N ,8 ,1", {6, 2, 4, 0}},
      {"OddOneAndAHalf", "256000,o,4,1.5", {15, 1, 0, 1}},
      {"AnyDotIsOneAndAHalf", "110,e,5,.", {0, 0, 1, 1}},
      {"UnlistedSpeed", "1234,m,8,2", {-1, 3, 4, 2}},
      {"SpaceParity", "2400,S,6,1", {4, 4, 2, 0}},
  };
  for (const Row& row : rows) EXPECT_EQ(SelectionForSettings(row.text), row.expect) << row.name;
}

TEST(PortTest, BoxTextListsThePortsThatOpened) {
  EXPECT_EQ(PortTestText({}), "No com-interface available");
  EXPECT_EQ(PortTestText({3}), " COM 3 verf\xFCgbar!\r");
  EXPECT_EQ(PortTestText({1, 16}), " COM 1 verf\xFCgbar!\r COM 16 verf\xFCgbar!\r");
  const Box box = PortTestBox({2});
  EXPECT_EQ(box.title, "Einstellungen");
  EXPECT_EQ(box.icon, BoxIcon::Information);
}

TEST(PortTest, ScansOneToSixteenInOrder) {
  std::vector<int> tried;
  const auto available =
      ScanPorts([](int n) { return n == 4 || n == 9; }, [&](int n) { tried.push_back(n); });
  EXPECT_EQ(available, (std::vector<int>{4, 9}));
  ASSERT_EQ(tried.size(), 16U);
  EXPECT_EQ(tried.front(), 1);
  EXPECT_EQ(tried.back(), 16);
}

}  // namespace
}  // namespace quillon
