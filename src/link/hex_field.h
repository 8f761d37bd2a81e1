#pragma once
// Hexadecimal numbers in the module's replies read the way the module's tools always read them:
// the leading hexadecimal digits count, reading stops at the first other character, and a field
// without any digit is 0. A run too long for the value saturates, so garbage cannot wrap round
// to a small, valid-looking number.

#include <cstddef>
#include <string_view>

namespace quillon {

[[nodiscard]] constexpr unsigned hexPrefixValue(std::string_view text) {
  unsigned value = 0;
  for (char c : text) {
    unsigned digit = 0;
    if (c >= '0' && c <= '9') {
      digit = static_cast<unsigned>(c - '0');
    } else if (c >= 'A' && c <= 'F') {
      digit = static_cast<unsigned>(c - 'A' + 10);
    } else if (c >= 'a' && c <= 'f') {
      digit = static_cast<unsigned>(c - 'a' + 10);
    } else {
      break;
    }
    value = value > 0x0FFFFFFFU ? 0xFFFFFFFFU : value * 16 + digit;
  }
  return value;
}

// The field of `width` characters at 1-based `position`, cut short where the text ends.
[[nodiscard]] constexpr std::string_view fixedField(std::string_view text, std::size_t position,
                                                    std::size_t width) {
  if (position == 0 || position > text.size()) return {};
  return text.substr(position - 1, width);
}

}  // namespace quillon
