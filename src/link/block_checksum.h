#pragma once
// The checksum behind every block on the link: the code of the first character XOR the codes of
// all further characters. It travels as two upper-case hexadecimal digits.

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

[[nodiscard]] std::uint8_t BlockChecksumValue(std::string_view data);
// The two digits as they go on the wire: "0A" for 10.
[[nodiscard]] std::string BlockChecksum(std::string_view data);

}  // namespace quillon
