#pragma once
// The options every command that talks to the module shares: the port, the answer to
// "Telvane ready ?", the reply time-out and the traffic log.

#include <optional>
#include <string>
#include <vector>

#include "cli/option_table.h"
#include "link/transfer.h"

namespace quillon::cli {

struct LinkOptions {
  std::string port;
  bool yes = false;
  TimeOfDay replyTimeout = 20000;
  bool log = false;
  std::optional<TimeOfDay> maxTime;  // the whole command's bound, in milliseconds
  std::string logFile;  // --log=FILE; empty: the log is named after the moment it is opened
};

// The shared entries, to put in front of a command's own in its option table.
inline constexpr OptionEntry kPortOption{"--port", true};
inline constexpr OptionEntry kYesOption{"--yes", false};
inline constexpr OptionEntry kReplyTimeoutOption{"--reply-timeout", true};
inline constexpr OptionEntry kLogOption{"--log", false, {}, true};
inline constexpr OptionEntry kMaxTimeOption{"--max-time", true};

// The shared options out of `parsed`; an error text when --port is missing or the time-out is
// not a number of seconds.
[[nodiscard]] std::optional<std::string> readLinkOptions(const ParsedOptions& parsed,
                                                         const std::string& command,
                                                         LinkOptions& options);

// Their lines in a command's --help; macros, so that a description can take them in as part of
// one string literal.
#define QUILLON_CLI_LINK_OPTIONS_HELP                                                      \
  "  --port DEV               the port: a device path, or a number n (settings store\n"    \
  "                           \"Ports\"/\"COMn\", else the n-th serial port by name)\n"    \
  "  --yes                    answers \"Telvane ready ?\" (otherwise it is asked on the\n" \
  "                           terminal, and declined without one)\n"                       \
  "  --reply-timeout SECONDS  how long to wait for each reply (default 20)\n"              \
  "  --max-time SECONDS       ends the whole command after this long as a time-out (4),\n" \
  "                           with the port closed and no output file written; without\n" \
  "                           it a read that gets only bad blocks goes on until Ctrl-C\n"  \
  "  --log[=FILE]             logs the serial traffic to FILE, which is replaced when\n"   \
  "                           the command ends; without FILE to yyyy_dd_mm + seconds\n"    \
  "                           of the day + .LOG here (the next free second if taken)\n"

// Progress, Ctrl-C and the exit status, shared by the transfer commands.
#define QUILLON_CLI_TRANSFER_HELP                                                        \
  "On a terminal the error output shows one line per kind with a progress bar and the\n" \
  "transfer window's texts; it stays quiet otherwise. Boxes become lines there.\n"       \
  "Ctrl-C cancels the transfer that is running (result 3); a second one ends the\n"      \
  "program at once. The exit status is the transfer result: 0 ok, 1 port not opened,\n"  \
  "2 declined, 3 cancelled, 4 time-out, 5 no connection, 6 no response, 7 version\n"     \
  "conflict (the identification is printed on the error output), 8 refused by the\n"     \
  "module (it answered \"Option <...> ist nicht implementiert\"). When several kinds\n"  \
  "run, the first result that is not 0 counts; a refused kind does not stop the rest.\n"

}  // namespace quillon::cli
