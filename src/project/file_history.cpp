#include "project/file_history.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <optional>
#include <system_error>

#include "project/read_file.h"
#include "project/system_files.h"
#include "project/write_target.h"

namespace quillon {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStampPattern = "0000-00-00_00-00-00";

struct KeptVersion {
  FileVersion version;
  std::string stamp;
  unsigned long sequence = 1;  // the first of a second has none in its name
};

fs::path historyFolder(const fs::path& target) { return FolderOf(target) / kHistoryFolderName; }

bool isStamp(std::string_view text) {
  if (text.size() != kStampPattern.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool digit = text[i] >= '0' && text[i] <= '9';
    if (kStampPattern[i] == '0' ? !digit : text[i] != kStampPattern[i]) return false;
  }
  return true;
}

// "Anlage.EAY.2024-06-11_10-32-05.3" is version 3 of that second of "Anlage.EAY".
std::optional<KeptVersion> parseVersionName(const std::string& fileName, const std::string& name) {
  const std::string prefix = fileName + ".";
  if (!name.starts_with(prefix)) return std::nullopt;
  std::string_view rest = std::string_view(name).substr(prefix.size());
  KeptVersion kept;
  kept.stamp = std::string(rest.substr(0, kStampPattern.size()));
  if (!isStamp(kept.stamp)) return std::nullopt;
  rest.remove_prefix(kStampPattern.size());
  if (!rest.empty()) {
    if (rest.size() < 2 || rest.size() > 6 || rest[0] != '.' || rest[1] == '0') return std::nullopt;
    kept.sequence = 0;
    for (char c : rest.substr(1)) {
      if (c < '0' || c > '9') return std::nullopt;
      kept.sequence = kept.sequence * 10 + static_cast<unsigned long>(c - '0');
    }
    if (kept.sequence < 2) return std::nullopt;
  }
  // "2024-06-11_10-32-05" is shown as "2024-06-11 10:32:05".
  std::string time = kept.stamp;
  time[10] = ' ';
  time[13] = ':';
  time[16] = ':';
  kept.version = {name, std::move(time), 0};
  return kept;
}

std::vector<KeptVersion> keptVersions(const fs::path& target) {
  std::vector<KeptVersion> versions;
  const std::string fileName = target.filename().string();
  std::error_code error;
  for (fs::directory_iterator it(historyFolder(target), error), end; !error && it != end;
       it.increment(error)) {
    std::error_code ignored;
    if (!it->is_regular_file(ignored) || it->is_symlink(ignored)) continue;
    auto kept = parseVersionName(fileName, it->path().filename().string());
    if (!kept) continue;
    kept->version.size = it->file_size(ignored);
    versions.push_back(std::move(*kept));
  }
  std::sort(versions.begin(), versions.end(), [](const KeptVersion& a, const KeptVersion& b) {
    return a.stamp != b.stamp ? a.stamp < b.stamp : a.sequence < b.sequence;
  });
  return versions;
}

std::string savedStamp(const fs::path& file) {
  std::time_t saved = std::time(nullptr);
  std::error_code error;
  const fs::file_time_type modified = fs::last_write_time(file, error);
  if (!error) {
    // Whole seconds, as the system counts them: rounded down.
    saved = std::chrono::system_clock::to_time_t(
        std::chrono::floor<std::chrono::seconds>(fs::file_time_type::clock::to_sys(modified)));
  }
  std::tm local{};
  char text[32] = "1970-01-01_00-00-00";
  if (os::LocalTime(saved, local)) {
    (void)std::strftime(text, sizeof text, "%Y-%m-%d_%H-%M-%S", &local);
  }
  return text;
}

WriteResult keepVersion(const fs::path& target, std::string_view bytes, fs::path& kept) {
  const fs::path folder = historyFolder(target);
  std::error_code error;
  const bool created = fs::create_directory(folder, error);
  if (error) return {false, error.message()};
  if (created) os::GiveToOwnerOf(folder, FolderOf(target));

  const std::string base = target.filename().string() + "." + savedStamp(target);
  std::string name = base;
  std::error_code taken;
  for (unsigned long sequence = 2; fs::exists(fs::symlink_status(folder / name, taken));
       ++sequence) {
    name = base + "." + std::to_string(sequence);
  }
  WriteResult written = WriteFileReplacing(folder / name, bytes, {target});
  if (written.ok) {
    kept = folder / name;
  } else if (created) {
    fs::remove(folder, error);  // it holds nothing
  }
  return written;
}

void dropOldVersions(const fs::path& target) {
  const std::vector<KeptVersion> versions = keptVersions(target);
  if (versions.size() <= kKeptVersions) return;
  std::error_code ignored;
  for (std::size_t i = 0; i < versions.size() - kKeptVersions; ++i) {
    fs::remove(historyFolder(target) / versions[i].version.name, ignored);
  }
}

}  // namespace

std::vector<FileVersion> ListVersions(const fs::path& path) {
  const ResolvedTarget resolved = ResolveWriteTarget(path);
  if (!resolved.error.empty()) return {};
  std::vector<FileVersion> versions;
  for (auto& kept : keptVersions(resolved.path)) versions.push_back(std::move(kept.version));
  return versions;
}

WriteResult WriteKeepingHistory(const fs::path& path, std::string_view bytes) {
  const ResolvedTarget resolved = ResolveWriteTarget(path);
  if (!resolved.error.empty()) return {false, resolved.error};
  if (std::string refusal = WriteRefusal(resolved.path); !refusal.empty()) {
    return {false, std::move(refusal), true};
  }
  const FileBytes old = ReadWholeFile(resolved.path);
  if (old.error != 0 && old.error != ENOENT) {
    return {false, std::generic_category().message(old.error)};
  }
  fs::path kept;
  if (old.error == 0 && old.bytes != bytes) {
    if (const WriteResult keeping = keepVersion(resolved.path, old.bytes, kept); !keeping.ok) {
      return {false, "The previous version cannot be kept in " + std::string(kHistoryFolderName) +
                         ": " + keeping.error};
    }
  }
  WriteResult written = WriteFileReplacing(resolved.path, bytes);
  std::error_code ignored;
  if (!written.ok) {
    // The copy is the file that is still in place; it is no version of its own.
    if (!kept.empty()) fs::remove(kept, ignored);
    return written;
  }
  dropOldVersions(resolved.path);
  return written;
}

VersionBytes ReadVersion(const fs::path& path, const std::string& name) {
  const ResolvedTarget resolved = ResolveWriteTarget(path);
  if (!resolved.error.empty()) return {{}, resolved.error};
  const std::vector<KeptVersion> versions = keptVersions(resolved.path);
  // Only a name of the list is read, so no name can lead out of the history folder.
  if (std::none_of(versions.begin(), versions.end(),
                   [&name](const KeptVersion& kept) { return kept.version.name == name; })) {
    return {{}, "No such version: " + name};
  }
  FileBytes read = ReadWholeFile(historyFolder(resolved.path) / name);
  if (read.error != 0) return {{}, std::generic_category().message(read.error)};
  return {std::move(read.bytes), {}};
}

WriteResult RestoreVersion(const fs::path& path, const std::string& name) {
  const VersionBytes version = ReadVersion(path, name);
  if (!version.error.empty()) return {false, version.error};
  return WriteKeepingHistory(path, version.bytes);
}

}  // namespace quillon
