#pragma once
// The two number conversions that the project file and the flag table are built on. They follow
// the module's conventions rather than strtol's: a text is worth its leading number, and a
// non-negative number is written with a blank where its sign would be.

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// The leading decimal number of `text`: leading blanks and tabs are skipped, an optional sign and
// the digits that follow are read, anything after them is ignored. No digits give 0. The value
// saturates instead of overflowing, so a line of a million digits is harmless.
[[nodiscard]] std::int64_t NumericValue(std::string_view text);

// A number as the project file writes flag numbers and counts: " 5", " 0", "-2".
[[nodiscard]] std::string SignedDecimal(std::int64_t value);

// Blanks (code 32 only) removed at both ends.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text);

}  // namespace quillon
