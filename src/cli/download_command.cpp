// quillon-cli download --port DEV [--kind M|T|P|Y|all] FILE.EAY: the program's downloads.

#include <algorithm>
#include <array>

#include "cli/command.h"
#include "cli/link_options.h"
#include "cli/module_session.h"
#include "cli/terminal_dialog.h"
#include "cli/transfer_run.h"
#include "transfer/download.h"

namespace quillon::cli {

extern const Command kDownloadCommand;

namespace {

inline constexpr int kExitNothingSent = 65;  // as image: the one kind asked for was refused

constexpr std::array kOptions{kPortOption, kYesOption,     kReplyTimeoutOption,
                              kLogOption,  kMaxTimeOption, OptionEntry{"--kind", true}};

Task<> runDownload(TransferContext& context, char kind, int& result) {
  switch (kind) {
    case kKindMessages:
      co_await DownloadMessages(context, result);
      break;
    case kKindPhoneNumbers:
      co_await WriteT(context, result);
      break;
    case kKindConfiguration:
      co_await WriteP(context, result);
      break;
    default:
      co_await WriteEasy800(context, result);
      break;
  }
}

// What the command does with the module; gives the exit status.
Task<int> downloadKinds(ModuleSession& session, Project& project, const std::string& kinds,
                        const CommandContext& context) {
  // The first transfer reads the identity anyway; reading it first sizes the messages image.
  if (const int identified = co_await session.identifyBeforeTransfers(); identified != kResultOk)
    co_return session.exitStatus(identified);
  fitToModule(project, session.limits(), context.err);

  TransferContext transfer = session.transferContext(project, context.texts);
  int result = kResultOk;
  const int transfersBefore = session.transfersStarted();
  // "Download all" step by step, so that each kind has its own progress line: the next step
  // only while the result is 0, and a refused image leaves it at 0.
  for (const char kind : kinds) {
    if (result != kResultOk) break;
    session.beginKind(kindLabel(kind));
    co_await runDownload(transfer, kind, result);
    session.endProgress();
  }
  if (result == kResultOk && kinds.size() == 1 && session.transfersStarted() == transfersBefore) {
    co_return kExitNothingSent;
  }
  co_return session.exitStatus(result);
}

int download(const CommandContext& context) {
  ParsedOptions parsed;
  LinkOptions link;
  if (auto error = parseOptions(context.arguments, kOptions, parsed)) {
    return usageError(context, kDownloadCommand, *error);
  }
  if (auto error = readLinkOptions(parsed, "download", link)) {
    return usageError(context, kDownloadCommand, *error);
  }
  if (parsed.positional.size() != 1) {
    return usageError(context, kDownloadCommand, "download takes one FILE.EAY");
  }
  const auto kinds = parseKinds(parsed.value("--kind").value_or("all"));
  if (!kinds) {
    return usageError(context, kDownloadCommand,
                      "unknown kind '" + *parsed.value("--kind") + "': use M, T, P, Y or all");
  }

  TerminalDialog loadDialog(context.err);
  Project project(roomForEveryMessage());
  const LoadResult loaded =
      ProjectFileLoad(parsed.positional[0], project, context.texts, loadDialog);
  if (loaded.status != LoadStatus::Ok) return ExitCodeFor(loaded.status);

  // Kinds whose image would be refused on any module are refused here, before the port is
  // touched: nothing would be sent, so nothing is asked and no identity is read.
  if (std::ranges::all_of(*kinds, [&](char kind) {
        return refusedOnEveryModule(kind, project, context.texts, loadDialog);
      })) {
    return kExitNothingSent;
  }

  Console console = commandConsole(context);
  ModuleSession session(link, DialogAnswers{link.yes, false}, context.texts.language(), console);
  if (const int opened = session.open(); opened != kResultOk) return opened;
  return session.run(downloadKinds(session, project, *kinds, context));
}

}  // namespace

const Command kDownloadCommand{
    "download",
    "--port DEV [--kind M|T|P|Y|all] FILE.EAY",
    0,
    "write a project into the module",
    "Loads FILE.EAY and writes it into the module at DEV, as the program's download\n"
    "buttons do: M messages (with the acknowledgement request and the filter texts),\n"
    "T SMS centre and phone numbers, P configuration (PIN), Y flag table; \"all\" (the\n"
    "default) is \"Download all\": messages, phone numbers, configuration, flag table,\n"
    "each only while the ones before went well. A kind whose image is refused (too much\n"
    "text, an invalid PIN) is not sent; \"all\" goes on with the next one, a single kind\n"
    "exits with 65, without opening the port when the image would be refused on any\n"
    "module. FILE.EAY is not changed.\n"
    "\n" QUILLON_CLI_TRANSFER_HELP
    "\n"
    "  --kind M|T|P|Y|all       what to download (default all)\n" QUILLON_CLI_LINK_OPTIONS_HELP,
    download,
    true,
};

}  // namespace quillon::cli
