// The settings string, the port status text and the port test's box text.

#include "link/qt/port_settings.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "link/qt/port_test.h"

namespace quillon {
namespace {

TEST(PortStatusText, EveryHandshakingSuffixOpenAndClosed) {
  const auto text = [](int number, int handshaking, bool open) {
    return PortStatusText(PortNumberText(number), "9600, N ,8 ,1", handshaking, open);
  };
  EXPECT_EQ(text(1, 0, false), "COM 1,9600, N ,8 ,1 not active");
  EXPECT_EQ(text(2, 1, true), "COM 2,9600, N ,8 ,1 , XON/XOFF active");
  EXPECT_EQ(text(12, 2, false), "COM 12,9600, N ,8 ,1 , RTS/CTS not active");
  EXPECT_EQ(text(3, 3, true), "COM 3,9600, N ,8 ,1 , XON-RTS active");
  EXPECT_EQ(text(-1, 0, false), "COM-1,9600, N ,8 ,1 not active");  // no blank before a minus
}

TEST(SettingsString, ParsedWithItsBlanksBuiltAndSelectedInTheDialog) {
  EXPECT_EQ(ParseSettingsString("9600, N ,8 ,1"), (LineSettings{9600, 'N', 8, StopBits::One}));
  EXPECT_EQ(ParseSettingsString("19200,E,7,2"), (LineSettings{19200, 'E', 7, StopBits::Two}));
  EXPECT_EQ(ParseSettingsString("4800,o,8,1.5"),
            (LineSettings{4800, 'O', 8, StopBits::OneAndHalf}));
  for (const char* bad : {"9600,X,8,1", "fast,N,8,1", "9600,N,8,3", "9600,N,8"})
    EXPECT_EQ(ParseSettingsString(bad), std::nullopt) << bad;

  EXPECT_EQ(BuildSettingsString(" 9600 ", "None", "8", "1"), "9600,N,8,1");
  EXPECT_EQ(BuildSettingsString("115200", "Even", " 7", "1.5 "), "115200,E,7,1.5");

  // Indexes into the speed, parity, data-bit and stop-bit lists; -1 for an unlisted speed.
  EXPECT_EQ(SelectionForSettings("9600, N ,8 ,1"), (SettingsSelection{6, 2, 4, 0}));
  EXPECT_EQ(SelectionForSettings("256000,o,4,1.5"), (SettingsSelection{15, 1, 0, 1}));
  EXPECT_EQ(SelectionForSettings("1234,m,8,2"), (SettingsSelection{-1, 3, 4, 2}));
}

TEST(PortTest, BoxTextListsThePortsThatOpened) {
  EXPECT_EQ(PortTestText({}), "No com-interface available");
  EXPECT_EQ(PortTestText({3}), " COM 3 verf\xFCgbar!\r");
  EXPECT_EQ(PortTestText({1, 16}), " COM 1 verf\xFCgbar!\r COM 16 verf\xFCgbar!\r");
  const Box box = PortTestBox({2});
  EXPECT_EQ(box.title, "Einstellungen");
  EXPECT_EQ(box.icon, BoxIcon::Information);
}

}  // namespace
}  // namespace quillon
