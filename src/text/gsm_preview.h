#pragma once
// What the phone will show for a message text typed on the PC. The module sends every code below
// 128 as the GSM 7-bit default-alphabet character of that code (after the umlaut substitution of
// substitution.h), so several ordinary PC characters arrive as something else: "@" as "¡", "$" as
// "¤", "[" as "Ä". Codes from 128 up, apart from the seven substituted letters, cannot be sent.

#include <string_view>
#include <vector>

namespace quillon {

struct GsmPreviewChar {
  // What the phone displays; for a character that cannot be sent, the character as typed.
  char32_t shown = 0;
  // The phone shows something else than was typed (always so when it cannot be sent).
  bool differs = false;
  bool sendable = true;

  friend bool operator==(const GsmPreviewChar&, const GsmPreviewChar&) = default;
};

// The GSM 03.38 default-alphabet character of a code 0..127. The escape code 0x1B, which on its
// own selects nothing a phone can show, is shown as a blank; codes above 127 give U+FFFD.
[[nodiscard]] char32_t gsmDefaultAlphabet(unsigned char code);

// One entry per byte of the Windows-1252 text, in order.
[[nodiscard]] std::vector<GsmPreviewChar> gsmPreview(std::string_view cp1252Text);

}  // namespace quillon
