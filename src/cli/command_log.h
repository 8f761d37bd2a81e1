#pragma once
// The traffic log of a command that talks to the module (--log, --log=FILE). Scripts run such
// commands one after the other, so a log never destroys an older one: without a name it is named
// after the moment as the program's log is, in the current directory, and when a log of that
// second exists already it takes the next free second and says so. A named FILE is replaced
// only when the command ends, so a run that does not get that far leaves it as it was.

#include <QDateTime>
#include <optional>
#include <ostream>
#include <string>

#include "link/traffic_log.h"

namespace quillon::cli {

struct LogLocation {
  std::string fileName;
  std::string directory;  // UTF-8, as the "Log file" line shows it
};

// Opens `log`; on failure says why on `err` and returns nullopt.
[[nodiscard]] std::optional<LogLocation> OpenCommandLog(TrafficLog& log, const std::string& file,
                                                        const QDateTime& now, std::ostream& err);

}  // namespace quillon::cli
