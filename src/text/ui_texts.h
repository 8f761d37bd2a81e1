#pragma once
// The user-interface text table: 201 slots filled for English or German from the data file
// ui_texts.tsv compiled into the program. Every caption and message finds its text by slot, so
// switching the language re-fills the table and every later lookup follows.

#include <array>
#include <string>
#include <string_view>

#include "text/ui_text_slots.h"

namespace quillon {

enum Language : int { kEnglish = 0, kGerman = 1, kFrench = 2 };

inline constexpr int kTextSlotCount = 201;

class UiTexts {
 public:
  // English (0) or German (1) write every slot; French (2) and any other value leave the table
  // as it is, so a first start in French shows empty texts.
  void fill(int language);
  [[nodiscard]] const std::string& operator[](int slot) const;
  // The language last filled in, or -1 while the table has never been filled.
  [[nodiscard]] int language() const { return m_language; }
  // German when the table holds German, English otherwise: for texts quoted as a pair.
  [[nodiscard]] bool german() const { return m_language == kGerman; }

 private:
  std::array<std::string, kTextSlotCount> m_slots;
  int m_language = -1;
};

// The table of one language, for tests and tools; empty for anything but 0 and 1.
[[nodiscard]] std::array<std::string, kTextSlotCount> uiTextTable(int language);

// Reads a text table in the form of ui_texts.tsv: a header line, then one row per slot,
// "slot<TAB>english<TAB>german". Within a text \r, \n, \t and \\ stand for CR, LF, TAB and a
// backslash; everything else, trailing blanks included, is taken as it stands. Rows whose slot
// is not a number from 0 to 200 are skipped. Empty for anything but English and German.
[[nodiscard]] std::array<std::string, kTextSlotCount> parseUiTexts(std::string_view table,
                                                                   int language);

}  // namespace quillon
