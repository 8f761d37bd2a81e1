#pragma once
// Small text helpers shared by the image builders and parsers: the number reading and number
// writing rules that the module's images and the project file both rely on.

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon::field {

// Upper-case hexadecimal of `value` (negative values as 32-bit two's complement), left-padded
// with "0" and cut to its last `digits` characters.
[[nodiscard]] std::string hexField(std::int64_t value, int digits);

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
