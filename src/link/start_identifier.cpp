#include "link/start_identifier.h"

#include <cstddef>

namespace quillon {

std::string MakeStartIdentifier(char letter, std::string_view data, int digits) {
  const std::size_t width = digits == 3 ? 3 : 4;
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string hex;
  for (std::size_t n = data.size(); n > 0; n /= 16) hex.insert(hex.begin(), kDigits[n % 16]);
  if (hex.size() < width) hex.insert(0, width - hex.size(), '0');
  return std::string(1, upperLetter(letter)) + hex.substr(hex.size() - width);
}

}  // namespace quillon
