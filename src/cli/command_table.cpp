#include <array>

#include "cli/command.h"

// The commands in the order --help lists them. To add one, write <name>_command.cpp defining
// `const Command k<Name>Command` in quillon::cli and add one line here.
#define QUILLON_CLI_COMMANDS(X) \
  X(kCheckCommand)              \
  X(kResaveCommand)             \
  X(kHistoryCommand)            \
  X(kRestoreCommand)            \
  X(kIdentifyCommand)           \
  X(kImageCommand)              \
  X(kPrintCommand)              \
  X(kDownloadCommand)           \
  X(kUploadCommand)             \
  X(kLoggerCommand)

namespace quillon::cli {

#define QUILLON_CLI_DECLARE(command) extern const Command command;
QUILLON_CLI_COMMANDS(QUILLON_CLI_DECLARE)
#undef QUILLON_CLI_DECLARE

namespace {
#define QUILLON_CLI_ENTRY(command) &command,
constexpr std::array kCommands{QUILLON_CLI_COMMANDS(QUILLON_CLI_ENTRY)};
#undef QUILLON_CLI_ENTRY
}  // namespace

std::span<const Command* const> CommandTable() { return kCommands; }

}  // namespace quillon::cli
