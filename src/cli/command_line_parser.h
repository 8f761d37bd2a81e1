#pragma once
// Reads quillon-cli's command line against the command table: global options, the command, its
// options and its positional arguments. Prints nothing; the caller acts on the result.

#include <span>
#include <string>
#include <vector>

#include "cli/command.h"

namespace quillon::cli {

struct Invocation {
  enum class Action { Run, Help, Version, UsageError };
  Action action = Action::UsageError;
  const Command* command = nullptr;  // nullptr: the top level
  std::vector<std::string> arguments;
  int language = kEnglish;
  std::string error;  // what was wrong, for UsageError
};

class CommandLineParser {
 public:
  explicit CommandLineParser(std::span<const Command* const> commands) : m_commands(commands) {}

  // `arguments` without the program name.
  [[nodiscard]] Invocation parse(const std::vector<std::string>& arguments) const;

  // The help of the top level (command == nullptr) or of one command.
  [[nodiscard]] std::string help(const Command* command) const;
  // The usage line(s) of the top level or of one command.
  [[nodiscard]] std::string usage(const Command* command) const;

 private:
  [[nodiscard]] const Command* find(const std::string& name) const;

  std::span<const Command* const> m_commands;
};

}  // namespace quillon::cli
