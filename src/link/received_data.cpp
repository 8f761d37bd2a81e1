
#include "link/transfer.h"

namespace quillon {

std::array<std::string, kReceiveBoxes> receivedData(const TransferOutcome& outcome) {
  std::array<std::string, kReceiveBoxes> data;
  // The last mark stays: it ends the image, and the parsers stop at it.
  const std::size_t inner = outcome.blockEnds.empty() ? 0 : outcome.blockEnds.size() - 1;
  auto mark = outcome.blockEnds.begin();
  const auto innerEnd = outcome.blockEnds.begin() + static_cast<std::ptrdiff_t>(inner);
  std::size_t offset = 0;
  for (std::size_t box = 0; box < data.size(); ++box) {
    const std::string& received = outcome.received[box];
    for (std::size_t i = 0; i < received.size(); ++i) {
      while (mark != innerEnd && *mark < offset + i) ++mark;
      if (mark != innerEnd && *mark == offset + i) continue;
      data[box] += received[i];
    }
    offset += received.size();
  }
  return data;
}

std::string receivedDataText(const TransferOutcome& outcome) {
  std::string all;
  for (const auto& box : receivedData(outcome)) all += box;
  return all;
}

}  // namespace quillon
