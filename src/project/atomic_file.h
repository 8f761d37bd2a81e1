#pragma once
// The one way Quillon writes a file. The bytes go to a temporary file beside the target, are
// synced, and replace the target in one rename, so whatever interrupts a save leaves the old file
// or the new one, never a mix. The new file keeps the permission bits and the owner of the one it
// replaces (the owner where the system lets us), a symbolic link is written through to the file
// it names, and a folder, a pipe, a device or a read-only file is refused instead of replaced.
// Every failure removes the temporary file again.

#include <filesystem>
#include <string>
#include <string_view>

namespace quillon {

struct WriteResult {
  bool ok = true;
  std::string error;           // the system's error text when !ok
  bool targetRefused = false;  // a folder, a pipe, a device or read-only: nothing was tried
  friend bool operator==(const WriteResult&, const WriteResult&) = default;
};

struct WriteOptions {
  // A target that does not exist yet gets the permission bits and the owner of this file, when
  // it is given and exists; otherwise those of any newly created file.
  std::filesystem::path attributesFrom;
};

// Writes `bytes` to `target`, replacing what was there. On failure the target is as it was.
[[nodiscard]] WriteResult WriteFileReplacing(const std::filesystem::path& target,
                                             std::string_view bytes,
                                             const WriteOptions& options = {});

// The same for bytes that arrive bit by bit: nothing reaches the target before commit().
class FileReplacement {
 public:
  FileReplacement() = default;
  // Discards what was not committed.
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  [[nodiscard]] WriteResult begin(const std::filesystem::path& target,
                                  const WriteOptions& options = {});
  // False once a write has failed; commit() then reports the failure.
  bool append(std::string_view bytes);
  [[nodiscard]] WriteResult commit();
  // Removes the temporary file; the target stays as it was.
  void discard();
  [[nodiscard]] bool isOpen() const { return !m_temporary.empty(); }

 private:
  int m_fd = -1;
  int m_error = 0;
  std::filesystem::path m_target;
  std::filesystem::path m_temporary;
};

}  // namespace quillon
