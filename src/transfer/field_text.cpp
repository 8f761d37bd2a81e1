#include "transfer/field_text.h"

namespace quillon::field {

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
