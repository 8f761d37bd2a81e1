#pragma once
// The checksum the module puts behind every block and expects behind every block it is sent.

#include <string>
#include <string_view>

namespace quillon::sim {

// XOR of every byte as two upper-case hexadecimal digits.
[[nodiscard]] std::string checksumDigits(std::string_view data);

}  // namespace quillon::sim
