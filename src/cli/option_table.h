#pragma once
// A command's own options as a small table: which names it knows and which of them take a
// value. Commands that read their own options (Command::ownOptions) parse them with it.

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::cli {

struct OptionEntry {
  std::string_view name;  // "--port", "-o"
  bool takesValue = false;
  std::string_view alias = {};  // another name for the same option, e.g. "--output" for "-o"
  // A flag that may carry a value after "=" ("--log" or "--log=FILE"); never takes the next
  // argument, which stays positional.
  bool valueAfterEquals = false;
};

struct ParsedOptions {
  // Every option given, by its name in the table; a flag maps to "". The last one given wins.
  std::map<std::string, std::string, std::less<>> values;
  std::vector<std::string> positional;

  [[nodiscard]] bool has(std::string_view name) const { return values.contains(name); }
  [[nodiscard]] std::optional<std::string> value(std::string_view name) const;
};

// Reads "--name value", "--name=value", flags and positional arguments in any order. Returns
// the error text of the first wrong argument, or nullopt.
[[nodiscard]] std::optional<std::string> parseOptions(const std::vector<std::string>& arguments,
                                                      std::span<const OptionEntry> table,
                                                      ParsedOptions& parsed);

}  // namespace quillon::cli
