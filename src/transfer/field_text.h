#pragma once
// Small text helpers shared by the image builders and parsers: the number reading and number
// writing rules that the module's images and the project file both rely on.

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon::field {

// The decimal number at the start of `text` after leading blanks, with an optional sign;
// 0 when there is none. Reading stops at the first character that is not a digit.
[[nodiscard]] std::int64_t leadingNumber(std::string_view text);

// The hexadecimal number at the start of `text` (upper or lower case digits); 0 when there is
// none. Reading stops at the first character that is not a hexadecimal digit.
[[nodiscard]] std::int64_t leadingHex(std::string_view text);

// Upper-case hexadecimal of `value` (negative values as 32-bit two's complement), left-padded
// with "0" and cut to its last `digits` characters.
[[nodiscard]] std::string hexField(std::int64_t value, int digits);

// A number written with one leading blank when it is not negative (" 5", "-1").
[[nodiscard]] std::string signedNumberText(std::int64_t value);

// `text` followed by `fill` characters, cut to exactly `width` characters.
[[nodiscard]] std::string fixedWidth(std::string_view text, std::size_t width, char fill);

// The characters of `field` before its first `separator`; nullopt-like: `found` is false when
// the field holds none.
struct Prefix {
  std::string text;
  bool found = false;
};
[[nodiscard]] Prefix beforeFirst(std::string_view field, char separator);

}  // namespace quillon::field
