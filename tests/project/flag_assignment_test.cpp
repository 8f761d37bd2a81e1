#include "project/flag_assignment.h"

#include <gtest/gtest.h>

#include "project/project_file.h"
#include "row_name.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;

UiTexts english() {
  UiTexts texts;
  texts.fill(kEnglish);
  return texts;
}

FlagPage pageOn(int flag, const Project& project) {
  FlagPage page;
  EXPECT_TRUE(ChooseFlag(page, project, flag - 1));
  return page;
}

struct SetCase {
  const char* name;
  std::string message;
  std::string phone;
  bool stored;
  std::string entry;
  std::vector<std::string> boxes;
};

class SetFlagTest : public ::testing::TestWithParam<SetCase> {};

TEST_P(SetFlagTest, StoresTypedTextsOrRefuses) {
  const SetCase& c = GetParam();
  Project project;
  FlagPage page = pageOn(1, project);
  page.messageField = c.message;
  page.phoneField = c.phone;
  ScriptedDialog dialog;
  EXPECT_EQ(SetFlag(page, project, english(), dialog), c.stored);
  EXPECT_EQ(project.flags.entries[1], c.entry);
  EXPECT_EQ(LabelColour(project, 0), c.stored ? FlagColour::Yellow : FlagColour::White);
  EXPECT_EQ(dialog.texts(), c.boxes);
  for (const Box& box : dialog.boxes) {
    EXPECT_EQ(box.icon, BoxIcon::Exclamation);
    EXPECT_EQ(box.title, "Kestrix");
  }
  EXPECT_FALSE(project.changed);  // flag assignments never ask to be saved
}

INSTANTIATE_TEST_SUITE_P(
    Fields, SetFlagTest,
    ::testing::Values(
        SetCase{"emptyPhoneRefused", "7", "", false, "-1;-1", {"Details not complete! "}},
        SetCase{"emptyMessageRefused", "", "3", false, "-1;-1", {"Details not complete! "}},
        SetCase{"zeroPhoneRefused", "7", "00", false, "-1;-1", {"Details not complete! "}},
        SetCase{"leadingZeroKept", "07", "3", true, "07;3", {}},
        SetCase{"outOfLabelRangeAccepted", "150", "61", true, "150;61", {}}),
    testing::RowName{});

TEST(SetFlagTest, StoredEntryIsSavedAsTyped) {
  Project project;
  FlagPage page = pageOn(1, project);
  page.messageField = "07";
  page.phoneField = "3";
  ScriptedDialog dialog;
  ASSERT_TRUE(SetFlag(page, project, english(), dialog));
  const std::string file = ProjectFileBytes(project, dialog, {1, 0, 0});
  EXPECT_NE(file.find("\r\nE 1;07;3\r\nV1.0.0\r\n"), std::string::npos);
}

TEST(SetFlagTest, NothingHappensBeforeAFlagIsChosen) {
  Project project;
  FlagPage page;
  page.messageField = "1";
  page.phoneField = "1";
  ScriptedDialog dialog;
  EXPECT_FALSE(SetFlag(page, project, english(), dialog));
  EXPECT_EQ(project.flags, FlagTable{});
}

TEST(NumberFieldKeyTest, EveryKeyClearsTheAssignment) {
  Project project;
  ASSERT_TRUE(DataEasyLoad(project.flags, 3, "4;5"));
  const FlagPage page = pageOn(3, project);
  EXPECT_EQ(NumberFieldKey(page, project, '1'), '1');
  EXPECT_EQ(project.flags.entries[3], "-1;-1");
  EXPECT_EQ(LabelColour(project, 2), FlagColour::White);

  ASSERT_TRUE(DataEasyLoad(project.flags, 3, "4;5"));
  EXPECT_EQ(NumberFieldKey(page, project, 'a'), 0);
  EXPECT_EQ(project.flags.entries[3], "-1;-1");
}

