#include <gtest/gtest.h>

#include "project/project_file.h"
#include "project/validation.h"
#include "row_name.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;

const std::string kPads20(20, '\xB6');

std::string repeatLines(int count, const std::string& prefix) {
  std::string lines;
  for (int i = 0; i < count; ++i) lines += prefix + std::to_string(i) + ";\r\n";
  return lines;
}

// A value of the loaded project by name, so that each row can list only what it is about.
std::string valueOf(const Project& project, const std::string& key) {
  if (key == "smsc") return project.smsCentre;
  if (key == "pin") return project.pin;
  if (key == "station") return project.station;
  if (key == "ack1") return project.ack.first;
  if (key == "ack2") return project.ack.second;
  if (key == "suffix") return project.phoneSuffix;
  if (key.starts_with("flag")) {
    return project.flags.entries[static_cast<std::size_t>(std::stoi(key.substr(4)))];
  }
  if (key.starts_with("used")) {
    return project.flags.used[static_cast<std::size_t>(std::stoi(key.substr(4)))] ? "yes" : "no";
  }
  // "M4.5": message row 4, column 5; "F1.2", "T3.1" likewise.
  const auto dot = key.find('.');
  const int row = std::stoi(key.substr(1, dot - 1));
  const int column = std::stoi(key.substr(dot + 1));
  const TableKind kind = key[0] == 'M'   ? TableKind::Messages
                         : key[0] == 'F' ? TableKind::Filters
                                         : TableKind::Phones;
  return TableOf(project, kind).cell(row, column);
}

struct LoadCase {
  const char* name;
  std::string file;
  std::vector<std::pair<std::string, std::string>> values;
  std::vector<std::string> boxes;
  int language = kEnglish;
};

class ProjectFileLoadTest : public ::testing::TestWithParam<LoadCase> {};

TEST_P(ProjectFileLoadTest, DataLandsWhereTheRecordsSay) {
  const LoadCase& c = GetParam();
  UiTexts texts;
  texts.fill(c.language);
  Project project;
  project.changed = true;
  ScriptedDialog dialog;
  ProjectFileLoadBytes(c.file, project, texts, dialog);
  for (const auto& [key, expected] : c.values) EXPECT_EQ(valueOf(project, key), expected) << key;
  EXPECT_EQ(dialog.texts(), c.boxes);
  for (const Box& box : dialog.boxes) EXPECT_EQ(box.title, "Kestrix");
  EXPECT_FALSE(project.changed);
}

