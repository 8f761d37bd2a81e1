#include "link/block_checksum.h"

namespace quillon {

std::uint8_t BlockChecksumValue(std::string_view data) {
  std::uint8_t sum = 0;
  for (char c : data) sum = static_cast<std::uint8_t>(sum ^ static_cast<unsigned char>(c));
  return sum;
}

std::string BlockChecksum(std::string_view data) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  const std::uint8_t sum = BlockChecksumValue(data);
  return {kDigits[sum >> 4], kDigits[sum & 0x0F]};
}

}  // namespace quillon
