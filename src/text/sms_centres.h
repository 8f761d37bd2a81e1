#pragma once
// The SMS centres offered to the user, compiled into the program. The labels and numbers are
// kept exactly as the list has always shipped: trailing blanks, odd spellings and duplicates
// included, because users recognise their entry by them.

#include <span>
#include <string>
#include <string_view>

namespace quillon {

struct SmsCentre {
  std::string_view label;
  std::string_view number;
};

// The 55 entries, entry 1 first (so list row r is element r - 1).
[[nodiscard]] std::span<const SmsCentre> smsCentres();

// The entry of list row r (1 to 55); an empty entry for row 0 and every other row.
[[nodiscard]] SmsCentre smsCentreAt(int row);

// What choosing list row r puts on the clipboard: number + ";" + label, so ";" for an empty row.
[[nodiscard]] std::string smsCentreClipboardText(int row);

}  // namespace quillon
