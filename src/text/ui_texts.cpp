#include "text/ui_texts.h"

#include <string_view>

namespace quillon {

std::string_view uiTextsData();

std::array<std::string, kTextSlotCount> uiTextTable(int /*language*/) { return {}; }

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
