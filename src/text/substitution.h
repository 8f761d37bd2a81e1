#pragma once
// The module sends and receives SMS text in the GSM 7-bit default alphabet, where the German
// umlauts and the sharp s sit at other codes than on the PC. Message texts are converted on
// their way to the module and back, one byte for one byte, so lengths and positions never change.

#include <string>

namespace quillon {

// Replaces each of ä ö ü Ä Ö Ü ß (Windows-1252) by its GSM code; every other byte stays.
[[nodiscard]] std::string toGsm(std::string text);

// Replaces each of the seven GSM codes by its PC letter. A "{", "[", "|", "\", "^", "~" or code 30
// that a user typed therefore comes back from the module as a letter; that is how the module
// works, not a fault to be smoothed over here.
[[nodiscard]] std::string toPc(std::string text);

}  // namespace quillon
