#include "project/project_file.h"

#include <gtest/gtest.h>

#include <array>

#include "file_bytes.h"
#include "project/validation.h"
#include "row_name.h"
#include "scripted_dialog.h"
#include "texts_in.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;
using testing::textsIn;

const std::string kPads20(20, '\xB6');

TEST(ProjectFileSaveTest, EveryRecordKindByteExact) {
  // A small module (3 message rows, 3 phone rows) keeps the expected file short enough to read.
  Project project({.lastMessageIndex = 2, .phoneLimit = 3});
  project.messages.setCell(1, 1, "x");
  project.messages.setCell(1, 4, "Pumpe 1 St\xF6rung");
  project.messages.setCell(1, 5, "Keller");
  project.messages.setCell(3, 2, "x");
  project.messages.setCell(3, 3, "?");  // any text in a mark column counts as a mark
  project.messages.setCell(3, 4, "Niveau; zu hoch");
  project.ack = {" *T# ", " Vielen Dank ??? xxx angekommen "};
  project.filters.setCell(1, 1, "Reset");
  project.filters.setCell(1, 2, "Fernquittung");
  project.filters.setCell(10, 1, "Ende");
  project.smsCentre = "+491710760000";
  project.phones.setCell(1, 1, "+49 (0)171 5551234");
  project.phones.setCell(1, 2, "Meier");
  project.phones.setCell(2, 1, "12");
  project.phones.setCell(2, 2, "zu kurz");
  project.phones.setCell(3, 1, "0049171555123456789012");
  project.pin = "1234";
  project.station = "Pumpwerk M\xFChle";
  project.flags.entries[1] = "07;3";
  project.flags.entries[5] = "-2;-1";
  project.flags.entries[6] = "-25;1";
  project.flags.entries[7] = " 3;4";
  project.flags.entries[9] = "abc";
  project.flags.entries[12] = "0;5";
  project.flags.entries[32] = "12;60";

  ScriptedDialog dialog;
  // The file as it must be, written by hand: data/every_record_saved.EAY.
  EXPECT_EQ(ProjectFileBytes(project, dialog, {3, 6, 7}),
            testing::readBytes(QUILLON_TEST_DATA_DIR "/every_record_saved.EAY"));

  // Saving cleans the table too; the cut to 20 characters is the file's alone.
  EXPECT_EQ(project.phones.cell(1, 1), "+4901715551234");
  EXPECT_EQ(project.phones.cell(2, 1), "");
  EXPECT_EQ(project.phones.cell(3, 1), "0049171555123456789012");
  EXPECT_EQ(dialog.texts(),
            std::vector<std::string>{"Telefonnummer enth\xE4lt ung\xFCltiges "
                                     "Zeichen.\n+49 (0)171 5551234 wird gefiltert! "});
}

TEST(PinTest, FourHexDigitsInFile) {
  // The PIN as typed, its field in the file, and what the PIN box shows after reading it back.
  const std::array<std::string, 3> cases[] = {
      {"1234", "04D2", "1234"},   {"0255", "00FF", "0255"},   {"____", "0000", "0000"},
      {"12__", "0000", "0000"},   {"99999", "869F", "34463"}, {"65535", "FFFF", "65535"},
      {"-1234", "FB2E", "64302"},  // two's complement: 0x10000 - 1234
  };
  for (const auto& [pin, file, loaded] : cases) {
    EXPECT_EQ(PinToFile(pin), file) << pin;
    EXPECT_EQ(PinFromFile(file), loaded) << pin;
  }
  EXPECT_EQ(PinFromFile("04d2"), "1234");
  EXPECT_EQ(PinFromFile(std::string(100000, 'F')), "65535");
}

std::string repeatLines(int count, const std::string& prefix) {
  std::string lines;
  for (int i = 0; i < count; ++i) lines += prefix + std::to_string(i) + ";\r\n";
  return lines;
}

// What a row expects, as "key=value": "M4.5" is message row 4, column 5; "F1.2" and "T3.1"
// likewise; "flag5" and "used5" are entry 5 of the flag table and whether its label is yellow.
std::string valueOf(const Project& project, const std::string& key) {
  if (key == "smsc") return project.smsCentre;
  if (key == "pin") return project.pin;
  if (key == "station") return project.station;
  if (key == "ack") return project.ack.first + "|" + project.ack.second;
  if (key == "suffix") return project.phoneSuffix;
  if (key.starts_with("flag")) return project.flags.entries[std::stoul(key.substr(4))];
  if (key.starts_with("used")) return project.flags.used[std::stoul(key.substr(4))] ? "yes" : "no";
  const auto dot = key.find('.');
  const TableKind kind = key[0] == 'M'   ? TableKind::Messages
                         : key[0] == 'F' ? TableKind::Filters
                                         : TableKind::Phones;
  return TableOf(project, kind)
      .cell(std::stoi(key.substr(1, dot - 1)), std::stoi(key.substr(dot + 1)));
}

struct LoadCase {
  const char* name;
  std::string file;
  std::vector<std::string> values;
  std::vector<std::string> boxes;
  int language = kEnglish;
};

class ProjectFileLoadTest : public ::testing::TestWithParam<LoadCase> {};

