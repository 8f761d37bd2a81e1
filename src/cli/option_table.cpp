#include "cli/option_table.h"

#include <algorithm>

namespace quillon::cli {

std::optional<std::string> ParsedOptions::value(std::string_view name) const {
  const auto it = values.find(name);
  if (it == values.end()) return std::nullopt;
  return it->second;
}

std::optional<std::string> parseOptions(const std::vector<std::string>& arguments,
                                        std::span<const OptionEntry> table, ParsedOptions& parsed) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string name = arguments[i];
    if (name.size() < 2 || name.front() != '-') {
      parsed.positional.push_back(name);
      continue;
    }
    std::optional<std::string> value;
    if (const auto eq = name.find('='); name.starts_with("--") && eq != std::string::npos) {
      value = name.substr(eq + 1);
      name.resize(eq);
    }
    const auto entry = std::find_if(table.begin(), table.end(), [&name](const OptionEntry& s) {
      return s.name == name || (!s.alias.empty() && s.alias == name);
    });
    if (entry == table.end()) return "unknown option '" + name + "'";
    if (!entry->takesValue) {
      if (value && !entry->valueAfterEquals) return name + " takes no value";
      parsed.values[std::string(entry->name)] = value.value_or("");
      continue;
    }
    if (!value) {
      if (i + 1 >= arguments.size()) return "option " + name + " needs a value";
      value = arguments[++i];
    }
    parsed.values[std::string(entry->name)] = *value;
  }
  return std::nullopt;
}

}  // namespace quillon::cli
