#include "cli/command_log.h"

#include <QDir>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "project/system_files.h"

namespace quillon::cli {

namespace {

constexpr int kSecondsPerDay = 24 * 60 * 60;

// Claims the name: only the run that creates the file may write its log there.
int createNew(const std::filesystem::path& path) {
  os::Created created = os::CreateExclusive(path, 0666);
  if (created.handle == os::kNoHandle) return created.error;
  os::Close(created.handle);
  return 0;
}

}  // namespace

std::optional<LogLocation> OpenCommandLog(TrafficLog& log, const std::string& file,
                                          const QDateTime& now, std::ostream& err) {
  if (!file.empty()) {
    const std::filesystem::path path(file);
    if (const WriteResult opened = log.openReplacing(path); !opened.ok) {
      err << "quillon-cli: cannot write the log " << file << ": " << opened.error << "\n";
      return std::nullopt;
    }
    const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
    return LogLocation{path.filename().string(),
                       QDir(QString::fromStdString(folder.string())).absolutePath().toStdString()};
  }

  const std::string directory = QDir::currentPath().toStdString();
  const QDate date = now.date();
  const int firstSecond = now.time().msecsSinceStartOfDay() / 1000;
  const std::string wanted = TrafficLogFileName(date.year(), date.month(), date.day(), firstSecond);
  int error = 0;
  for (int second = firstSecond; second < kSecondsPerDay; ++second) {
    const std::string name = TrafficLogFileName(date.year(), date.month(), date.day(), second);
    error = createNew(std::filesystem::path(directory) / name);
    if (error == EEXIST) continue;
    if (error != 0 || !log.open(directory, name)) break;
    if (name != wanted) {
      err << "quillon-cli: " << wanted << " exists already; this log is " << name << "\n";
    }
    return LogLocation{name, directory};
  }
  err << "Cannot create the log file " << wanted;
  if (error != 0) err << ": " << std::generic_category().message(error);
  err << "\n";
  return std::nullopt;
}

}  // namespace quillon::cli
