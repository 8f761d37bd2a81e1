#include "project/write_target.h"

#include <cerrno>
#include <system_error>

#include "project/system_files.h"

namespace quillon {

namespace {

namespace fs = std::filesystem;

// As many links as the system itself follows before it gives up with ELOOP.
constexpr int kMostLinks = 40;
constexpr fs::perms kAnyWriteBit =
    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

std::string systemText(std::errc error) { return std::make_error_code(error).message(); }

}  // namespace

fs::path FolderOf(const fs::path& target) {
  return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

ResolvedTarget ResolveWriteTarget(const fs::path& path) {
  fs::path current = path;
  for (int hop = 0; hop <= kMostLinks; ++hop) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(current, error))) return {current, {}};
    const fs::path next = fs::read_symlink(current, error);
    if (error) return {current, error.message()};
    current = next.is_absolute() ? next : FolderOf(current) / next;
  }
  return {path, systemText(std::errc::too_many_symbolic_link_levels)};
}

std::string WriteRefusal(const fs::path& target) {
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  // Nothing there yet; a folder on the way that is missing is reported by the write itself.
  if (error || !fs::exists(status)) return {};
  switch (status.type()) {
    case fs::file_type::regular:
      break;
    case fs::file_type::directory:
      return systemText(std::errc::is_a_directory);
    case fs::file_type::fifo:
      return "Is a named pipe, not a file";
    case fs::file_type::character:
    case fs::file_type::block:
      return "Is a device, not a file";
    case fs::file_type::socket:
      return "Is a socket, not a file";
    default:
      return "Is not a regular file";
  }
  // A file without any write permission was made read-only on purpose: even the superuser, whom
  // the permission bits do not stop, leaves it alone.
  if ((status.permissions() & kAnyWriteBit) == fs::perms::none) {
    return systemText(std::errc::permission_denied);
  }
  if (const int denied = os::WriteAccess(target); denied != 0) {
    return std::generic_category().message(denied);
  }
  return {};
}

}  // namespace quillon