INSTANTIATE_TEST_SUITE_P(
    Quirks, ProjectFileLoadTest,
    ::testing::Values(
        LoadCase{"semicolonInTextBecomesComment",
                 "M@Pumpe; aus;Keller\r\n",
                 {{"M1.4", "Pumpe"}, {"M1.5", " aus;Keller"}},
                 {}},
        LoadCase{
            "textWithoutSemicolonIsComment", "M@Alarm\r\n", {{"M1.4", ""}, {"M1.5", "Alarm"}}, {}},
        LoadCase{"textBlanksTrimmed", "M@  Alarm  ;\r\n", {{"M1.4", "Alarm"}}, {}},
        LoadCase{"flagCharacterSetsMarks",
                 "MGaa;\r\nMDbb;\r\nMBcc;\r\n",
                 {{"M1.1", "x"},
                  {"M1.2", "x"},
                  {"M1.3", "x"},
                  {"M2.1", ""},
                  {"M2.2", ""},
                  {"M2.3", "x"},
                  {"M3.1", ""},
                  {"M3.2", "x"},
                  {"M3.3", ""}},
                 {}},
        LoadCase{"unknownFlagCharacterStillCounts",
                 "M@aa;\r\nMZbb;\r\nMHcc;\r\nM@dd;\r\n",
                 {{"M1.4", "aa"}, {"M2.4", ""}, {"M2.5", ""}, {"M3.4", ""}, {"M4.4", "dd"}},
                 {}},
        LoadCase{"bareMRecordIsEmptyRow", "M\r\nM@bb;\r\n", {{"M1.4", ""}, {"M2.4", "bb"}}, {}},
        LoadCase{"ackRecordTakesARow",
                 "M@aa;\r\nMQ *T# ; Vielen Dank ??? \r\nM@bb;\r\n",
                 {{"ack1", "*T#"},
                  {"ack2", "Vielen Dank ???"},
                  {"M1.4", "aa"},
                  {"M2.4", ""},
                  {"M3.4", "bb"}},
                 {}},
        LoadCase{"oneCharacterWarnsExceptFirst",
                 "M@a;\r\nM@b;\r\n",
                 {{"M1.4", "a"}, {"M2.4", "b"}},
                 {"Message nr. 1only 1 character"}},
        LoadCase{"oneCharacterGerman",
                 "M@aa;\r\nM@b;\r\n",
                 {{"M2.4", "b"}},
                 {"Meldungsnr.: 1nur 1 Zeichen!"},
                 kGerman},
        LoadCase{"longTextKeptAfterWarning",
                 "M@" + std::string(161, 'z') + ";\r\n",
                 {{"M1.4", std::string(161, 'z')}},
                 {"Message nr. 0 > 160"}},
        LoadCase{"fourHundredMessagesIntoHundredWarnOnce",
                 repeatLines(400, "M@Text "),
                 {{"M1.4", "Text 0"}, {"M100.4", "Text 99"}},
                 {"Max.  99Messages!!"}},
        LoadCase{"messageLimitGerman",
                 repeatLines(101, "M@Text "),
                 {{"M100.4", "Text 99"}},
                 {"Max.  99Meldungen!!"},
                 kGerman},
        LoadCase{"ackAfterLimitStillRead",
                 repeatLines(100, "M@Text ") + "MQa;b\r\n",
                 {{"ack1", "a"}, {"ack2", "b"}},
                 {}},
        LoadCase{"filterNumberIgnored",
                 "F05Reset;Fernquittung\r\nF01Zwei;\r\n",
                 {{"F1.1", "Reset"}, {"F1.2", "Fernquittung"}, {"F2.1", "Zwei"}, {"F5.1", ""}},
                 {}},
        LoadCase{"elevenFiltersWarnOnce",
                 repeatLines(12, "F00Filter "),
                 {{"F10.1", "Filter 9"}},
                 {"Max.  10Filter texts"}},
        LoadCase{"filterOneCharacterWarns",
                 "F01ab;\r\nF02c;\r\n",
                 {{"F2.1", "c"}},
                 {"Message nr. 1only 1 character"}},
        LoadCase{
            "shortFilterRecordIsEmptyRow", "F0\r\nF02b2;\r\n", {{"F1.1", ""}, {"F2.1", "b2"}}, {}},
        LoadCase{"firstTIsAlwaysSmsCentre",
                 "T0171\xB6\xB6\xB6;Hans\r\nT0172" + kPads20 + ";Otto\r\n",
                 {{"smsc", "0171"}, {"T1.1", "0172"}, {"T1.2", "Otto"}},
                 {}},
        LoadCase{"padsRemovedOnlyAtEnd",
                 "T;SMSC\r\nT01\xB6"
                 "71\xB6\xB6;A\r\n",
                 {{"smsc", ""},
                  {"T1.1",
                   "01\xB6"
                   "71"}},
                 {}},
        LoadCase{"phoneWithoutSemicolonKeepsNameOnly",
                 "TSMSC\r\nT0171\r\n",
                 {{"smsc", ""}, {"T1.1", ""}, {"T1.2", "0171"}},
                 {}},
        LoadCase{"tooManyPhonesWarnOnce",
                 repeatLines(63, "T0171"),
                 {{"smsc", "01710"}, {"T1.1", "01711"}, {"T60.1", "017160"}},
                 {"Too many phone numbers"}},
        LoadCase{"tooManyPhonesGerman",
                 repeatLines(62, "T0171"),
                 {},
                 {"Zu viele Telefonnummern !"},
                 kGerman},
        LoadCase{"stationRecord",
                 "L1;;04D2;Pumpwerk;Nord\r\n",
                 {{"pin", "1234"}, {"station", "Pumpwerk;Nord"}},
                 {}},
        LoadCase{
            "stationPinNotHex", "L1;x;zz;Nord\r\n", {{"pin", "0000"}, {"station", "Nord"}}, {}},
        LoadCase{"stationRecordCut", "L1\r\n", {{"pin", "0000"}, {"station", ""}}, {}},
        LoadCase{"flagRecords",
                 "E 5;07;3\r\nE 6;-2;-1\r\nE 7;0;4\r\n",
                 {{"flag5", "07;3"},
                  {"used5", "yes"},
                  {"flag6", "-2;-1"},
                  {"used6", "no"},
                  {"flag7", "0;4"},
                  {"used7", "no"}},
                 {}},
        LoadCase{"oldFlagFormIgnored", "EV0A0B0C0D0E\r\nEV\r\n", {{"flag0", "-1;-1"}}, {}},
        LoadCase{"flagBeyondTableIgnored", "E 101;1;1\r\nE -3;1;1\r\n", {}, {}},
        LoadCase{"phoneSuffixNeverRead", "P0049\xB6\xB6\r\n", {{"suffix", ""}}, {}},
        LoadCase{"otherLinesIgnored",
                 "V9.9.9\r\nXjunk\r\n;M@x\r\n\r\n\r\nM@real;\r\n",
                 {{"M1.4", "real"}},
                 {}},
        LoadCase{"bareLineFeedsAndCarriageReturns",
                 "M@eins;\nM@zwei;\rM@drei;\r\n",
                 {{"M1.4", "eins"}, {"M2.4", "zwei"}, {"M3.4", "drei"}},
                 {}}),
    testing::RowName{});

TEST(ProjectFileLoadTest, LoadingClearsWhatWasThere) {
  Project project;
  project.messages.setCell(50, 4, "alt");
  project.phones.setCell(60, 2, "alt");
  project.filters.setCell(10, 1, "alt");
  project.pin = "1234";
  project.station = "alt";
  project.flags.entries[3] = "1;1";
  project.flags.used[3] = true;
  UiTexts texts;
  ScriptedDialog dialog;
  ProjectFileLoadBytes("M@neu;\r\n", project, texts, dialog);
  Project expected;
  expected.messages.setCell(1, 4, "neu");
  EXPECT_EQ(project, expected);
}

}  // namespace
}  // namespace quillon
