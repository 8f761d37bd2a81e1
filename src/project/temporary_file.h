#pragma once
// The temporary files of the safe writer: ".<name>.quillon-<16 hex digits>.tmp" beside the file
// they will replace. Each name is random and created exclusively, so a save that was killed can
// never block a later one. While a writer lives it holds its temporary file (a lock on POSIX, the
// open file itself on Windows); one that nobody holds any more was left by a writer that died,
// and may be removed.

#include <filesystem>
#include <string_view>

namespace quillon {

struct TemporaryFile {
  int fd = -1;  // open for writing and held; -1 on failure
  std::filesystem::path path;
  int error = 0;  // errno when fd is -1
};

// Creates a new temporary file for `target` in the target's folder, with the permission bits
// `mode` (less the umask).
[[nodiscard]] TemporaryFile CreateTemporaryBeside(const std::filesystem::path& target,
                                                  unsigned mode);

// True for the names CreateTemporaryBeside makes.
[[nodiscard]] bool IsTemporaryName(std::string_view name);

// Removes the temporary files in `folder` whose writer has died. Those of living writers, and any
// file it cannot claim, are left alone.
void RemoveAbandonedTemporaries(const std::filesystem::path& folder);

}  // namespace quillon
