#include "cli/command_line_parser.h"

#include <algorithm>

namespace quillon::cli {

namespace {

constexpr std::string_view kProgram = "quillon-cli";
constexpr std::string_view kLangOption = "--lang";

Invocation usageError(const Command* command, std::string error) {
  Invocation invocation;
  invocation.command = command;
  invocation.error = std::move(error);
  return invocation;
}

std::string plural(std::size_t count, std::string_view word) {
  return std::to_string(count) + " " + std::string(word) + (count == 1 ? "" : "s");
}

}  // namespace

const Command* CommandLineParser::find(const std::string& name) const {
  const auto it = std::find_if(m_commands.begin(), m_commands.end(),
                               [&name](const Command* command) { return command->name == name; });
  return it == m_commands.end() ? nullptr : *it;
}

Invocation CommandLineParser::parse(const std::vector<std::string>& arguments) const {
  Invocation invocation;
  bool help = false;
  bool version = false;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool option = !optionsEnded && argument.size() > 1 && argument.front() == '-';
    if (option && argument == "--") {
      optionsEnded = true;
    } else if (option && (argument == "--help" || argument == "-h")) {
      help = true;
    } else if (option && argument == "--version") {
      version = true;
    } else if (option && (argument == kLangOption || argument.starts_with("--lang="))) {
      std::string value;
      if (argument == kLangOption) {
        if (i + 1 >= arguments.size()) {
          return usageError(invocation.command, "option --lang needs a value: en or de");
        }
        value = arguments[++i];
      } else {
        value = argument.substr(kLangOption.size() + 1);
      }
      if (value == "en") {
        invocation.language = kEnglish;
      } else if (value == "de") {
        invocation.language = kGerman;
      } else {
        return usageError(invocation.command, "unknown language '" + value + "': use en or de");
      }
    } else if (option && invocation.command != nullptr && invocation.command->ownOptions) {
      invocation.arguments.push_back(argument);
    } else if (option) {
      return usageError(invocation.command, "unknown option '" + argument + "'");
    } else if (invocation.command == nullptr) {
      invocation.command = find(argument);
      if (invocation.command == nullptr) {
        return usageError(nullptr, "unknown command '" + argument + "'");
      }
    } else {
      invocation.arguments.push_back(argument);
    }
  }

  if (help || version) {
    invocation.action = help ? Invocation::Action::Help : Invocation::Action::Version;
    invocation.arguments.clear();
    return invocation;
  }
  if (invocation.command == nullptr) return usageError(nullptr, "no command given");
  const Command& command = *invocation.command;
  if (!command.ownOptions && invocation.arguments.size() != command.argumentCount) {
    return usageError(&command, std::string(command.name) + " takes " +
                                    plural(command.argumentCount, "argument") + ", not " +
                                    std::to_string(invocation.arguments.size()));
  }
  invocation.action = Invocation::Action::Run;
  return invocation;
}

std::string CommandLineParser::usage(const Command* command) const {
  std::string text = "Usage: " + std::string(kProgram);
  if (command == nullptr) {
    return text + " [--lang en|de] COMMAND [ARGUMENTS]\n       " + std::string(kProgram) +
           " COMMAND --help\n";
  }
  return text + " " + std::string(command->name) + " [--lang en|de] " +
         std::string(command->synopsis) + "\n";
}

std::string CommandLineParser::help(const Command* command) const {
  std::string text = usage(command) + "\n";
  if (command != nullptr) {
    text += std::string(command->description);
  } else {
    text +=
        "Works with Quillon project files (*.EAY) without the graphical program.\n\nCommands:\n";
    // A long synopsis gets its summary on the next line instead of widening the column.
    constexpr std::size_t kWidest = 36;
    std::size_t width = 0;
    for (const Command* c : m_commands) {
      const std::size_t left = c->name.size() + 1 + c->synopsis.size();
      if (left <= kWidest) width = std::max(width, left);
    }
    for (const Command* c : m_commands) {
      std::string left = std::string(c->name) + " " + std::string(c->synopsis);
      if (left.size() > width)
        left += "\n" + std::string(width + 2, ' ');
      else
        left.resize(width, ' ');
      text += "  " + left + "  " + std::string(c->summary) + "\n";
    }
  }
  text +=
      "\nOptions:\n"
      "  --lang en|de  language of the messages (default: en)\n"
      "  -h, --help    show this help\n"
      "  --version     show the program's version\n"
      "\nExit status: 0 done (warnings included), 9 file not found, 64 wrong usage,\n"
      "66 file not readable, 73 file not writable.\n";
  return text;
}

}  // namespace quillon::cli
