#include "project/flag_assignment.h"

#include <gtest/gtest.h>

#include "project/project_file.h"
#include "scripted_dialog.h"
#include "texts_in.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;
using testing::textsIn;

FlagPage pageOn(int flag, const Project& project) {
  FlagPage page;
  EXPECT_TRUE(ChooseFlag(page, project, flag - 1));
  return page;
}

TEST(SetFlagTest, StoresTypedTextsAndSavesThemOrRefuses) {
  struct Case {
    const char* name;
    std::string message;
    std::string phone;
    std::string entry;  // empty: refused
  };
  const Case cases[] = {
      {"emptyPhoneRefused", "7", "", ""},
      {"emptyMessageRefused", "", "3", ""},
      {"zeroPhoneRefused", "7", "00", ""},
      {"leadingZeroKeptAndSaved", "07", "3", "07;3"},
      {"outOfLabelRangeAccepted", "150", "61", "150;61"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const bool stored = !c.entry.empty();
    Project project;
    FlagPage page = pageOn(1, project);
    page.messageField = c.message;
    page.phoneField = c.phone;
    ScriptedDialog dialog;
    EXPECT_EQ(SetFlag(page, project, textsIn(kEnglish), dialog), stored);
    EXPECT_EQ(project.flags.entries[1], stored ? c.entry : "-1;-1");
    EXPECT_EQ(LabelColour(project, 0), stored ? FlagColour::Yellow : FlagColour::White);
    EXPECT_FALSE(project.changed);  // flag assignments never ask to be saved
    EXPECT_EQ(
        dialog.boxes,
        std::vector<Box>(stored ? 0 : 1, Box{"Kestrix", "Details not complete! ",
                                             BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok}));
    const std::string file = ProjectFileBytes(project, dialog, {1, 0, 0});
    EXPECT_EQ(file.ends_with("\r\nE 1;" + c.entry + "\r\nV1.0.0\r\n"), stored);
  }
}

TEST(FlagCommandTest, TypingAndClearingAffectOnlyTheCurrentFlag) {
  Project project;
  ASSERT_TRUE(DataEasyLoad(project.flags, 2, "1;1"));
  ASSERT_TRUE(DataEasyLoad(project.flags, 3, "4;5"));
  const FlagPage page = pageOn(3, project);
  EXPECT_EQ(NumberFieldKey(page, project, 'a'), 0);  // swallowed, but clears all the same
  EXPECT_EQ(project.flags.entries[3], "-1;-1");
  EXPECT_EQ(LabelColour(project, 2), FlagColour::White);
  ASSERT_TRUE(DataEasyLoad(project.flags, 3, "4;5"));
  ClearFlag(page, project);
  EXPECT_EQ(project.flags.entries[3], "-1;-1");
  EXPECT_EQ(project.flags.entries[2], "1;1");
  EXPECT_EQ(LabelColour(project, 1), FlagColour::Yellow);
}

TEST(FlagCommandTest, ChoosingAndLeavingFieldsShowRowsWithinBounds) {
  Project project({.lastMessageIndex = 399});
  project.messages.setCell(100, 4, "Hundert");
  project.messages.setCell(101, 4, "Hinter der Grenze");
  project.phones.setCell(60, 1, "+491715550060");
  const std::pair<std::string, FlagPage> cases[] = {
      {"0100;60", {5, 4, "Marker5", "100", "60", "Hundert", "+491715550060"}},
      {"101;61", {5, 4, "Marker5", "101", "61", "", ""}},
      {"-2;-1", {5, 4, "Marker5", "", "", "", ""}},
      {"100", {5, 4, "Marker5", "100", "", "Hundert", ""}},
  };
  for (const auto& [entry, shown] : cases) {
    ASSERT_TRUE(DataEasyLoad(project.flags, 5, entry));
    FlagPage page;
    page.messageLabel = "stale";
    ASSERT_TRUE(ChooseFlag(page, project, 4));
    EXPECT_EQ(page, shown) << entry;
    EXPECT_FALSE(ChooseFlag(page, project, 32));  // only the 32 labels exist
  }
  FlagPage page;
  page.messageField = "0";
  page.messageLabel = "stale";
  EXPECT_EQ(LeaveMessageField(page, project), std::nullopt);
  EXPECT_EQ(page.messageLabel, "");
}

}  // namespace
}  // namespace quillon
