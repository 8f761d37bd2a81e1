#pragma once
// The traffic log: every string written to and read from the module, one line each, in a file
// named after the moment it was opened. Logging starts when the user opens the log and lasts
// until the program ends.

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "project/atomic_file.h"

namespace quillon {

// "yyyy_dd_mm" + the whole seconds since midnight + ".LOG": 15 March 2012, 12:34:56 gives
// "2012_15_0345296.LOG".
[[nodiscard]] std::string TrafficLogFileName(int year, int month, int day, int secondsOfDay);

// Codes 0..31 and 127..255 as "<code>", every other character as it is.
[[nodiscard]] std::string EscapeForLog(std::string_view text);

// The bytes one LogTraffic call writes: prefix + escaped text + CR LF; a text longer than 200
// characters is split before escaping into prefix LF CR + its first 200 characters, and the
// rest on a line of its own without a prefix. Empty text gives nothing.
[[nodiscard]] std::string TrafficLogLines(std::string_view text, std::string_view prefix);

// The box that tells the user where the log went; `directory` as the caller shows it.
[[nodiscard]] std::string TrafficLogOpenedText(const std::string& fileName,
                                               const std::string& directory);

class TrafficLog {
 public:
  TrafficLog() = default;
  ~TrafficLog() { close(); }
  TrafficLog(const TrafficLog&) = delete;
  TrafficLog& operator=(const TrafficLog&) = delete;

  // OpenTrafficLog: creates (or overwrites) directory/fileName. False when it cannot be created;
  // the log then stays closed.
  [[nodiscard]] bool open(const std::filesystem::path& directory, const std::string& fileName);
  // A log that replaces `path` only when it is closed, so that the file that was there stays
  // whole until the new log is complete.
  [[nodiscard]] WriteResult openReplacing(const std::filesystem::path& path);
  // Closes the log; one opened by openReplacing takes the place of its file now.
  void close();
  [[nodiscard]] bool isOpen() const { return m_file.is_open() || m_replacement.isOpen(); }
  [[nodiscard]] const std::string& fileName() const { return m_fileName; }
  // False once a write has failed.
  [[nodiscard]] bool good() const { return m_good && (!m_file.is_open() || m_file.good()); }

  // LogTraffic: nothing while the log is closed or for an empty text. Every line is flushed, so
  // the log is complete up to the last exchange even if the program does not end cleanly.
  void logTraffic(std::string_view text, std::string_view prefix);

 private:
  std::ofstream m_file;
  FileReplacement m_replacement;
  std::string m_fileName;
  bool m_good = true;
};

}  // namespace quillon
