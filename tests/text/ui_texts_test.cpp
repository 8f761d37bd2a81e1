#include "text/ui_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

#include "text/code_page.h"

namespace quillon {
namespace {

// The slots the program names by number, in data/ui_text_slots.tsv: written out by hand in
// UTF-8, compared as the Windows-1252 bytes the table holds.
TEST(UiTextTable, NumberedSlotsHoldTheirWordingInBothLanguages) {
  const auto english = uiTextTable(kEnglish);
  const auto german = uiTextTable(kGerman);
  std::ifstream golden(QUILLON_TEXT_DATA_DIR "/ui_text_slots.tsv");
  int rows = 0;
  for (std::string line; std::getline(golden, line);) {
    if (line.starts_with('#')) continue;
    ++rows;
    std::istringstream cells(line);
    std::string slot, inEnglish, inGerman;
    std::getline(std::getline(std::getline(cells, slot, '\t'), inEnglish, '\t'), inGerman, '\t');
    SCOPED_TRACE(slot);
    EXPECT_EQ(english[std::stoul(slot)], utf8ToCp1252(inEnglish));
    EXPECT_EQ(german[std::stoul(slot)], utf8ToCp1252(inGerman));
  }
  EXPECT_EQ(rows, 48);
}

TEST(UiTextTable, SeventyTextsInSlotsUpTo172AndNoneElsewhere) {
  for (int language : {kEnglish, kGerman}) {
    SCOPED_TRACE(language);
    const auto table = uiTextTable(language);
    int filled = 0;
    for (std::size_t slot = 0; slot < table.size(); ++slot) {
      const bool unused = slot == 25 || slot == 144 || slot == 145 || slot > 172;
      EXPECT_EQ(table[slot].empty(), unused) << "slot " << slot;
      filled += table[slot].empty() ? 0 : 1;
    }
    EXPECT_EQ(filled, 170);
  }
}

TEST(ParseUiTexts, RowsOfAHandWrittenTable) {
  const std::string table =
      "slot\tenglish\tgerman\r\n"
      "0\tTwo\\r\\nlines\\tTab\tBack\\\\slash \\q\\\r\n"
      "2\tTrailing  \n"
      "x\tnot a slot\tkein Slot\n201\ttoo high\tzu hoch\n4 \tblank after number\tLeer\n"
      "200\tlast\tletzter";
  const auto english = parseUiTexts(table, kEnglish);
  const auto german = parseUiTexts(table, kGerman);
  EXPECT_EQ(english[0], "Two\r\nlines\tTab");
  EXPECT_EQ(german[0], "Back\\slash \\q\\");  // unknown and lonely escapes kept
  EXPECT_EQ(english[2], "Trailing  ");
  EXPECT_EQ(german[2], "");
  EXPECT_EQ(german[200], "letzter");
  EXPECT_EQ(std::count_if(english.begin(), english.end(), [](auto& t) { return !t.empty(); }), 3);
  EXPECT_EQ(parseUiTexts(table, kFrench), decltype(english){});
}

}  // namespace
}  // namespace quillon
