// libFuzzer target of the identity reply: any bytes decode without a crash, and what the
// identification shows follows from the hexadecimal fields of the reply.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_support.h"
#include "link/identity.h"
#include "link/transfer.h"

namespace {

using quillon::fuzz::require;

// The leading hexadecimal digits of the field at 0-based `at`, as the module writes numbers.
unsigned fieldValue(std::string_view reply, std::size_t at, std::size_t width) {
  if (at >= reply.size()) return 0;
  unsigned value = 0;
  for (char c : reply.substr(at, width)) {
    int digit = -1;
    if (c >= '0' && c <= '9') digit = c - '0';
    if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
    if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
    if (digit < 0) break;
    value = value * 16 + static_cast<unsigned>(digit);
  }
  return value;
}

bool isDecimal(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillon::fuzz::Input input(data, size);
  // The count the program expects before the reply: what the last identity said, or anything.
  const int expectedBefore = static_cast<int>(input.byte()) - 64;
  const std::string_view reply = input.rest();

  quillon::DeviceIdentity identity;
  quillon::ModuleLimits limits;
  limits.lastMessageIndex = -5;  // the decoder must set it
  int expected = expectedBefore;
  quillon::fuzz::RecordingDialog dialog;
  const int conflicts = quillon::DecodeIdentity(reply, identity, limits, expected, dialog);

  require(identity.holdsData);
  require(conflicts == identity.conflicts);
  require((conflicts & ~(quillon::kConflictWrongDevice | quillon::kConflictPhoneCount)) == 0);
  // One "Version" box per conflict, nothing else.
  require(dialog.boxes.size() == static_cast<std::size_t>(std::popcount(unsigned(conflicts))));
  for (const auto& box : dialog.boxes) require(box.title == quillon::kVersionBoxTitle);

  std::string raw(reply);
  if (!raw.empty() && raw.back() == quillon::kEndOfBlock) raw.pop_back();
  require(identity.raw == raw);

  // Device type in characters 7 and 8: older devices conflict, ours sets 60 phone places.
  const unsigned device = fieldValue(reply, 6, 2);
  require(((conflicts & quillon::kConflictWrongDevice) != 0) == (device < 3));
  require(expected == (device == quillon::kTelvaneDeviceType ? 60 : expectedBefore));

  // Message size in characters 9 and 10: 1 is the large module, anything else the small one.
  const bool large = fieldValue(reply, 8, 2) == 1;
  require(limits.lastMessageIndex == (large ? 399 : 99));
  if (large) require(identity.messageCount == " 400");

  // Phone places in characters 13 and 14, two more than the module has.
  const int places = static_cast<int>(fieldValue(reply, 12, 2)) - 2;
  if (places < 1) {
    require(identity.phoneCount.empty());
    require((conflicts & quillon::kConflictPhoneCount) == 0);
  } else {
    require(isDecimal(identity.phoneCount) && std::stoi(identity.phoneCount) == places);
    require(((conflicts & quillon::kConflictPhoneCount) != 0) == (places != expected));
  }

  const unsigned version = fieldValue(reply, 0, 4);
  require(!identity.version.empty());
  if (version == 2) require(identity.version == "2 (nicht lesbar)");
  if (version != 2 && version % 100 == 0)
    require(identity.version == std::to_string(version / 100));
  require(!identity.bus.empty() && !identity.unit.empty() && !identity.firmware.empty());
  return 0;
}
