#pragma once
// Previous versions of project files. Whenever a save replaces a project file, the version it
// replaces is kept in the folder ".quillon-history" beside it, named with the file's name and the
// time that version was saved: "Anlage.EAY.2024-06-11_10-32-05", with ".2", ".3" … behind it for
// more versions saved within the same second. The newest 20 of each file are kept.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "project/atomic_file.h"

namespace quillon {

inline constexpr const char* kHistoryFolderName = ".quillon-history";
inline constexpr std::size_t kKeptVersions = 20;

struct FileVersion {
  std::string name;  // its file name in the history folder
  std::string time;  // when this version was saved, local time: "2024-06-11 10:32:05"
  std::uintmax_t size = 0;
  friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

// The kept versions of the file `path` names (through links), oldest first.
[[nodiscard]] std::vector<FileVersion> ListVersions(const std::filesystem::path& path);

// WriteFileReplacing that first keeps the file it replaces as a version, unless that file holds
// `bytes` already. When the version cannot be kept, nothing is written.
[[nodiscard]] WriteResult WriteKeepingHistory(const std::filesystem::path& path,
                                              std::string_view bytes);

struct VersionBytes {
  std::string bytes;
  std::string error;  // empty when the version was read
};

// The bytes of the kept version `name` of `path`.
[[nodiscard]] VersionBytes ReadVersion(const std::filesystem::path& path, const std::string& name);

// Puts the version `name` back in place of `path`; the file it replaces is kept in its turn.
[[nodiscard]] WriteResult RestoreVersion(const std::filesystem::path& path,
                                         const std::string& name);

}  // namespace quillon
