// Windows needs no lock to tell a living writer, and has no owners to keep: a file that some
// process holds open cannot be deleted (the C runtime opens files without sharing the right to
// delete), so an open temporary file is the sign of a living writer, and one that can be deleted
// was abandoned.

#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "project/system_files.h"

namespace quillon::os {

namespace {

// The errno value whose text says what the system's error means.
int errnoOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
      return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return EACCES;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    case ERROR_NOT_SAME_DEVICE:
      return EXDEV;
    case ERROR_WRITE_PROTECT:
      return EROFS;
    default:
      return EIO;
  }
}

}  // namespace

// The permission bits do not apply: a new file gets what its folder passes on to new files.
Created CreateExclusive(const std::filesystem::path& path, unsigned /*mode*/) {
  const int fd = ::_wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                          _S_IREAD | _S_IWRITE);
  if (fd < 0) return {kNoHandle, errno};
  return {fd, 0};
}

// Held open since its creation, the file could not have been deleted by anyone.
bool ClaimForWriting(Handle /*handle*/, const std::filesystem::path& /*path*/) { return true; }

// Fails, and leaves the file, while a living writer holds it open.
void RemoveIfAbandoned(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::is_regular_file(std::filesystem::symlink_status(path, error))) {
    (void)::DeleteFileW(path.c_str());
  }
}

int WriteAll(Handle handle, std::string_view bytes) {
  constexpr std::size_t kLargestWrite = std::numeric_limits<int>::max() / 2;
  while (!bytes.empty()) {
    const unsigned size = static_cast<unsigned>(std::min(bytes.size(), kLargestWrite));
    const int written = ::_write(handle, bytes.data(), size);
    if (written < 0) return errno;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

int SyncFile(Handle handle) { return ::_commit(handle) == 0 ? 0 : errno; }

// A file that is open cannot be renamed, so it is closed first. Until the rename a clean-up of
// another writer may now delete it; this save then fails, and the target stays as it was.
int ReplaceByRename(Handle& handle, const std::filesystem::path& from,
                    const std::filesystem::path& to) {
  Close(handle);
  // Write-through: the call returns only when the rename is on the disk.
  if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    return 0;
  }
  return errnoOf(::GetLastError());
}

// MoveFileExW has done it already.
void SyncFolder(const std::filesystem::path& /*folder*/) {}

void Close(Handle& handle) {
  if (handle < 0) return;
  ::_close(handle);
  handle = kNoHandle;
}

// An open file cannot be deleted.
void CloseAndRemove(Handle& handle, const std::filesystem::path& path) {
  Close(handle);
  (void)::_wunlink(path.c_str());
}

std::optional<Attributes> AttributesOf(const std::filesystem::path& path) {
  struct _stat64 status {};
  if (::_wstat64(path.c_str(), &status) != 0) return std::nullopt;
  return Attributes{static_cast<unsigned>(status.st_mode) & 0777U, 0, 0};
}

// Nothing to take over: files have no owner to keep, a read-only file is refused beforehand, and
// who may read the new file follows from its folder as for the file it replaces.
int TakeAttributes(Handle /*handle*/, const Attributes& /*like*/) { return 0; }

// Fails for the read-only attribute; access lists are checked by the rename itself.
int WriteAccess(const std::filesystem::path& path) {
  return ::_waccess(path.c_str(), 2) == 0 ? 0 : errno;
}

void GiveToOwnerOf(const std::filesystem::path& /*folder*/,
                   const std::filesystem::path& /*parent*/) {}

bool LocalTime(std::time_t time, std::tm& local) { return ::localtime_s(&local, &time) == 0; }

std::FILE* OpenForReading(const std::filesystem::path& path) {
  return ::_wfopen(path.c_str(), L"rb");
}

}  // namespace quillon::os
