#pragma once
// identify on a console of the caller's choosing, so that a test can be the person at the
// terminal.

#include "cli/command.h"
#include "cli/console.h"

namespace quillon::cli {

// Usage errors go to context.err, the rest to `console`. Returns the transfer result 0..7, or
// kExitUsage.
[[nodiscard]] int RunIdentify(const CommandContext& context, Console& console);

}  // namespace quillon::cli
