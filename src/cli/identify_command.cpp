// quillon-cli identify --port DEV: reads the module's identity and prints it.

#include <unistd.h>

#include <iostream>

#include "cli/command.h"
#include "link/qt/identify_command.h"

namespace quillon::cli {

namespace {

int runIdentify(const CommandContext& context) {
  std::vector<std::string> arguments = context.arguments;
  // --lang was taken by the command line; the driver's messages follow it too.
  if (context.texts.german()) arguments.insert(arguments.end(), {"--lang", "de"});
  Console console{std::cin, context.out, context.err, ::isatty(STDIN_FILENO) != 0,
                  &context.err == &std::cerr && ::isatty(STDERR_FILENO) != 0};
  return RunIdentifyCommand(arguments, console);
}

}  // namespace

extern const Command kIdentifyCommand;
const Command kIdentifyCommand{
    "identify",
    "--port DEV [--yes] [--reply-timeout SECONDS] [--log]",
    0,
    "read the module's identity and version",
    "Reads the identity of the module at DEV (a device path or a port number) and prints\n"
    "it, one \"label: value\" line each. The exit status is the transfer result: 0 ok,\n"
    "1 port not opened, 2 declined, 3 cancelled, 4 time-out, 5 no connection,\n"
    "6 no response, 7 version conflict.\n"
    "\n"
    "  --port DEV               the port: a device path, or a number n (settings store\n"
    "                           \"Ports\"/\"COMn\", else the n-th serial port by name)\n"
    "  --yes                    answers \"Telvane ready ?\" (otherwise it is asked on the\n"
    "                           terminal, and declined without one)\n"
    "  --reply-timeout SECONDS  how long to wait for each reply (default 20)\n"
    "  --log                    logs the serial traffic to a file in this directory\n",
    runIdentify,
    true,
};

}  // namespace quillon::cli
