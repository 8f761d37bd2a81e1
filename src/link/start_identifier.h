#pragma once
// The header in front of a data string sent to the module: the kind letter and the length.

#include <string>
#include <string_view>

namespace quillon {

// The letter in upper case followed by the length of `data` in upper-case hexadecimal, padded on
// the left with "0" and cut to its last `digits` digits; `digits` is 3 or 4, anything else is 4.
// MakeStartIdentifier('p', 39 characters, 4) gives "P0027".
[[nodiscard]] std::string MakeStartIdentifier(char letter, std::string_view data, int digits = 4);

// ASCII upper case; the letters of the protocol are plain ASCII.
[[nodiscard]] constexpr char upperLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace quillon
