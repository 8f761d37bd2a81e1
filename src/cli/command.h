#pragma once
// A quillon-cli command: its name, its arguments, its help and the function that runs it. Every
// command lives in its own <name>_command.cpp and has one line in command_table.cpp.

#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "project/project_file.h"
#include "text/ui_texts.h"

namespace quillon::cli {

// Exit codes; the usage errors follow the BSD sysexits values.
inline constexpr int kExitOk = 0;
// 1 to 7 are the transfer results.
inline constexpr int kExitRefused = 8;       // the module refused a kind or a request
inline constexpr int kExitFileNotFound = 9;  // the load status of a missing project file
inline constexpr int kExitUsage = 64;
inline constexpr int kExitCannotRead = 66;
inline constexpr int kExitCannotWrite = 73;

// The exit code of a command that stops after loading a project file.
[[nodiscard]] constexpr int ExitCodeFor(LoadStatus status) {
  switch (status) {
    case LoadStatus::Ok:
      return kExitOk;
    case LoadStatus::FileNotFound:
      return kExitFileNotFound;
    case LoadStatus::ReadError:
      break;
  }
  return kExitCannotRead;
}

struct CommandContext {
  const std::vector<std::string>& arguments;  // the positional arguments, count already checked
  const UiTexts& texts;                       // filled for the language of --lang
  std::ostream& out;
  std::ostream& err;
};

struct Command {
  std::string_view name;
  std::string_view synopsis;  // the positional arguments as the usage line shows them
  std::size_t argumentCount = 0;
  std::string_view summary;      // one line in the list of commands
  std::string_view description;  // the body of "<command> --help"
  int (*run)(const CommandContext& context) = nullptr;
  // The command reads its own options: every argument after its name but --help and --lang
  // reaches it in order, and it checks them itself (argumentCount is not used).
  bool ownOptions = false;
};

// Every command, in the order the help lists them.
[[nodiscard]] std::span<const Command* const> CommandTable();

}  // namespace quillon::cli
