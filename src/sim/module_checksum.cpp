#include "sim/module_checksum.h"

namespace quillon::sim {

std::string checksumDigits(std::string_view data) {
  unsigned value = 0;
  for (char c : data) value ^= static_cast<unsigned char>(c);
  static constexpr char kDigits[] = "0123456789ABCDEF";
  return {kDigits[(value >> 4) & 0xFU], kDigits[value & 0xFU]};
}

}  // namespace quillon::sim
