#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "project/system_files.h"

namespace quillon::os {

namespace {

constexpr mode_t kPermissionBits = 07777;
constexpr mode_t kSetIdBits = S_ISUID | S_ISGID;

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

Created CreateExclusive(const std::filesystem::path& path, unsigned mode) {
  const int fd =
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, static_cast<mode_t>(mode));
  if (fd < 0) return {kNoHandle, errno};
  return {fd, 0};
}

// A lock held while writing; the check afterwards catches a clean-up that ran between the
// creation and the lock.
bool ClaimForWriting(Handle handle, const std::filesystem::path& path) {
  if (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
    // Where the file system has no locks, nobody can remove the file as abandoned either.
    if (errno == EWOULDBLOCK) return false;
  }
  struct stat opened {};
  struct stat named {};
  return ::fstat(handle, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         sameFile(opened, named);
}

void RemoveIfAbandoned(const std::filesystem::path& path) {
  // Opened for writing: where locks are emulated (NFS), an exclusive lock needs it.
  const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (fd < 0) return;
  struct stat opened {};
  struct stat named {};
  // The lock is free only when the writer that held it is gone.
  if (::fstat(fd, &opened) == 0 && S_ISREG(opened.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0 &&
      ::lstat(path.c_str(), &named) == 0 && sameFile(opened, named)) {
    ::unlink(path.c_str());
  }
  ::close(fd);
}

int WriteAll(Handle handle, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(handle, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno != EINTR) return errno;
      continue;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

int SyncFile(Handle handle) { return ::fsync(handle) == 0 ? 0 : errno; }

// The file stays open, and so locked, until Close: up to the rename a clean-up must not take it
// for an abandoned one.
int ReplaceByRename(Handle& /*handle*/, const std::filesystem::path& from,
                    const std::filesystem::path& to) {
  return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

// Not every file system can sync a folder, which is no error.
void SyncFolder(const std::filesystem::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  (void)::fsync(fd);
  ::close(fd);
}

void Close(Handle& handle) {
  if (handle < 0) return;
  ::close(handle);
  handle = kNoHandle;
}

// Removed while still locked, so no clean-up can meet it half gone.
void CloseAndRemove(Handle& handle, const std::filesystem::path& path) {
  ::unlink(path.c_str());
  Close(handle);
}

std::optional<Attributes> AttributesOf(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return Attributes{status.st_mode & kPermissionBits, status.st_uid, status.st_gid};
}

// Owner and group of `like`, or at least the group where only that is allowed; then its bits.
// Without the owner, set-id bits would hand our rights to someone else's program: they are dropped.
int TakeAttributes(Handle handle, const Attributes& like) {
  struct stat own {};
  if (::fstat(handle, &own) != 0) return errno;
  mode_t mode = like.mode & kPermissionBits;
  if (own.st_uid != like.owner || own.st_gid != like.group) {
    if (::fchown(handle, like.owner, like.group) != 0) {
      mode &= ~kSetIdBits;
      (void)::fchown(handle, static_cast<uid_t>(-1), like.group);
    }
  }
  return ::fchmod(handle, mode) == 0 ? 0 : errno;
}

int WriteAccess(const std::filesystem::path& path) {
  return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

// A history folder that root makes in someone's project folder belongs to that someone.
void GiveToOwnerOf(const std::filesystem::path& folder, const std::filesystem::path& parent) {
  struct stat status {};
  if (::stat(parent.c_str(), &status) == 0) {
    (void)::chown(folder.c_str(), status.st_uid, status.st_gid);
  }
}

bool LocalTime(std::time_t time, std::tm& local) { return ::localtime_r(&time, &local) != nullptr; }

std::FILE* OpenForReading(const std::filesystem::path& path) {
  return std::fopen(path.c_str(), "rb");
}

}  // namespace quillon::os
