// quillon-cli history FILE.EAY: the previous versions that saves keep of a project file.

#include <iomanip>
#include <string>
#include <vector>

#include "cli/command.h"
#include "project/file_history.h"

namespace quillon::cli {

namespace {

int runHistory(const CommandContext& context) {
  const std::string& file = context.arguments[0];
  const std::vector<FileVersion> versions = ListVersions(file);
  if (versions.empty()) {
    context.err << "No previous versions of " << file << "\n";
    return kExitOk;
  }
  const int width = static_cast<int>(std::to_string(versions.size()).size());
  std::size_t number = 1;
  for (auto it = versions.rbegin(); it != versions.rend(); ++it, ++number) {
    context.out << std::setw(width) << number << "  " << it->time << "  " << std::setw(8)
                << it->size << " bytes  " << it->name << "\n";
  }
  return kExitOk;
}

}  // namespace

extern const Command kHistoryCommand;
const Command kHistoryCommand{
    "history",
    "FILE.EAY",
    1,
    "list the previous versions of a project file",
    "Every save that replaces a project file (in the program, or with resave, upload\n"
    "and restore here) first keeps the version it replaces in the folder\n"
    ".quillon-history beside the file; the newest 20 of each file are kept. This lists\n"
    "them, newest first: the number that restore takes, the time that version was\n"
    "saved, its size and its name in .quillon-history. A save that writes what the\n"
    "file holds already keeps nothing.\n",
    runHistory,
};

}  // namespace quillon::cli
