#include "project/file_commands.h"

#include <gtest/gtest.h>

#include "row_name.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;

UiTexts textsIn(int language) {
  UiTexts texts;
  texts.fill(language);
  return texts;
}

struct AskCase {
  const char* name;
  bool changed;
  std::deque<BoxAnswer> answers;
  bool saved;
  bool changedAfter;
  std::size_t boxes;
};

class AskChangedTest : public ::testing::TestWithParam<AskCase> {};

TEST_P(AskChangedTest, SavesOrDropsAndClearsFlag) {
  const AskCase& c = GetParam();
  Project project;
  project.changed = c.changed;
  ScriptedDialog dialog(c.answers);
  bool saved = false;
  (void)AskChanged(project, textsIn(kEnglish), dialog, [&saved] { saved = true; });
  EXPECT_EQ(saved, c.saved);
  EXPECT_EQ(project.changed, c.changedAfter);
  ASSERT_EQ(dialog.boxes.size(), c.boxes);
  if (c.boxes == 1) {
    EXPECT_EQ(dialog.boxes[0], (Box{"Kestrix", "Data changed. Save?", BoxIcon::Exclamation,
                                    BoxButtons::YesNo, BoxAnswer::Yes}));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, AskChangedTest,
    ::testing::Values(AskCase{"unchangedAsksNothing", false, {}, false, false, 0},
                      AskCase{"yesSavesAndClears", true, {BoxAnswer::Yes}, true, false, 1},
                      AskCase{"noKeepsFlag", true, {BoxAnswer::No}, false, true, 1}),
    testing::RowName{});

TEST(AskChangedTest, CancelledSaveDialogStillClearsFlag) {
  Project project;
  project.changed = true;
  ScriptedDialog dialog({BoxAnswer::Yes});
  (void)AskChanged(project, textsIn(kGerman), dialog, [] { /* the user cancels the dialog */ });
  EXPECT_FALSE(project.changed);
  EXPECT_EQ(dialog.texts(), std::vector<std::string>{"Daten ge\xE4ndert. Abspeichern ?"});
}

struct ReplaceCase {
  const char* name;
  BoxAnswer answer;
  ReplaceChoice choice;
};

class AskReplaceExistingTest : public ::testing::TestWithParam<ReplaceCase> {};

TEST_P(AskReplaceExistingTest, NamesThePath) {
  const ReplaceCase& c = GetParam();
  ScriptedDialog dialog({c.answer});
  EXPECT_EQ(AskReplaceExisting("/home/anna/Pumpstation.EAY", textsIn(kEnglish), dialog), c.choice);
  ASSERT_EQ(dialog.boxes.size(), 1U);
  EXPECT_EQ(dialog.boxes[0], (Box{"Kestrix", "Replace existing file? - /home/anna/Pumpstation.EAY?",
                                  BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Yes}));
}

INSTANTIATE_TEST_SUITE_P(
    Answers, AskReplaceExistingTest,
    ::testing::Values(ReplaceCase{"yesDeletesFirst", BoxAnswer::Yes, ReplaceChoice::DeleteThenSave},
                      ReplaceCase{"noChoosesAgain", BoxAnswer::No, ReplaceChoice::ChooseAgain},
                      ReplaceCase{"cancelSavesOver", BoxAnswer::Cancel, ReplaceChoice::SaveOver}),
    testing::RowName{});

}  // namespace
}  // namespace quillon
