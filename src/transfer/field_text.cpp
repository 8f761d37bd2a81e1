#include "transfer/field_text.h"

#include <limits>

namespace quillon::field {

namespace {

constexpr std::int64_t kReadLimit = std::numeric_limits<std::int32_t>::max();

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::int64_t leadingNumber(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
    negative = text[i] == '-';
    ++i;
  }
  std::int64_t value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    // Absurdly long digit runs saturate instead of overflowing.
    if (value < kReadLimit) value = value * 10 + (text[i] - '0');
  }
  if (value > kReadLimit) value = kReadLimit;
  return negative ? -value : value;
}

std::int64_t leadingHex(std::string_view text) {
  std::int64_t value = 0;
  for (char c : text) {
    const int digit = hexDigit(c);
    if (digit < 0) break;
    if (value < kReadLimit) value = value * 16 + digit;
  }
  return value > kReadLimit ? kReadLimit : value;
}

std::string hexField(std::int64_t value, int digits) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  auto bits = static_cast<std::uint32_t>(value);
  std::string hex;
  do {
    hex.insert(hex.begin(), kDigits[bits & 0xFU]);
    bits >>= 4U;
  } while (bits != 0);
  const auto width = static_cast<std::size_t>(digits);
  if (hex.size() < width) hex.insert(0, width - hex.size(), '0');
  return hex.substr(hex.size() - width);
}

std::string signedNumberText(std::int64_t value) {
  return value < 0 ? std::to_string(value) : " " + std::to_string(value);
}

std::string fixedWidth(std::string_view text, std::size_t width, char fill) {
  std::string out(text.substr(0, width));
  out.resize(width, fill);
  return out;
}

Prefix beforeFirst(std::string_view field, char separator) {
  const auto pos = field.find(separator);
  if (pos == std::string_view::npos) return {};
  return {std::string(field.substr(0, pos)), true};
}

}  // namespace quillon::field
