#pragma once
// Where a write to a path lands, and whether it may land there. A symbolic link is written through
// to the file it names, so the link stays a link; only a plain file, or no file yet, is ever
// replaced, so a pipe, a device or a folder never turns into a plain file.

#include <filesystem>
#include <string>

namespace quillon {

struct ResolvedTarget {
  std::filesystem::path path;  // the end of the chain of links (it need not exist yet)
  std::string error;           // why the chain cannot be followed; empty when it can
};

[[nodiscard]] ResolvedTarget ResolveWriteTarget(const std::filesystem::path& path);

// Why the resolved `target` must not be replaced: a folder, a pipe, a device, a socket, or a file
// nobody may write. Empty when it may be, and when there is no file there yet.
[[nodiscard]] std::string WriteRefusal(const std::filesystem::path& target);

// The folder `target` is in, "." for a bare file name.
[[nodiscard]] std::filesystem::path FolderOf(const std::filesystem::path& target);

}  // namespace quillon
