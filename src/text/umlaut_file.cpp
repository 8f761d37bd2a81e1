#include "text/umlaut_file.h"

#include <fstream>
#include <system_error>

#include "project/atomic_file.h"
#include "text/code_page.h"
#include "wire/wire_format.h"

namespace quillon {
namespace {

constexpr char kLineTag = 'U';
constexpr char kSeparator = ';';

void appendRows(std::string_view cells, UmlautRows& rows) {
  // With a separator behind the last cell every complete row is "x;y;": at least 4 characters.
  std::string text(cells);
  text += kSeparator;
  std::string_view rest = text;
  while (rest.size() >= 4) {
    std::string left(wire::takeUmlautCell(rest));
    std::string right;
    if (rest.starts_with(";;")) {
      right = ";";
      rest.remove_prefix(2);
    } else {
      right = wire::takeUmlautCell(rest);
    }
    rows.emplace_back(std::move(left), std::move(right));
  }
}

}  // namespace

std::filesystem::path umlautPathIn(const std::filesystem::path& configFolder) {
#ifdef _WIN32
  (void)configFolder;
  return std::filesystem::path("C:\\temp\\Umlaut.ini");
#else
  return configFolder / "Umlaut.ini";
#endif
}

UmlautFile loadUmlautFile(const std::filesystem::path& path, UserDialog& dialog) {
  std::error_code error;
  // A folder opens as an empty stream; it must not pass for an empty table.
  if (std::filesystem::is_directory(path, error)) return {UmlautFileStatus::CannotOpen, {}};
  std::ifstream in(path, std::ios::binary);
  if (!in) return {UmlautFileStatus::CannotOpen, {}};

  UmlautFile result;
  bool dropped = false;
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line.front() != kLineTag) {
      dropped = true;
      continue;
    }
    appendRows(std::string_view(line).substr(1), result.rows);
  }
  if (dropped) {
    dialog.tell(kMainTitle, std::string(kUninterpretableLine) + ": " + utf8ToCp1252(path.string()),
                BoxIcon::Exclamation);
  }
  return result;
}

std::string umlautLine(const UmlautRows& rows) {
  std::string cells;
  for (const auto& [character, substitute] : rows) {
    cells += character;
    cells += kSeparator;
    cells += substitute;
    cells += kSeparator;
  }
  if (!cells.empty()) cells.pop_back();
  return kLineTag + cells;
}

UmlautFileStatus saveUmlautFile(const std::filesystem::path& path, const UmlautRows& rows) {
  return WriteFileReplacing(path, umlautLine(rows) + "\r\n").ok ? UmlautFileStatus::Ok
                                                                : UmlautFileStatus::CannotWrite;
}

std::optional<char> substituteFromDigits(std::string_view digits) {
  if (digits.size() != 3) return std::nullopt;
  int code = 0;
  for (char d : digits) {
    if (d < '0' || d > '9') return std::nullopt;
    code = code * 10 + (d - '0');
  }
  if (code > 255) return std::nullopt;
  return static_cast<char>(static_cast<unsigned char>(code));
}

}  // namespace quillon