TEST(ClearFlagTest, ClearsOnlyTheCurrentFlag) {
  Project project;
  ASSERT_TRUE(DataEasyLoad(project.flags, 2, "1;1"));
  ASSERT_TRUE(DataEasyLoad(project.flags, 3, "2;2"));
  ClearFlag(pageOn(3, project), project);
  EXPECT_EQ(project.flags.entries[2], "1;1");
  EXPECT_EQ(project.flags.entries[3], "-1;-1");
  EXPECT_EQ(LabelColour(project, 1), FlagColour::Yellow);
  EXPECT_EQ(LabelColour(project, 2), FlagColour::White);
}

struct ClearAllCase {
  const char* name;
  BoxAnswer answer;
  bool cleared;
};

class ClearAllFlagsTest : public ::testing::TestWithParam<ClearAllCase> {};

TEST_P(ClearAllFlagsTest, AsksFirst) {
  const ClearAllCase& c = GetParam();
  Project project;
  ASSERT_TRUE(DataEasyLoad(project.flags, 9, "1;2"));
  const FlagTable before = project.flags;
  ScriptedDialog dialog({c.answer});
  EXPECT_EQ(ClearAllFlags(project, english(), dialog), c.cleared);
  EXPECT_EQ(project.flags, c.cleared ? FlagTable{} : before);
  ASSERT_EQ(dialog.boxes.size(), 1U);
  EXPECT_EQ(dialog.boxes[0], (Box{"Kestrix", "Really clear all? ", BoxIcon::Question,
                                  BoxButtons::YesNo, BoxAnswer::Yes}));
}

INSTANTIATE_TEST_SUITE_P(Answers, ClearAllFlagsTest,
                         ::testing::Values(ClearAllCase{"yesClears", BoxAnswer::Yes, true},
                                           ClearAllCase{"noKeeps", BoxAnswer::No, false}),
                         testing::RowName{});

struct ChooseCase {
  const char* name;
  std::string entry;
  FlagPage page;
};

class ChooseFlagTest : public ::testing::TestWithParam<ChooseCase> {};

TEST_P(ChooseFlagTest, ShowsTheAssignment) {
  const ChooseCase& c = GetParam();
  Project project({.lastMessageIndex = 399});
  project.messages.setCell(7, 4, "Pumpe 1 Fehler");
  project.messages.setCell(101, 4, "Hinter der Grenze");
  project.phones.setCell(3, 1, "+491715550003");
  project.phones.setCell(60, 1, "+491715550060");
  ASSERT_TRUE(DataEasyLoad(project.flags, 5, c.entry));
  FlagPage page;
  page.messageLabel = "stale";
  ASSERT_TRUE(ChooseFlag(page, project, 4));
  EXPECT_EQ(page, c.page);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, ChooseFlagTest,
    ::testing::Values(
        ChooseCase{"numbersReadAsValues",
                   "07;3",
                   {5, 4, "Marker5", "7", "3", "Pumpe 1 Fehler", "+491715550003"}},
        ChooseCase{"labelBoundsAre100And60", "101;61", {5, 4, "Marker5", "101", "61", "", ""}},
        ChooseCase{"lastPhoneShown", "1;60", {5, 4, "Marker5", "1", "60", "", "+491715550060"}},
        ChooseCase{"unusedShowsNothing", "-1;-1", {5, 4, "Marker5", "", "", "", ""}},
        ChooseCase{"receptionFlagShowsNothing", "-2;-1", {5, 4, "Marker5", "", "", "", ""}},
        ChooseCase{
            "withoutSemicolonOnlyMessage", "7", {5, 4, "Marker5", "7", "", "Pumpe 1 Fehler", ""}}),
    testing::RowName{});

TEST(ChooseFlagTest, OnlyThe32LabelsExist) {
  Project project;
  FlagPage page;
  EXPECT_FALSE(ChooseFlag(page, project, 32));
  EXPECT_FALSE(ChooseFlag(page, project, -1));
  EXPECT_EQ(page, FlagPage{});
}

struct LeaveCase {
  const char* name;
  std::string field;
  std::optional<int> row;
  std::string label;
};

class LeaveMessageFieldTest : public ::testing::TestWithParam<LeaveCase> {};

