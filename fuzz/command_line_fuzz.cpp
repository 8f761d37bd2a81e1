// libFuzzer target of quillon-cli's command line: the arguments are the input split at NUL
// bytes. The command table has the shapes of the real one (fixed argument counts and commands
// that read their own options), whose commands need the Qt driver and are not linked here.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_line_parser.h"
#include "cli/link_options.h"
#include "cli/option_table.h"
#include "fuzz_support.h"

namespace {

using quillon::cli::Command;
using quillon::cli::Invocation;
using quillon::fuzz::require;

int notRun(const quillon::cli::CommandContext& /*context*/) { return 0; }

constexpr Command kCheck{"check", "FILE.EAY", 1, "checks", "checks a file", notRun};
constexpr Command kResave{"resave", "IN.EAY OUT.EAY", 2, "resaves", "resaves a file", notRun};
constexpr Command kHistory{"history", "FILE.EAY", 1, "lists", "lists versions", notRun};
constexpr Command kDownload{"download", "--port DEV FILE.EAY", 0, "downloads", "downloads", notRun,
                            true};
constexpr Command kLogger{"logger", "--port DEV [-o FILE]", 0, "reads", "reads the logger", notRun,
                          true};
constexpr std::array<const Command*, 5> kCommands{&kCheck, &kResave, &kHistory, &kDownload,
                                                  &kLogger};

// Every kind of entry the commands' own tables have: the shared link options, a value option,
// a flag and a short name with a long alias.
constexpr std::array kOptions{quillon::cli::kPortOption,
                              quillon::cli::kYesOption,
                              quillon::cli::kReplyTimeoutOption,
                              quillon::cli::kLogOption,
                              quillon::cli::kMaxTimeOption,
                              quillon::cli::OptionEntry{"--kind", true},
                              quillon::cli::OptionEntry{"--fragments", false},
                              quillon::cli::OptionEntry{"-o", true, "--output"}};

// `part` appears in `whole` in the same order (each argument is passed on at most once).
bool isSubsequence(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
  auto at = whole.begin();
  for (const auto& item : part) {
    at = std::find(at, whole.end(), item);
    if (at == whole.end()) return false;
    ++at;
  }
  return true;
}

void checkOwnOptions(const std::vector<std::string>& arguments) {
  quillon::cli::ParsedOptions parsed;
  const auto error = quillon::cli::parseOptions(arguments, kOptions, parsed);
  if (error) {
    require(!error->empty());
    return;
  }
  require(isSubsequence(parsed.positional, arguments));
  for (const auto& option : parsed.values) {
    const std::string& name = option.first;
    require(std::any_of(kOptions.begin(), kOptions.end(),
                        [&name](const auto& entry) { return entry.name == name; }));
  }
  quillon::cli::LinkOptions link;
  if (quillon::cli::readLinkOptions(parsed, "download", link)) return;
  require(!link.port.empty());
  // Time-outs are positive and stay within the day the engine's clock counts.
  require(link.replyTimeout >= 0 && link.replyTimeout <= 86'400'000);
  if (link.maxTime) require(*link.maxTime >= 0 && *link.maxTime <= 86'400'000);
  require(link.log || link.logFile.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> arguments;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  while (!rest.empty()) {
    const auto nul = rest.find('\0');
    arguments.emplace_back(rest.substr(0, nul));
    rest = nul == std::string_view::npos ? std::string_view{} : rest.substr(nul + 1);
  }

  const quillon::cli::CommandLineParser parser(kCommands);
  const Invocation invocation = parser.parse(arguments);
  require(invocation.language == quillon::kEnglish || invocation.language == quillon::kGerman);
  require(isSubsequence(invocation.arguments, arguments));
  switch (invocation.action) {
    case Invocation::Action::Run:
      require(invocation.command != nullptr && invocation.error.empty());
      require(invocation.command->ownOptions ||
              invocation.arguments.size() == invocation.command->argumentCount);
      if (invocation.command->ownOptions) checkOwnOptions(invocation.arguments);
      break;
    case Invocation::Action::Help:
    case Invocation::Action::Version:
      require(invocation.arguments.empty() && invocation.error.empty());
      break;
    case Invocation::Action::UsageError:
      require(!invocation.error.empty());
      break;
  }
  const std::string usage = parser.usage(invocation.command);
  require(usage.starts_with("Usage: quillon-cli"));
  require(parser.help(invocation.command).starts_with(usage));
  return 0;
}
