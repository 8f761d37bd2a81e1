#include "project/number_text.h"

#include <limits>

namespace quillon {

std::int64_t NumericValue(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
    negative = text[i] == '-';
    ++i;
  }
  constexpr std::int64_t kLimit = std::numeric_limits<std::int64_t>::max() / 10 - 9;
  std::int64_t value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    if (value < kLimit) value = value * 10 + (text[i] - '0');
  }
  return negative ? -value : value;
}

std::string SignedDecimal(std::int64_t value) {
  std::string digits = std::to_string(value);
  return value >= 0 ? " " + digits : digits;
}

std::string_view TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

}  // namespace quillon
