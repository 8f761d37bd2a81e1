// quillon-cli upload --port DEV [--kind M|T|P|Y|all] [--into BASE.EAY] [--fragments]
// -o OUT.EAY: the program's uploads, saved as a project file.

#include <array>

#include "cli/command.h"
#include "cli/link_options.h"
#include "cli/module_session.h"
#include "cli/terminal_dialog.h"
#include "cli/transfer_run.h"
#include "text/code_page.h"
#include "transfer/upload.h"

namespace quillon::cli {

extern const Command kUploadCommand;

namespace {

constexpr std::array kOptions{kPortOption,
                              kYesOption,
                              kReplyTimeoutOption,
                              kLogOption,
                              kMaxTimeOption,
                              OptionEntry{"--kind", true},
                              OptionEntry{"--into", true},
                              OptionEntry{"--fragments", false},
                              OptionEntry{"-o", true, "--output"}};

Task<> runUpload(TransferContext& context, char kind, int& result) {
  switch (kind) {
    case kKindMessages:
      co_await UploadMessages(context, result);
      break;
    case kKindPhoneNumbers:
      co_await UploadPhoneNumbers(context, result);
      break;
    case kKindConfiguration:
      co_await ReadP(context, result);
      break;
    default:
      co_await ReadEasy800(context, result);
      break;
  }
}

// What the command does with the module: reads every kind into `project` while they go well,
// from `before`, the project as it started. Gives the transfers' result.
Task<int> uploadKinds(ModuleSession& session, Project& project, Project& before,
                      const std::string& kinds, const CommandContext& context) {
  // The parsers fill the message table row by row, so it must have the module's size first.
  if (const int identified = co_await session.identifyBeforeTransfers(); identified != kResultOk)
    co_return identified;
  fitToModule(project, session.limits(), context.err);

  before = project;
  TransferContext transfer = session.transferContext(project, context.texts);
  int result = kResultOk;
  // "Read all" step by step, so that each kind has its own progress line. Its one save prompt
  // never asks here: the project has not changed.
  for (const char kind : kinds) {
    if (result != kResultOk) break;
    session.beginKind(kindLabel(kind));
    co_await runUpload(transfer, kind, result);
    session.endProgress();
  }
  co_return result;
}

int upload(const CommandContext& context) {
  ParsedOptions parsed;
  LinkOptions link;
  if (auto error = parseOptions(context.arguments, kOptions, parsed)) {
    return usageError(context, kUploadCommand, *error);
  }
  if (auto error = readLinkOptions(parsed, "upload", link)) {
    return usageError(context, kUploadCommand, *error);
  }
  if (!parsed.positional.empty()) {
    return usageError(context, kUploadCommand,
                      "unexpected argument '" + parsed.positional[0] + "'");
  }
  const auto output = parsed.value("-o");
  if (!output || output->empty())
    return usageError(context, kUploadCommand, "upload needs -o OUT.EAY");
  const auto kinds = parseKinds(parsed.value("--kind").value_or("all"));
  if (!kinds) {
    return usageError(context, kUploadCommand,
                      "unknown kind '" + *parsed.value("--kind") + "': use M, T, P, Y or all");
  }

  Project project(roomForEveryMessage());
  if (const auto base = parsed.value("--into")) {
    TerminalDialog loadDialog(context.err);
    const LoadResult loaded = ProjectFileLoad(*base, project, context.texts, loadDialog);
    if (loaded.status != LoadStatus::Ok) return ExitCodeFor(loaded.status);
  }

  Console console = commandConsole(context);
  ModuleSession session(link, DialogAnswers{link.yes, parsed.has("--fragments")},
                        context.texts.language(), console);
  if (const int opened = session.open(); opened != kResultOk) return opened;
  Project before = project;
  const int result = session.run(uploadKinds(session, project, before, *kinds, context));
  const int status = session.exitStatus(result);
  // OUT.EAY is the module's content only when every kind asked for came in whole; fragments
  // are written only when asked for, and never after --max-time.
  const bool complete = status == kExitOk;
  const bool fragmentsWanted = parsed.has("--fragments") && !session.maxTimePassed();
  if (!complete && !(fragmentsWanted && project != before)) return status;

  const WriteResult saved = ProjectFileSave(*output, project, session.dialog());
  if (!saved.ok) {
    context.err << "quillon-cli: cannot write " << *output << ": " << cp1252ToUtf8(saved.error)
                << "\n";
    return kExitCannotWrite;
  }
  return status;
}

}  // namespace

const Command kUploadCommand{
    "upload",
    "--port DEV [--kind M|T|P|Y|all] [--into BASE.EAY] [--fragments] -o OUT.EAY",
    0,
    "read what the module holds and save it as a project file",
    "Reads from the module at DEV into a project, as the program's upload buttons do,\n"
    "and saves the project to OUT.EAY: M messages (with the acknowledgement request\n"
    "and the filter texts), T SMS centre and phone numbers, P configuration (PIN),\n"
    "Y flag table; \"all\" (the default) is \"Read all\", each kind only while the ones\n"
    "before went well. The project starts as BASE.EAY (--into) or empty; what is not\n"
    "read stays as it was. What never travels (comments, names, station name, the\n"
    "ring option) comes from BASE.EAY or stays empty.\n"
    "\n"
    "When a read fails part-way, the program asks whether to process the fragments;\n"
    "the answer here is No unless --fragments is given. OUT.EAY is created or replaced\n"
    "only when every kind asked for was read completely; with --fragments also when a\n"
    "failed or refused read brought anything in. A file that cannot be written exits\n"
    "with 73.\n"
    "\n" QUILLON_CLI_TRANSFER_HELP
    "\n"
    "  -o OUT.EAY               the project file to write (replaced as a whole)\n"
    "  --kind M|T|P|Y|all       what to read (default all)\n"
    "  --into BASE.EAY          start from this project instead of an empty one\n"
    "  --fragments              processes and writes what came before a "
    "failure\n" QUILLON_CLI_LINK_OPTIONS_HELP,
    upload,
    true,
};

}  // namespace quillon::cli
