#include "project/file_commands.h"

#include <gtest/gtest.h>

#include "scripted_dialog.h"
#include "texts_in.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;
using testing::textsIn;

TEST(AskChangedTest, SavesOrDropsAndClearsFlag) {
  struct Case {
    const char* name;
    bool changed;
    BoxAnswer answer;
    bool saved;
    bool changedAfter;
  };
  const Case cases[] = {
      {"unchangedAsksNothing", false, BoxAnswer::Yes, false, false},
      {"yesSavesAndClears", true, BoxAnswer::Yes, true, false},
      {"noKeepsFlag", true, BoxAnswer::No, false, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Project project;
    project.changed = c.changed;
    ScriptedDialog dialog({c.answer});
    bool saved = false;
    (void)AskChanged(project, textsIn(kEnglish), dialog, [&saved] { saved = true; });
    EXPECT_EQ(saved, c.saved);
    EXPECT_EQ(project.changed, c.changedAfter);
    EXPECT_EQ(dialog.boxes,
              std::vector<Box>(c.changed ? 1 : 0,
                               Box{"Kestrix", "Data changed. Save?", BoxIcon::Exclamation,
                                   BoxButtons::YesNo, BoxAnswer::Yes}));
  }
}

TEST(AskReplaceExistingTest, NamesThePath) {
  const std::pair<BoxAnswer, ReplaceChoice> cases[] = {
      {BoxAnswer::Yes, ReplaceChoice::DeleteThenSave},
      {BoxAnswer::No, ReplaceChoice::ChooseAgain},
      {BoxAnswer::Cancel, ReplaceChoice::SaveOver},
  };
  for (const auto& [answer, choice] : cases) {
    ScriptedDialog dialog({answer});
    EXPECT_EQ(AskReplaceExisting("/home/anna/Pumpstation.EAY", textsIn(kEnglish), dialog), choice);
    EXPECT_EQ(dialog.boxes,
              (std::vector<Box>{{"Kestrix", "Replace existing file? - /home/anna/Pumpstation.EAY?",
                                 BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Yes}}));
  }
}

}  // namespace
}  // namespace quillon
