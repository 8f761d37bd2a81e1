#pragma once
// The module's data format, character by character: the pad and end bytes, the control replies,
// the hexadecimal fields, the option letter of a message and the splits at ";". The project file
// shares the pad byte, the option letters and the ";" splits with the images, which is why this
// sits below the project library and depends on nothing.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::wire {

inline constexpr char kPad = '\xB6';      // 182: fills fixed-width fields and separates records
inline constexpr char kEndMark = '\xFD';  // 253: ends every image and closes the module's blocks
inline constexpr char kAck = '\x06';
inline constexpr char kNak = '\x15';

// ---- Hexadecimal fields ------------------------------------------------------------------------

// Upper-case hexadecimal digits of `value` without leading zeros: "0" for 0, "A" for 10.
[[nodiscard]] std::string hexDigits(std::uint32_t value);

// Upper-case hexadecimal of `value` (a negative value as its 32-bit two's complement), padded on
// the left with "0" and cut to its last `digits` characters: hexField(300, 2) is "2C".
[[nodiscard]] std::string hexField(std::int64_t value, std::size_t digits);

// The value of one hexadecimal digit of either case, or -1 for any other character.
[[nodiscard]] constexpr int hexDigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// A received hexadecimal field, read the way the module's tools always read one: the leading
// digits count, reading stops at the first other character, and a field without any digit is
// 0. A run too long for the value saturates, so garbage cannot wrap round to a small,
// valid-looking number.
[[nodiscard]] constexpr unsigned hexPrefixValue(std::string_view text) {
  unsigned value = 0;
  for (char c : text) {
    const int digit = hexDigitValue(c);
    if (digit < 0) break;
    value = value > 0x0FFFFFFFU ? 0xFFFFFFFFU : value * 16 + static_cast<unsigned>(digit);
  }
  return value;
}

// The field of `width` characters at 1-based `position`, cut short where the text ends.
[[nodiscard]] constexpr std::string_view fixedField(std::string_view text, std::size_t position,
                                                    std::size_t width) {
  if (position == 0 || position > text.size()) return {};
  return text.substr(position - 1, width);
}

// ---- Padded fields -----------------------------------------------------------------------------

// `text` filled up with pad bytes, or cut, to exactly `width` characters.
[[nodiscard]] std::string padded(std::string_view text, std::size_t width);

// `text` without the pad bytes at its end.
[[nodiscard]] std::string_view withoutTrailingPads(std::string_view text);

// What a received fixed-width field holds before its first pad byte; nullopt when it holds none,
// which breaks the layout.
[[nodiscard]] std::optional<std::string_view> beforePad(std::string_view field);

// ---- Option letters ----------------------------------------------------------------------------

// The three marks of a message row.
struct MessageOptions {
  bool acknowledge = false;
  bool callBack = false;
  bool ring = false;
  friend bool operator==(const MessageOptions&, const MessageOptions&) = default;
};

// "@" plus 1 for the acknowledgement, 2 for the call back and 4 for the ring: "@" to "G".
[[nodiscard]] char optionLetter(MessageOptions options);

// The marks an option letter stands for; nullopt for a character outside "@" to "G".
[[nodiscard]] std::optional<MessageOptions> optionsOfLetter(char letter);

// ---- Splits at ";" -----------------------------------------------------------------------------

struct SemicolonSplit {
  std::string_view before;
  std::string_view after;
  friend bool operator==(const SemicolonSplit&, const SemicolonSplit&) = default;
};

// The rule of the project file's record bodies, which the controller data image also applies to
// the flag entries it sends: split at the first ";", blanks trimmed from the part before it, the
// part after it untouched. A body of one character gives two empty parts; a body without ";"
// gives an empty first part and leaves the whole body as the second.
[[nodiscard]] SemicolonSplit splitProjectRecord(std::string_view body);

// The rule of the flag page, which shows a flag entry as message and phone number: split at the
// first ";", nothing trimmed. Without ";" the whole entry is the message part.
[[nodiscard]] SemicolonSplit splitFlagAssignment(std::string_view entry);

// The rule of the substitution file's cells: the cell up to the next ";" is taken off the front
// of `rest`, together with that ";". Without one the rest is the last cell.
[[nodiscard]] std::string_view takeUmlautCell(std::string_view& rest);

}  // namespace quillon::wire
