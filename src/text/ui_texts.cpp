#include "text/ui_texts.h"

#include <charconv>
#include <cstddef>

namespace quillon {

std::string_view uiTextsData();

namespace {

std::string unescape(std::string_view cell) {
  std::string out;
  out.reserve(cell.size());
  for (std::size_t i = 0; i < cell.size(); ++i) {
    char c = cell[i];
    if (c != '\\' || i + 1 == cell.size()) {
      out += c;
      continue;
    }
    switch (cell[i + 1]) {
      case 'r':
        out += '\r';
        break;
      case 'n':
        out += '\n';
        break;
      case 't':
        out += '\t';
        break;
      case '\\':
        out += '\\';
        break;
      default:
        // Not one of ours: keep the backslash so that nothing the author wrote is lost.
        out += c;
        continue;
    }
    ++i;
  }
  return out;
}

// Cuts the next tab-separated cell off the front of `line`.
std::string_view nextCell(std::string_view& line) {
  std::size_t tab = line.find('\t');
  std::string_view cell = line.substr(0, tab);
  line = tab == std::string_view::npos ? std::string_view{} : line.substr(tab + 1);
  return cell;
}

}  // namespace

std::array<std::string, kTextSlotCount> parseUiTexts(std::string_view table, int language) {
  std::array<std::string, kTextSlotCount> slots;
  if (language != kEnglish && language != kGerman) return slots;

  bool header = true;
  while (!table.empty()) {
    std::size_t end = table.find('\n');
    std::string_view line = table.substr(0, end);
    table = end == std::string_view::npos ? std::string_view{} : table.substr(end + 1);
    // A checkout with Windows line ends must not put a CR behind every German text.
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (header) {
      header = false;
      continue;
    }

    std::string_view number = nextCell(line);
    int slot = -1;
    auto [rest, error] = std::from_chars(number.data(), number.data() + number.size(), slot);
    if (error != std::errc{} || rest != number.data() + number.size() || slot < 0 ||
        slot >= kTextSlotCount) {
      continue;
    }
    std::string_view english = nextCell(line);
    std::string_view german = nextCell(line);
    slots[static_cast<std::size_t>(slot)] = unescape(language == kGerman ? german : english);
  }
  return slots;
}

std::array<std::string, kTextSlotCount> uiTextTable(int language) {
  return parseUiTexts(uiTextsData(), language);
}

void UiTexts::fill(int language) {
  if (language != kEnglish && language != kGerman) return;
  m_slots = uiTextTable(language);
  m_language = language;
}

const std::string& UiTexts::operator[](int slot) const {
  static const std::string kEmpty;
  if (slot < 0 || slot >= kTextSlotCount) return kEmpty;
  return m_slots[static_cast<std::size_t>(slot)];
}

}  // namespace quillon
