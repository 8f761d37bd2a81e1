#pragma once
// What download, upload and logger share on top of the module session: the console of the
// command, the --kind option, wrong usage, and fitting a project to the module's message table.

#include <optional>
#include <string>

#include "cli/command.h"
#include "cli/console.h"
#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"

namespace quillon::cli {

// The standard streams when the command runs on them: questions only when a person can answer
// on standard input, progress only when standard error is a terminal.
[[nodiscard]] Console commandConsole(const CommandContext& context);

// Prints the error with the command's usage line and returns the usage exit code.
[[nodiscard]] int usageError(const CommandContext& context, const Command& command,
                             const std::string& error);

// --kind: "M", "T", "P" or "Y" (either case), or all four in the order of "Download all" and
// "Read all" for "all"; nullopt for anything else.
[[nodiscard]] std::optional<std::string> parseKinds(const std::string& text);

// The content label the transfer window shows for a kind.
[[nodiscard]] std::string kindLabel(char kind);

// Limits under which a project file loads without losing messages, whatever the module: the
// module's size is known only once it has answered.
[[nodiscard]] ModuleLimits roomForEveryMessage();

// True when a download of `kind` would send nothing whatever the module: an invalid PIN, or
// messages too long for the text memory even of the smallest module. Then the boxes the download
// would show are shown on `dialog`; otherwise nothing is shown and `project` stays as it is.
[[nodiscard]] bool refusedOnEveryModule(char kind, const Project& project, const UiTexts& texts,
                                        UserDialog& dialog);

// Gives the project the module's message table. Messages beyond it are dropped, with a line on
// `err` naming the first one that held anything.
void fitToModule(Project& project, const ModuleLimits& limits, std::ostream& err);

}  // namespace quillon::cli
