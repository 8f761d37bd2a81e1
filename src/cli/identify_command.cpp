// quillon-cli identify --port DEV: reads the module's identity and prints it.

#include "cli/identify_command.h"

#include <array>

#include "cli/command_line_parser.h"
#include "cli/link_options.h"
#include "cli/module_session.h"
#include "cli/transfer_run.h"

namespace quillon::cli {

extern const Command kIdentifyCommand;

namespace {

constexpr std::array kOptions{kPortOption, kYesOption, kReplyTimeoutOption, kLogOption,
                              kMaxTimeOption};

// identify has always named itself on the first line of a usage error.
int wrongUsage(const CommandContext& context, const std::string& error) {
  context.err << "quillon-cli identify: " << error << "\n"
              << CommandLineParser(CommandTable()).usage(&kIdentifyCommand)
              << "Try 'quillon-cli identify --help' for more information.\n";
  return kExitUsage;
}

int identify(const CommandContext& context) {
  Console console = commandConsole(context);
  return RunIdentify(context, console);
}

}  // namespace

int RunIdentify(const CommandContext& context, Console& console) {
  ParsedOptions parsed;
  LinkOptions link;
  if (auto error = parseOptions(context.arguments, kOptions, parsed)) {
    return wrongUsage(context, *error);
  }
  if (auto error = readLinkOptions(parsed, "identify", link)) return wrongUsage(context, *error);
  if (!parsed.positional.empty()) {
    return wrongUsage(context, "unexpected argument '" + parsed.positional[0] + "'");
  }

  ModuleSession session(link, DialogAnswers{link.yes, false}, context.texts.language(), console);
  // The identity is what the command prints, a wrong module's included.
  session.setIdentificationOutput(console.out);
  if (const int opened = session.open(); opened != kResultOk) return opened;
  const int result = session.run(session.identify());
  if (session.maxTimePassed()) return session.exitStatus(result);
  if (result == kResultOk) session.printIdentification();
  return result;
}

const Command kIdentifyCommand{
    "identify",
    "--port DEV [--yes] [--reply-timeout SECONDS] [--max-time SECONDS] [--log[=FILE]]",
    0,
    "read the module's identity and version",
    "Reads the identity of the module at DEV (a device path or a port number) and prints\n"
    "it, one \"label: value\" line each. The exit status is the transfer result: 0 ok,\n"
    "1 port not opened, 2 declined, 3 cancelled, 4 time-out, 5 no connection,\n"
    "6 no response, 7 version conflict.\n"
    "\n" QUILLON_CLI_LINK_OPTIONS_HELP,
    identify,
    true,
};

}  // namespace quillon::cli