TEST_P(ProjectFileLoadTest, DataLandsWhereTheRecordsSay) {
  const LoadCase& c = GetParam();
  Project project;
  // Whatever was there before is gone after any load.
  project.messages.setCell(100, 4, "alt");
  project.station = "alt";
  project.pin = "9999";
  project.flags.entries[3] = "1;1";
  project.changed = true;
  ScriptedDialog dialog;
  ProjectFileLoadBytes(c.file, project, textsIn(c.language), dialog);
  for (const std::string& value : c.values) {
    const auto is = value.find('=');
    EXPECT_EQ(valueOf(project, value.substr(0, is)), value.substr(is + 1)) << value;
  }
  EXPECT_EQ(dialog.texts(), c.boxes);
  for (const Box& box : dialog.boxes) EXPECT_EQ(box.title, "Kestrix");
  EXPECT_FALSE(project.changed);
}

INSTANTIATE_TEST_SUITE_P(
    Quirks, ProjectFileLoadTest,
    ::testing::Values(
        LoadCase{"semicolonInTextBecomesComment",
                 "M@  Pumpe ; aus;Keller\r\nM@Alarm\r\n",
                 {"M1.4=Pumpe", "M1.5= aus;Keller", "M2.4=", "M2.5=Alarm"},
                 {}},
        LoadCase{"ackBareAndUnknownRecordsTakeARow",
                 "M@aa;\r\nMQ *T# ; Vielen Dank ??? \r\nMZbb;\r\nM\r\nM@cc;\r\n",
                 {"ack=*T#|Vielen Dank ???", "M1.4=aa", "M2.4=", "M3.4=", "M4.4=", "M5.4=cc"},
                 {}},
        LoadCase{"lengthChecksWarnButKeepText",
                 "M@a;\r\nM@b;\r\nM@" + std::string(161, 'z') + ";\r\nM@" + std::string(160, 'y') +
                     ";\r\n",
                 {"M1.4=a", "M2.4=b", "M3.4=" + std::string(161, 'z')},
                 {"Message nr. 1only 1 character", "Message nr. 2 > 160"}},
        LoadCase{"fourHundredMessagesIntoHundredWarnOnce",
                 repeatLines(400, "M@Text ") + "MQa;b\r\n",
                 {"M1.4=Text 0", "M100.4=Text 99", "ack=a|b"},
                 {"Max.  99Messages!!"}},
        LoadCase{"filtersAndPhonesBeyondTheLimitWarnOnce",
                 repeatLines(12, "F00Filter ") + repeatLines(63, "T0171"),
                 {"F10.1=Filter 9", "smsc=01710", "T1.1=01711", "T60.1=017160"},
                 {"Max.  10Filter texts", "Too many phone numbers"}},
        LoadCase{"elevenFiltersWarnAtTheEleventh",
                 repeatLines(11, "F00Filter "),
                 {"F10.1=Filter 9"},
                 {"Max.  10Filter texts"}},
        // A body of one character has neither text nor comment; of two, the second is the comment.
        LoadCase{"oneCharacterBodyIsLost",
                 "M@x\r\nM@;x\r\nF01y\r\n",
                 {"M1.4=", "M1.5=", "M2.4=", "M2.5=x", "F1.1=", "F1.2="},
                 {}},
        LoadCase{
            "warningsInGerman",
            "M@aa;\r\nM@b;\r\n" + repeatLines(99, "M@Text ") + repeatLines(62, "T0171"),
            {"M2.4=b"},
            {"Meldungsnr.: 1nur 1 Zeichen!", "Max.  99Meldungen!!", "Zu viele Telefonnummern !"},
            kGerman},
        LoadCase{"filterNumberIgnoredRowsInFileOrder",
                 "F05Reset;Fernquittung\r\nF01Zwei;\r\nF0\r\nF02c;\r\n",
                 {"F1.1=Reset", "F1.2=Fernquittung", "F2.1=Zwei", "F3.1=", "F4.1=c", "F5.1="},
                 {"Message nr. 3only 1 character"}},
        LoadCase{"firstTIsAlwaysSmsCentre",
                 "T0171\xB6\xB6\xB6;Hans\r\nT0172" + kPads20 +
                     ";Otto\r\nT01\xB6x\xB6\xB6;A\r\nT0173\r\n",
                 {"smsc=0171", "T1.1=0172", "T1.2=Otto", "T2.1=01\xB6x", "T3.1=", "T3.2=0173"},
                 {}},
        LoadCase{"stationKeepsItsSemicolons",
                 "L1;;04D2;Pumpwerk;Nord\r\n",
                 {"pin=1234", "station=Pumpwerk;Nord"},
                 {}},
        LoadCase{"pinNotHex", "L1;x;zz;Nord\r\n", {"pin=0000", "station=Nord"}, {}},
        LoadCase{"flagRecordsKeptAsTheyStand",
                 "E 5;07;3\r\nE 6;-2;-1\r\nE 7;0;4\r\nE 101;1;1\r\nE -3;1;1\r\n",
                 {"flag5=07;3", "used5=yes", "flag6=-2;-1", "used6=no", "flag7=0;4", "used7=no",
                  "flag3=-1;-1"},
                 {}},
        LoadCase{"oldEvFormReadAndIgnored",
                 "EV0A0B0C0D0E\r\nEV\r\nE 2;1;1\r\n",
                 {"flag0=-1;-1", "flag1=-1;-1", "flag2=1;1"},
                 {}},
        LoadCase{"phoneSuffixNeverRead", "P0049\xB6\xB6\r\n", {"suffix="}, {}},
        LoadCase{"otherLinesIgnoredAnyLineEnd",
                 "V9.9.9\r\nXjunk\r\n;M@x\r\n\r\nM@eins;\nM@zwei;\rM@drei;\r\n",
                 {"M1.4=eins", "M2.4=zwei", "M3.4=drei", "M100.4=", "station=", "pin=____"},
                 {}}),
    testing::RowName{});

}  // namespace
}  // namespace quillon
