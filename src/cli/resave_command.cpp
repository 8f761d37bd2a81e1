// quillon-cli resave IN.EAY OUT.EAY: Open followed by Save as, without the windows.

#include "cli/command.h"
#include "cli/terminal_dialog.h"
#include "text/code_page.h"

namespace quillon::cli {

namespace {

int runResave(const CommandContext& context) {
  TerminalDialog dialog(context.err);
  Project project;
  const LoadResult loaded = ProjectFileLoad(context.arguments[0], project, context.texts, dialog);
  if (loaded.status != LoadStatus::Ok) return ExitCodeFor(loaded.status);

  const WriteResult saved = ProjectFileSave(context.arguments[1], project, dialog);
  if (!saved.ok) {
    context.err << "quillon-cli: cannot write " << context.arguments[1] << ": "
                << cp1252ToUtf8(saved.error) << "\n";
    return kExitCannotWrite;
  }
  return kExitOk;
}

}  // namespace

extern const Command kResaveCommand;
const Command kResaveCommand{
    "resave",
    "IN.EAY OUT.EAY",
    2,
    "load a project file and save it again (Open, then Save as)",
    "Loads IN.EAY and saves the project to OUT.EAY, exactly as opening the file and\n"
    "saving it under a new name in the program would. Saving cleans the phone numbers;\n"
    "their warnings and those of loading are printed on the error output. OUT.EAY is\n"
    "replaced as a whole or, when saving fails, left as it was; the version it\n"
    "replaces is kept (see history). A folder, a pipe, a device or a read-only file\n"
    "is not replaced (exit 73).\n",
    runResave,
};

}  // namespace quillon::cli
