#include <gtest/gtest.h>

#include "link/identity.h"
#include "scripted_dialog.h"

namespace quillon::testing {
namespace {

struct DecodeRow {
  const char* name;
  std::string reply;
  DeviceIdentity expected;  // every field but raw and holdsData
  int indexBefore;
  int indexAfter;
  std::vector<std::string> boxes;  // all titled "Version"
};

DeviceIdentity shown(std::string version, std::string bus, std::string unit, std::string firmware,
                     std::string messages, std::string phones, int conflicts) {
  DeviceIdentity id;
  id.version = std::move(version);
  id.bus = std::move(bus);
  id.unit = std::move(unit);
  id.firmware = std::move(firmware);
  id.messageCount = std::move(messages);
  id.phoneCount = std::move(phones);
  id.conflicts = conflicts;
  return id;
}

const std::string kWrongDevice = "Kestrix ist auf falsches Ger\xE4t eingestellt";

class Decode : public ::testing::TestWithParam<DecodeRow> {};

TEST_P(Decode, FillsTheLabelsAndRaisesConflicts) {
  const auto& row = GetParam();
  DeviceIdentity identity;
  ModuleLimits limits;
  limits.lastMessageIndex = row.indexBefore;
  int expectedPhones = 60;
  ScriptedDialog dialog;

  const int conflicts = DecodeIdentity(row.reply, identity, limits, expectedPhones, dialog);

  DeviceIdentity expected = row.expected;
  expected.raw = row.reply;
  expected.holdsData = true;
  EXPECT_EQ(identity, expected);
  EXPECT_EQ(conflicts, row.expected.conflicts);
  EXPECT_EQ(limits.lastMessageIndex, row.indexAfter);
  EXPECT_EQ(dialog.texts(), row.boxes);
  for (const auto& box : dialog.boxes) EXPECT_EQ(box.title, "Version");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Decode,
    ::testing::Values(
        DecodeRow{"telvaneWith100MessagesAnd60Phones",
                  "007B090300003E\xFD",
                  shown("1.23", " Millenium M3", " Telvane", " Alarmieren", " 100", "60", 0),
                  99,
                  99,
                  {}},
        DecodeRow{"busFourIsEasy400",
                  "0064040300003E",
                  shown("1", " EASY400", " Telvane", " Alarmieren", " 100", "60", 0),
                  99,
                  99,
                  {}},
        DecodeRow{"busFiveIsEasy400Too",
                  "0096050300003E",
                  shown("1.5", " EASY400", " Telvane", " Alarmieren", " 100", "60", 0),
                  99,
                  99,
                  {}},
        DecodeRow{"busTenIsUnknown",
                  "00960A0300003E",
                  shown("1.5", " unbekannt", " Telvane", " Alarmieren", " 100", "60", 0),
                  99,
                  99,
                  {}},
        DecodeRow{"sizeOneRaisesTheLimitTo399",
                  "007B090301013E",
                  shown("1.23", " Millenium M3", " Telvane", " Fernwirken", " 400", "60", 0),
                  99,
                  399,
                  {}},
        DecodeRow{"otherSizeIsUnknownAndLowersTheLimit",
                  "007B090302023E",
                  shown("1.23", " Millenium M3", " Telvane", " DF\xDC", " unbekannt", "60", 0),
                  399,
                  99,
                  {}},
        DecodeRow{"unknownFunction",
                  "007B090300073E",
                  shown("1.23", " Millenium M3", " Telvane", " unbekannt", " 100", "60", 0),
                  99,
                  99,
                  {}},
        DecodeRow{"phoneFieldTwoLeavesTheCountEmpty",
                  "007B0903000002",
                  shown("1.23", " Millenium M3", " Telvane", " Alarmieren", " 100", "", 0),
                  99,
                  99,
                  {}},
        DecodeRow{"otherPhoneCountConflicts",
                  "007B0903000028",
                  shown("1.23", " Millenium M3", " Telvane", " Alarmieren", " 100", "38", 2),
                  99,
                  99,
                  {"Falsche Anzahl Telefonnummern: \nEingestellt sind  60, aber im Ger\xE4t ist "
                   "Platz f\xFCr 38"}},
        DecodeRow{
            "firmwareTwoIsNotReadable",
            "0002090300003E",
            shown("2 (nicht lesbar)", " Millenium M3", " Telvane", " Alarmieren", " 100", "60", 0),
            99,
            99,
            {}},
        DecodeRow{"emptyReplyIsTheWrongDevice",
                  "",
                  shown("0", " Kein Bus", " Tarvos", " Alarmieren", " 100", "", 1),
                  99,
                  99,
                  {kWrongDevice}},
        DecodeRow{"partialFieldReadsItsDigits",
                  "7",
                  shown("0.07", " Kein Bus", " Tarvos", " Alarmieren", " 100", "", 1),
                  99,
                  99,
                  {kWrongDevice}},
        DecodeRow{"wrongDeviceAndWrongPhoneCount",
                  "007B0901000020",
                  shown("1.23", " Millenium M3", " Ombra", " Alarmieren", " 100", "30", 3),
                  99,
                  99,
                  {kWrongDevice,
                   "Falsche Anzahl Telefonnummern: \nEingestellt sind  60, aber im Ger\xE4t ist "
                   "Platz f\xFCr 30"}},
        DecodeRow{"unknownDeviceHasNoBoxOfItsOwn",
                  "007B0907000028",
                  shown("1.23", " Millenium M3", " unbekannt", " Alarmieren", " 100", "38", 2),
                  99,
                  99,
                  {"Falsche Anzahl Telefonnummern: \nEingestellt sind  60, aber im Ger\xE4t ist "
                   "Platz f\xFCr 38"}}),
    [](const auto& p) { return std::string(p.param.name); });

struct VersionRow {
  unsigned value;
  std::string text;
};

TEST(FirmwareVersionText, IsTheValueDividedByHundred) {
  for (const auto& [value, text] :
       {VersionRow{123, "1.23"}, VersionRow{100, "1"}, VersionRow{150, "1.5"},
        VersionRow{210, "2.1"}, VersionRow{5, "0.05"}, VersionRow{0, "0"},
        VersionRow{2, "2 (nicht lesbar)"}, VersionRow{65535, "655.35"}}) {
    EXPECT_EQ(FirmwareVersionText(value), text) << value;
  }
}

}  // namespace
}  // namespace quillon::testing
