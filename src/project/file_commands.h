#pragma once
// The two questions of the file commands that do not depend on a file dialog: the save prompt
// before changed data are dropped, and the question before "Save as" replaces a file.

#include <functional>
#include <string>

#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"

namespace quillon {

// The save prompt: when the project has unsaved changes, asks "Data changed. Save?" (Yes/No,
// warning icon). Any answer but No runs `saveAs`; afterwards the changed flag is clear whatever
// `saveAs` did, so a cancelled save dialog loses the changes without another question. On No the
// flag stays and the caller goes on. Returns the answer, or Ok when nothing was asked.
BoxAnswer AskChanged(Project& project, const UiTexts& texts, UserDialog& dialog,
                     const std::function<void()>& saveAs);

enum class ReplaceChoice {
  Replace,      // Yes: the old file goes
  ChooseAgain,  // No: show the file dialog again
  SaveOver,     // Cancel: save over the file all the same
};

// "Replace existing file? - <path>?" with Yes, No and Cancel. `pathText` is the path as the
// dialog shows it (Windows-1252).
[[nodiscard]] ReplaceChoice AskReplaceExisting(const std::string& pathText, const UiTexts& texts,
                                               UserDialog& dialog);

}  // namespace quillon
