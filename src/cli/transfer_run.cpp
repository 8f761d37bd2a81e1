#include "cli/transfer_run.h"

#include <cctype>
#include <iostream>
#include <vector>

#include "cli/command_line_parser.h"
#include "cli/terminal.h"
#include "transfer/data_image.h"

namespace quillon::cli {

namespace {

constexpr int kLargestMessageIndex = 399;
// Messages, phone numbers, configuration, flag table.
constexpr const char* kAllKinds = "MTPY";

// Keeps the boxes of a trial build, to show them only if the build refuses.
class RecordingDialog : public UserDialog, public StatusDisplay {
 public:
  BoxAnswer ask(const Box& box) override {
    boxes.push_back(box);
    return box.defaultAnswer;
  }
  void setStatus(StatusPanel, const std::string&) override {}
  std::vector<Box> boxes;
};

bool rowHoldsAnything(const Table& table, int row) {
  for (int column = 1; column <= table.columns(); ++column) {
    if (!table.cell(row, column).empty()) return true;
  }
  return false;
}

}  // namespace

Console commandConsole(const CommandContext& context) {
  const bool ownStreams = &context.err == &std::cerr;
  return Console{std::cin, context.out, context.err, ownStreams && standardInputIsTerminal(),
                 ownStreams && standardErrorIsTerminal()};
}

int usageError(const CommandContext& context, const Command& command, const std::string& error) {
  context.err << "quillon-cli: " << error << "\n"
              << CommandLineParser(CommandTable()).usage(&command) << "Try 'quillon-cli "
              << command.name << " --help' for more information.\n";
  return kExitUsage;
}

std::optional<std::string> parseKinds(const std::string& text) {
  if (text == "all") return kAllKinds;
  if (text.size() != 1) return std::nullopt;
  const char kind = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
  if (std::string_view(kAllKinds).find(kind) == std::string_view::npos) return std::nullopt;
  return std::string(1, kind);
}

std::string kindLabel(char kind) {
  switch (kind) {
    case kKindMessages:
      return kLabelMessages;
    case kKindPhoneNumbers:
      return kLabelPhoneNumbers;
    case kKindConfiguration:
      return kLabelConfiguration;
    default:
      return kLabelControllerData;
  }
}

ModuleLimits roomForEveryMessage() {
  ModuleLimits limits;
  limits.lastMessageIndex = kLargestMessageIndex;
  return limits;
}

bool refusedOnEveryModule(char kind, const Project& project, const UiTexts& texts,
                          UserDialog& dialog) {
  if (kind != kKindMessages && kind != kKindConfiguration) return false;
  // The smallest module holds the fewest messages, and fewer messages never make a longer image.
  const ModuleLimits smallest;
  Project trial = project;
  applyMessageLimit(trial, smallest);
  RecordingDialog recorder;
  ImageEnv env{recorder, recorder, texts, smallest};
  if (!buildDownloadImage(kind, trial, env, 0).refused) return false;
  for (const Box& box : recorder.boxes) (void)dialog.ask(box);
  return true;
}

void fitToModule(Project& project, const ModuleLimits& limits, std::ostream& err) {
  const int keep = limits.messageRows();
  for (int row = keep + 1; row <= project.messages.rows(); ++row) {
    if (rowHoldsAnything(project.messages, row)) {
      err << "The module holds " << keep << " messages; message " << row - 1
          << " and those after it are left out.\n";
      break;
    }
  }
  applyMessageLimit(project, limits);
}

}  // namespace quillon::cli
