// quillon-cli restore FILE.EAY VERSION: brings back a version that a save kept.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "project/file_history.h"

namespace quillon::cli {

namespace {

// VERSION as the user gives it: the number history shows (1 the newest), or the version's name.
std::optional<std::string> versionNamed(const std::vector<FileVersion>& versions,
                                        const std::string& version) {
  for (const FileVersion& kept : versions) {
    if (kept.name == version) return kept.name;
  }
  if (version.empty() || version.size() > 3 ||
      version.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  const std::size_t number = std::stoul(version);
  if (number < 1 || number > versions.size()) return std::nullopt;
  return versions[versions.size() - number].name;
}

int runRestore(const CommandContext& context) {
  const std::string& file = context.arguments[0];
  const std::string& version = context.arguments[1];
  const auto name = versionNamed(ListVersions(file), version);
  if (!name) {
    context.err << "quillon-cli: " << file << " has no previous version '" << version
                << "'; 'quillon-cli history " << file << "' lists them\n";
    return kExitCannotRead;
  }
  const WriteResult restored = RestoreVersion(file, *name);
  if (!restored.ok) {
    context.err << "quillon-cli: cannot write " << file << ": " << restored.error << "\n";
    return kExitCannotWrite;
  }
  return kExitOk;
}

}  // namespace

extern const Command kRestoreCommand;
const Command kRestoreCommand{
    "restore",
    "FILE.EAY VERSION",
    2,
    "bring back a previous version of a project file",
    "Puts VERSION back in place of FILE.EAY, byte for byte. VERSION is a number that\n"
    "'history FILE.EAY' shows (1 is the newest) or the name it shows. The file that\n"
    "is replaced is kept as a version in its turn, so a restore can be undone. Exit\n"
    "status 66 when there is no such version, 73 when FILE.EAY cannot be written\n"
    "(it is then left as it was).\n",
    runRestore,
};

}  // namespace quillon::cli
