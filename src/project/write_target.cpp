#include "project/write_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace quillon {

namespace {

// As many links as the system itself follows before it gives up with ELOOP.
constexpr int kMostLinks = 40;
constexpr mode_t kAnyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;

std::string systemText(int error) { return std::generic_category().message(error); }

}  // namespace

std::filesystem::path FolderOf(const std::filesystem::path& target) {
  return target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
}

ResolvedTarget ResolveWriteTarget(const std::filesystem::path& path) {
  std::filesystem::path current = path;
  for (int hop = 0; hop <= kMostLinks; ++hop) {
    struct stat status {};
    if (::lstat(current.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return {current, {}};
    std::error_code error;
    const std::filesystem::path next = std::filesystem::read_symlink(current, error);
    if (error) return {current, error.message()};
    current = next.is_absolute() ? next : FolderOf(current) / next;
  }
  return {path, systemText(ELOOP)};
}

std::string WriteRefusal(const std::filesystem::path& target) {
  struct stat status {};
  // Nothing there yet; a folder on the way that is missing is reported by the write itself.
  if (::stat(target.c_str(), &status) != 0) return {};
  if (S_ISDIR(status.st_mode)) return systemText(EISDIR);
  if (S_ISFIFO(status.st_mode)) return "Is a named pipe, not a file";
  if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) return "Is a device, not a file";
  if (S_ISSOCK(status.st_mode)) return "Is a socket, not a file";
  if (!S_ISREG(status.st_mode)) return "Is not a regular file";
  // A file without any write permission was made read-only on purpose: even the superuser, whom
  // the permission bits do not stop, leaves it alone.
  if ((status.st_mode & kAnyWriteBit) == 0) return systemText(EACCES);
  if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) return systemText(errno);
  return {};
}

}  // namespace quillon
