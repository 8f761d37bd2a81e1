#include "project/file_commands.h"

namespace quillon {

BoxAnswer AskChanged(Project& project, const UiTexts& texts, UserDialog& dialog,
                     const std::function<void()>& saveAs) {
  if (!project.changed) return BoxAnswer::Ok;
  const Box question{kMainTitle, texts[slot::kDataChangedSave], BoxIcon::Exclamation,
                     BoxButtons::YesNo, BoxAnswer::Yes};
  const BoxAnswer answer = dialog.ask(question);
  if (answer == BoxAnswer::No) return answer;
  if (saveAs) saveAs();
  project.changed = false;
  return answer;
}

ReplaceChoice AskReplaceExisting(const std::string& pathText, const UiTexts& texts,
                                 UserDialog& dialog) {
  const Box question{kMainTitle, texts[slot::kReplaceExistingFile] + " - " + pathText + "?",
                     BoxIcon::Question, BoxButtons::YesNoCancel, BoxAnswer::Yes};
  switch (dialog.ask(question)) {
    case BoxAnswer::Yes:
      return ReplaceChoice::Replace;
    case BoxAnswer::No:
      return ReplaceChoice::ChooseAgain;
    default:
      return ReplaceChoice::SaveOver;
  }
}

}  // namespace quillon
