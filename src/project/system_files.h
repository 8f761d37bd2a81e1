#pragma once
// What the safe writer needs from the operating system, and nothing else. The writer's logic
// (names, order of steps, which file is refused) is the same everywhere; these calls are not, and
// each system has its own implementation: system_files_posix.cpp, system_files_windows.cpp.
// Errors are errno values, so the texts the user sees are the same on every system.

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string_view>

namespace quillon::os {

// An open file: a file descriptor on POSIX, one of the C runtime on Windows.
using Handle = int;
inline constexpr Handle kNoHandle = -1;

struct Created {
  Handle handle = kNoHandle;
  int error = 0;  // errno when handle is kNoHandle; EEXIST when the name is taken
};

// Creates `path` for writing, failing when anything has that name already. `mode` are the
// permission bits (less the umask) where files have them.
[[nodiscard]] Created CreateExclusive(const std::filesystem::path& path, unsigned mode);

// Marks the new file `path` as being written by a living writer, so that no clean-up takes it
// for abandoned. False when it was taken for abandoned before the mark was set.
[[nodiscard]] bool ClaimForWriting(Handle handle, const std::filesystem::path& path);

// Removes the temporary file `path` when no living writer holds it; leaves it otherwise.
void RemoveIfAbandoned(const std::filesystem::path& path);

// Writes all of `bytes`; 0 or errno.
[[nodiscard]] int WriteAll(Handle handle, std::string_view bytes);

// Hands what was written to the device; 0 or errno. A full disk may show only here.
[[nodiscard]] int SyncFile(Handle handle);

// Puts the complete file `from` in place of `to` in one step; 0 or errno. Where an open file
// cannot be renamed, `handle` is closed first and set to kNoHandle.
[[nodiscard]] int ReplaceByRename(Handle& handle, const std::filesystem::path& from,
                                  const std::filesystem::path& to);

// Makes a rename in `folder` durable, where the system needs a step of its own for that.
void SyncFolder(const std::filesystem::path& folder);

// Closes `handle` (when open) and sets it to kNoHandle.
void Close(Handle& handle);

// Closes `handle` (when open) and removes `path`, in the order the system needs.
void CloseAndRemove(Handle& handle, const std::filesystem::path& path);

// What a new file takes over from the file it replaces.
struct Attributes {
  unsigned mode = 0;  // permission bits, set-id bits included
  unsigned owner = 0;
  unsigned group = 0;
};

// Those of the file `path` names (through links); nothing when there is no such file.
[[nodiscard]] std::optional<Attributes> AttributesOf(const std::filesystem::path& path);

// Gives the open new file the attributes `like`; 0 or errno.
[[nodiscard]] int TakeAttributes(Handle handle, const Attributes& like);

// 0 when this process may write the existing file `path`, errno otherwise.
[[nodiscard]] int WriteAccess(const std::filesystem::path& path);

// Gives `folder` the owner of `parent`, where files have owners and we may.
void GiveToOwnerOf(const std::filesystem::path& folder, const std::filesystem::path& parent);

// `time` as local time; false when it cannot be converted.
[[nodiscard]] bool LocalTime(std::time_t time, std::tm& local);

// `path` opened for reading bytes, or nullptr with errno set.
[[nodiscard]] std::FILE* OpenForReading(const std::filesystem::path& path);

}  // namespace quillon::os
