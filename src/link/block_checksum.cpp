#include "link/block_checksum.h"

#include "wire/wire_format.h"

namespace quillon {

std::uint8_t BlockChecksumValue(std::string_view data) {
  std::uint8_t sum = 0;
  for (char c : data) sum = static_cast<std::uint8_t>(sum ^ static_cast<unsigned char>(c));
  return sum;
}

std::string BlockChecksum(std::string_view data) {
  return wire::hexField(BlockChecksumValue(data), 2);
}

}  // namespace quillon
