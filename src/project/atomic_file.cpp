#include "project/atomic_file.h"

#include <cerrno>
#include <optional>
#include <system_error>

#include "project/system_files.h"
#include "project/temporary_file.h"
#include "project/write_target.h"

namespace quillon {

namespace {

// What a file that is created anew gets, less the umask.
constexpr unsigned kNewFileMode = 0666;
// Until the bits of the file it replaces are set, nobody else may read the new content.
constexpr unsigned kPrivateMode = 0600;

WriteResult failure(int error) {
  return {false, std::generic_category().message(error != 0 ? error : EIO)};
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

  std::optional<os::Attributes> like = os::AttributesOf(resolved.path);
  if (!like && !options.attributesFrom.empty()) like = os::AttributesOf(options.attributesFrom);
  const bool hasAttributes = like.has_value();
  TemporaryFile temporary =
      CreateTemporaryBeside(resolved.path, hasAttributes ? kPrivateMode : kNewFileMode);
  if (temporary.fd < 0) return failure(temporary.error);
  m_fd = temporary.fd;
  m_temporary = std::move(temporary.path);
  m_target = resolved.path;
  m_error = 0;
  if (hasAttributes) {
    if (const int error = os::TakeAttributes(m_fd, *like); error != 0) {
      discard();
      return failure(error);
    }
  }
  return {};
}

bool FileReplacement::append(std::string_view bytes) {
  if (m_fd < 0) return false;
  if (m_error == 0) m_error = os::WriteAll(m_fd, bytes);
  return m_error == 0;
}

WriteResult FileReplacement::commit() {
  if (!isOpen()) return failure(EBADF);
  // A full disk may only show when the data are handed to the device.
  if (m_error == 0) m_error = os::SyncFile(m_fd);
  if (m_error == 0) m_error = os::ReplaceByRename(m_fd, m_temporary, m_target);
  if (m_error != 0) {
    const int error = m_error;
    discard();
    return failure(error);
  }
  os::SyncFolder(FolderOf(m_target));
  // Where the file stays open through the rename, its hold goes only now: until then a clean-up
  // must not take the temporary file for an abandoned one.
  os::Close(m_fd);
  m_temporary.clear();
  return {};
}

void FileReplacement::discard() {
  // The file may be closed already, by a rename that failed.
  if (m_temporary.empty()) return;
  os::CloseAndRemove(m_fd, m_temporary);
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
