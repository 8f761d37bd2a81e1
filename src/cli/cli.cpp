#include "cli/cli.h"

#include "cli/command.h"
#include "cli/command_line_parser.h"

namespace quillon::cli {

int RunCli(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const CommandLineParser parser(CommandTable());
  const Invocation invocation = parser.parse(arguments);
  switch (invocation.action) {
    case Invocation::Action::UsageError:
      err << "quillon-cli: " << invocation.error << "\n"
          << parser.usage(invocation.command) << "Try 'quillon-cli"
          << (invocation.command != nullptr ? " " + std::string(invocation.command->name) : "")
          << " --help' for more information.\n";
      return kExitUsage;
    case Invocation::Action::Help:
      out << parser.help(invocation.command);
      return kExitOk;
    case Invocation::Action::Version: {
      const ProgramVersion version = BuildVersion();
      out << "quillon-cli " << version.major << '.' << version.minor << '.' << version.revision
          << "\n";
      return kExitOk;
    }
    case Invocation::Action::Run:
      break;
  }
  UiTexts texts;
  texts.fill(invocation.language);
  return invocation.command->run({invocation.arguments, texts, out, err});
}

}  // namespace quillon::cli
