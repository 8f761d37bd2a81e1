#include "project/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "project/temporary_file.h"
#include "project/write_target.h"

namespace quillon {

namespace {

constexpr mode_t kPermissionBits = 07777;
constexpr mode_t kSetIdBits = S_ISUID | S_ISGID;
// What a file that is created anew gets, less the umask.
constexpr unsigned kNewFileMode = 0666;
// Until the bits of the file it replaces are set, nobody else may read the new content.
constexpr unsigned kPrivateMode = 0600;

WriteResult failure(int error) {
  return {false, std::generic_category().message(error != 0 ? error : EIO)};
}

// Owner and group of `like`, or at least the group where only that is allowed; then its bits.
// Without the owner, set-id bits would hand our rights to someone else's program: they are dropped.
int takeAttributes(int fd, const struct stat& like) {
  struct stat own {};
  if (::fstat(fd, &own) != 0) return errno;
  mode_t mode = like.st_mode & kPermissionBits;
  if (own.st_uid != like.st_uid || own.st_gid != like.st_gid) {
    if (::fchown(fd, like.st_uid, like.st_gid) != 0) {
      mode &= ~kSetIdBits;
      (void)::fchown(fd, static_cast<uid_t>(-1), like.st_gid);
    }
  }
  return ::fchmod(fd, mode) == 0 ? 0 : errno;
}

// Makes the rename itself durable; not every file system can sync a folder, which is no error.
void syncFolder(const std::filesystem::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  (void)::fsync(fd);
  ::close(fd);
}

}  // namespace

FileReplacement::~FileReplacement() { discard(); }

WriteResult FileReplacement::begin(const std::filesystem::path& target,
                                   const WriteOptions& options) {
  discard();
  const ResolvedTarget resolved = ResolveWriteTarget(target);
  if (!resolved.error.empty()) return {false, resolved.error};
  if (std::string refusal = WriteRefusal(resolved.path); !refusal.empty()) {
    return {false, std::move(refusal), true};
  }
  RemoveAbandonedTemporaries(FolderOf(resolved.path));

  struct stat like {};
  const bool replaces = ::stat(resolved.path.c_str(), &like) == 0;
  const bool hasAttributes = replaces || (!options.attributesFrom.empty() &&
                                          ::stat(options.attributesFrom.c_str(), &like) == 0);
  TemporaryFile temporary =
      CreateTemporaryBeside(resolved.path, hasAttributes ? kPrivateMode : kNewFileMode);
  if (temporary.fd < 0) return failure(temporary.error);
  m_fd = temporary.fd;
  m_temporary = std::move(temporary.path);
  m_target = resolved.path;
  m_error = 0;
  if (hasAttributes) {
    if (const int error = takeAttributes(m_fd, like); error != 0) {
      discard();
      return failure(error);
    }
  }
  return {};
}

bool FileReplacement::append(std::string_view bytes) {
  if (m_fd < 0) return false;
  while (m_error == 0 && !bytes.empty()) {
    const ssize_t written = ::write(m_fd, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno != EINTR) m_error = errno;
      continue;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return m_error == 0;
}

WriteResult FileReplacement::commit() {
  if (m_fd < 0) return failure(EBADF);
  // A full disk may only show when the data are handed to the device.
  if (m_error == 0 && ::fsync(m_fd) != 0) m_error = errno;
  if (m_error == 0 && ::rename(m_temporary.c_str(), m_target.c_str()) != 0) m_error = errno;
  if (m_error != 0) {
    const int error = m_error;
    discard();
    return failure(error);
  }
  syncFolder(FolderOf(m_target));
  // The lock on the file goes only now, after the rename: until then a clean-up must not take
  // the temporary file for an abandoned one.
  ::close(m_fd);
  m_fd = -1;
  m_temporary.clear();
  return {};
}

void FileReplacement::discard() {
  if (m_fd < 0) return;
  ::unlink(m_temporary.c_str());
  ::close(m_fd);
  m_fd = -1;
  m_temporary.clear();
}

WriteResult WriteFileReplacing(const std::filesystem::path& target, std::string_view bytes,
                               const WriteOptions& options) {
  FileReplacement replacement;
  if (WriteResult begun = replacement.begin(target, options); !begun.ok) return begun;
  (void)replacement.append(bytes);
  return replacement.commit();
}

}  // namespace quillon
