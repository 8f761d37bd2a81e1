#include <gtest/gtest.h>

#include "link/identity.h"
#include "scripted_dialog.h"

namespace quillon::testing {
namespace {

TEST(DecodeIdentity, FillsTheLabelsAndRaisesConflicts) {
  const std::string wrongDevice = "Kestrix ist auf falsches Ger\xE4t eingestellt";
  const auto phones = [](const std::string& n) {
    return "Falsche Anzahl Telefonnummern: \nEingestellt sind  60, aber im Ger\xE4t ist Platz "
           "f\xFCr " +
           n;
  };
  using Boxes = std::vector<std::string>;  // all titled "Version"
  struct Row {
    const char* name;
    std::string reply;
    std::string shown;  // version|bus|unit|function|messages|phones
    int conflicts;
    Boxes boxes;
  };
  const std::vector<Row> rows = {
      {"telvaneWith100MessagesAnd60Phones", "007B090300003E\xFD",
       "1.23| Millenium M3| Telvane| Alarmieren| 100|60", 0, Boxes{}},
      {"busFourIsEasy400", "0064040300003E", "1| EASY400| Telvane| Alarmieren| 100|60", 0, Boxes{}},
      {"busFiveIsEasy400Too", "0096050300003E", "1.5| EASY400| Telvane| Alarmieren| 100|60", 0,
       Boxes{}},
      {"busTenIsUnknown", "00960A0300003E", "1.5| unbekannt| Telvane| Alarmieren| 100|60", 0,
       Boxes{}},
      {"sizeOneIs400Messages", "007B090301013E", "1.23| Millenium M3| Telvane| Fernwirken| 400|60",
       0, Boxes{}},
      {"otherSizeIsUnknown", "007B090302023E", "1.23| Millenium M3| Telvane| DF\xDC| unbekannt|60",
       0, Boxes{}},
      {"phoneFieldTwoLeavesTheCountEmpty", "007B0903000002",
       "1.23| Millenium M3| Telvane| Alarmieren| 100|", 0, Boxes{}},
      {"otherPhoneCountConflicts", "007B0903000028",
       "1.23| Millenium M3| Telvane| Alarmieren| 100|38", 2, Boxes{phones("38")}},
      {"firmwareTwoIsNotReadable", "0002090300003E",
       "2 (nicht lesbar)| Millenium M3| Telvane| Alarmieren| 100|60", 0, Boxes{}},
      {"emptyReplyIsTheWrongDevice", "", "0| Kein Bus| Tarvos| Alarmieren| 100|", 1,
       Boxes{wrongDevice}},
      {"partialFieldReadsItsDigits", "7", "0.07| Kein Bus| Tarvos| Alarmieren| 100|", 1,
       Boxes{wrongDevice}},
      {"wrongDeviceAndWrongPhoneCount", "007B0901000020",
       "1.23| Millenium M3| Ombra| Alarmieren| 100|30", 3, Boxes{wrongDevice, phones("30")}},
      {"unknownDeviceHasNoBoxOfItsOwn", "007B0907000028",
       "1.23| Millenium M3| unbekannt| Alarmieren| 100|38", 2, Boxes{phones("38")}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    DeviceIdentity id;
    ModuleLimits limits;
    limits.lastMessageIndex = 250;  // neither of the two it may be set to
    int expectedPhones = 60;
    ScriptedDialog dialog;
    EXPECT_EQ(DecodeIdentity(row.reply, id, limits, expectedPhones, dialog), row.conflicts);
    EXPECT_EQ(id.version + "|" + id.bus + "|" + id.unit + "|" + id.firmware + "|" +
                  id.messageCount + "|" + id.phoneCount,
              row.shown);
    EXPECT_EQ(id.conflicts, row.conflicts);
    // The raw reply is shown as sent, without the end mark of the block.
    EXPECT_TRUE(row.reply.starts_with(id.raw));
    EXPECT_EQ(id.raw.find('\xFD'), std::string::npos);
    EXPECT_TRUE(id.holdsData);
    // 400 message texts allow the index 399, every other size 99.
    EXPECT_EQ(limits.lastMessageIndex, id.messageCount == " 400" ? 399 : 99);
    EXPECT_EQ(dialog.texts(), row.boxes);
    for (const auto& box : dialog.boxes) EXPECT_EQ(box.title, "Version");
  }
}

}  // namespace
}  // namespace quillon::testing
