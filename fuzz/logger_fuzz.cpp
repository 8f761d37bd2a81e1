// libFuzzer target of the logger read-out after the transfer: the receive boxes as the engine
// filled them, the end marks of the module's blocks taken out, and the split into lines.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_support.h"
#include "link/transfer.h"
#include "transfer/logger.h"

namespace {

using quillon::fuzz::require;
constexpr char kEnd = quillon::kEndOfBlock;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillon::fuzz::Input input(data, size);
  // How much of the text each of the first four boxes holds; the fifth takes the rest.
  std::size_t lengths[quillon::kReceiveBoxes - 1];
  for (auto& length : lengths) length = input.byte();
  quillon::TransferOutcome outcome;
  for (std::size_t box = 0; box + 1 < quillon::kReceiveBoxes; ++box)
    outcome.received[box] = std::string(input.take(lengths[box]));
  outcome.received[quillon::kReceiveBoxes - 1] = std::string(input.rest());

  // A block can end with an end mark only as its last character, so every mark closed a block.
  const std::string all = outcome.receivedText();
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i] == kEnd) outcome.blockEnds.push_back(i);

  std::string received = quillon::receivedDataText(outcome);
  if (!received.empty() && received.back() == kEnd) received.pop_back();
  const std::string lines = quillon::loggerLines(received);

  // Expected: the text without any end mark but the last one, which goes too when it ends the
  // text; then a line feed after every carriage return.
  const std::size_t lastMark = all.rfind(kEnd);
  std::string text;
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i] != kEnd || (i == lastMark && i + 1 < all.size())) text += all[i];
  std::string expected;
  for (char c : text) {
    expected += c;
    if (c == '\r') expected += '\n';
  }
  require(lines == expected);
  return 0;
}
