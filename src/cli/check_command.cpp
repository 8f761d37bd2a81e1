// quillon-cli check FILE.EAY: loads a project file and shows what the program would say about it.

#include "cli/command.h"
#include "cli/terminal_dialog.h"

namespace quillon::cli {

namespace {

int runCheck(const CommandContext& context) {
  TerminalDialog dialog(context.err);
  Project project;
  return ExitCodeFor(ProjectFileLoad(context.arguments[0], project, context.texts, dialog).status);
}

}  // namespace

extern const Command kCheckCommand;
const Command kCheckCommand{
    "check",
    "FILE.EAY",
    1,
    "load a project file and print its warnings",
    "Loads FILE.EAY as the program's Open command does and prints every message that\n"
    "loading shows, one per line, on the error output. Warnings do not change the exit\n"
    "status; a missing file prints \"File not found\" and exits with 9.\n",
    runCheck,
};

}  // namespace quillon::cli
