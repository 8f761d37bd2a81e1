#include "link/start_identifier.h"

#include <cstddef>
#include <cstdint>

#include "wire/wire_format.h"

namespace quillon {

std::string MakeStartIdentifier(char letter, std::string_view data, int digits) {
  const std::size_t width = digits == 3 ? 3 : 4;
  return std::string(1, upperLetter(letter)) +
         wire::hexField(static_cast<std::int64_t>(data.size()), width);
}

}  // namespace quillon
