// quillon-cli logger --port DEV [-o FILE] [--fragments]: reads the module's logger.

#include <array>
#include <string>

#include "cli/command.h"
#include "cli/link_options.h"
#include "cli/module_session.h"
#include "cli/transfer_run.h"
#include "text/code_page.h"
#include "transfer/logger.h"

namespace quillon::cli {

extern const Command kLoggerCommand;

namespace {

constexpr std::array kOptions{kPortOption,
                              kYesOption,
                              kReplyTimeoutOption,
                              kLogOption,
                              kMaxTimeOption,
                              OptionEntry{"--fragments", false},
                              OptionEntry{"-o", true, "--output"}};

// The lines as a terminal wants them: UTF-8, each ended by a line feed alone.
std::string terminalLines(const std::string& monitor) {
  std::string lines;
  for (char c : cp1252ToUtf8(monitor)) {
    if (c != '\r') lines += c;
  }
  if (!lines.empty() && lines.back() != '\n') lines += '\n';
  return lines;
}

// A refused request leaves nothing to show; a failed read only with --fragments.
bool fragmentsProcessed(int result, bool fragments) {
  return fragments && result >= kResultCancelled && result <= kResultNoResponse;
}

Task<int> readLoggerInto(TransferContext& transfer, std::string& monitor) {
  int result = kResultOk;
  co_await ReadLogger(transfer, monitor, result);
  co_return result;
}

int logger(const CommandContext& context) {
  ParsedOptions parsed;
  LinkOptions link;
  if (auto error = parseOptions(context.arguments, kOptions, parsed)) {
    return usageError(context, kLoggerCommand, *error);
  }
  if (auto error = readLinkOptions(parsed, "logger", link)) {
    return usageError(context, kLoggerCommand, *error);
  }
  if (!parsed.positional.empty()) {
    return usageError(context, kLoggerCommand,
                      "unexpected argument '" + parsed.positional[0] + "'");
  }
  const auto output = parsed.value("-o");
  if (output && output->empty()) return usageError(context, kLoggerCommand, "-o needs a file name");

  Console console = commandConsole(context);
  const bool fragments = parsed.has("--fragments");
  ModuleSession session(link, DialogAnswers{link.yes, fragments}, context.texts.language(),
                        console);
  if (const int opened = session.open(); opened != kResultOk) return opened;

  Project unused;
  TransferContext transfer = session.transferContext(unused, context.texts);
  std::string monitor;
  const int result = session.run(readLoggerInto(transfer, monitor));
  session.endProgress();
  const int status = session.exitStatus(result);
  if (status != kExitOk && (session.maxTimePassed() || !fragmentsProcessed(result, fragments)))
    return status;

  if (!output) {
    const std::string lines = terminalLines(monitor);
    context.out.write(lines.data(), static_cast<std::streamsize>(lines.size()));
    return status;
  }
  if (SaveLoggerText(*output, monitor, session.dialog()) != LoggerSave::Saved) {
    return kExitCannotWrite;
  }
  return status;
}

}  // namespace

const Command kLoggerCommand{
    "logger",
    "--port DEV [-o FILE] [--fragments]",
    0,
    "read the module's logger",
    "Reads the logger of the module at DEV and prints it in UTF-8, one line per line\n"
    "of the module, or saves it to FILE as the program's Save does (Windows-1252, lines\n"
    "ended by CR LF). An existing FILE is replaced only when the question is answered\n"
    "yes on the terminal; without a terminal it is left as it is and the exit status\n"
    "is 73, as for a file that cannot be written. FILE is written only when the whole\n"
    "logger was read, or with --fragments when a read failed part-way.\n"
    "\n" QUILLON_CLI_TRANSFER_HELP
    "\n"
    "  -o FILE                  saves the logger text to FILE\n"
    "  --fragments              keeps what came before a failed "
    "read\n" QUILLON_CLI_LINK_OPTIONS_HELP,
    logger,
    true,
};

}  // namespace quillon::cli