TEST_P(LeaveMessageFieldTest, ShowsRowWithinBounds) {
  const LeaveCase& c = GetParam();
  Project project({.lastMessageIndex = 399});
  project.messages.setCell(1, 4, "Erste");
  project.messages.setCell(100, 4, "Hundert");
  project.messages.setCell(101, 4, "Hunderteins");
  FlagPage page;
  page.messageField = c.field;
  page.messageLabel = "stale";
  EXPECT_EQ(LeaveMessageField(page, project), c.row);
  EXPECT_EQ(page.messageLabel, c.label);
}

INSTANTIATE_TEST_SUITE_P(Bounds, LeaveMessageFieldTest,
                         ::testing::Values(LeaveCase{"zeroEmpties", "0", std::nullopt, ""},
                                           LeaveCase{"emptyEmpties", "", std::nullopt, ""},
                                           LeaveCase{"first", "1", 1, "Erste"},
                                           LeaveCase{"leadingZero", "0100", 100, "Hundert"},
                                           LeaveCase{"above100Empties", "101", std::nullopt, ""}),
                         testing::RowName{});

TEST(LeavePhoneFieldTest, BoundsAreOneAndSixty) {
  Project project;
  project.phones.setCell(60, 1, "0171");
  FlagPage page;
  page.phoneField = "60";
  EXPECT_EQ(LeavePhoneField(page, project), 60);
  EXPECT_EQ(page.phoneLabel, "0171");
  page.phoneField = "61";
  EXPECT_EQ(LeavePhoneField(page, project), std::nullopt);
  EXPECT_EQ(page.phoneLabel, "");
}

TEST(ReceptionFlagTest, AtMostOne) {
  Project project;
  ScriptedDialog dialog;
  FlagPage page = pageOn(4, project);
  EXPECT_TRUE(SetReceptionFlag(page, project, english(), dialog));
  EXPECT_EQ(project.flags.entries[4], "-2;-1");
  EXPECT_EQ(LabelColour(project, 3), FlagColour::White);
  EXPECT_EQ(ReceptionFlag(project.flags), 4);

  page = pageOn(6, project);
  EXPECT_FALSE(SetReceptionFlag(page, project, english(), dialog));
  EXPECT_EQ(project.flags.entries[6], "-1;-1");
  ASSERT_EQ(dialog.boxes.size(), 1U);
  EXPECT_EQ(dialog.boxes[0],
            (Box{"Kestrix", "Reception flag is set already. First reset former flag.",
                 BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok}));

  EXPECT_EQ(DataEasySave(project.flags), "E 4;-2;-1\r\n");
  ClearFlag(pageOn(4, project), project);
  page = pageOn(6, project);
  EXPECT_TRUE(SetReceptionFlag(page, project, english(), dialog));
  EXPECT_EQ(ReceptionFlag(project.flags), 6);
}

struct SaveCase {
  const char* name;
  int flag;
  std::string entry;
  std::string records;
};

class DataEasySaveTest : public ::testing::TestWithParam<SaveCase> {};

TEST_P(DataEasySaveTest, WritesPositiveAndReceptionEntries) {
  const SaveCase& c = GetParam();
  FlagTable flags;
  flags.entries[static_cast<std::size_t>(c.flag)] = c.entry;
  EXPECT_EQ(DataEasySave(flags), c.records);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, DataEasySaveTest,
    ::testing::Values(SaveCase{"positive", 1, "07;3", "E 1;07;3\r\n"},
                      SaveCase{"receptionFlag", 5, "-2;-1", "E 5;-2;-1\r\n"},
                      SaveCase{"receptionPrefixOnly", 5, "-25;1", "E 5;-25;1\r\n"},
                      SaveCase{"unusedSkipped", 5, "-1;-1", ""},
                      SaveCase{"blankBeforeNumberCounts", 7, " 3;4", "E 7; 3;4\r\n"}),
    testing::RowName{});

TEST(FlagColourTest, ValuesAndRgb) {
  EXPECT_EQ(ColourValue(FlagColour::White), 16777215U);
  EXPECT_EQ(ColourValue(FlagColour::Yellow), 65535U);
  EXPECT_EQ(ColourRgb(FlagColour::White), (Rgb{255, 255, 255}));
  EXPECT_EQ(ColourRgb(FlagColour::Yellow), (Rgb{255, 255, 0}));
}

}  // namespace
}  // namespace quillon
