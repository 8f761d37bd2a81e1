#pragma once
// "identify" for the command line: reads the module's identity through a port and prints it.
//
//   identify --port DEV [--yes] [--reply-timeout SECONDS] [--log] [--lang en|de]
//
// DEV is a device path or a port number. Prints one "label: value" line per field of the
// identification dialog and exits with the transfer result 0..7 (64 for a wrong command line).
// Boxes go to the error stream, one line each.

#include <iosfwd>
#include <string>
#include <vector>

namespace quillon {

inline constexpr int kIdentifyUsageError = 64;

struct Console {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  // Whether a person can answer questions on `in`.
  bool interactive = false;
  // Whether `err` is a terminal that can show a progress line rewriting itself.
  bool progress = false;
};

// `arguments` are the command's own, without "identify".
[[nodiscard]] int RunIdentifyCommand(const std::vector<std::string>& arguments, Console& console);

[[nodiscard]] std::string IdentifyUsage();

// The console of the running process: standard streams, questions when standard input is a
// terminal, a progress line when standard error is one.
[[nodiscard]] Console ProcessConsole();

}  // namespace quillon
