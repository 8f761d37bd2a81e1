// libFuzzer target of the port settings string as the settings store and the dialog give it:
// parsing, the dialog's selection and the status text agree, and what the dialog builds from
// its entries parses again.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_support.h"
#include "link/qt/port_settings.h"

namespace {

using quillon::fuzz::require;

const char* stopBitsText(quillon::StopBits bits) {
  switch (bits) {
    case quillon::StopBits::One:
      return "1";
    case quillon::StopBits::OneAndHalf:
      return "1.5";
    case quillon::StopBits::Two:
      return "2";
  }
  return "";
}

// The entry the dialog selected; only called with an index the selection found.
template <std::size_t N>
std::string_view entry(const std::array<const char*, N>& entries, int index) {
  return entries[static_cast<std::size_t>(index)];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillon::fuzz::Input input(data, size);
  const int handshaking = input.byte() % 4;
  const bool open = input.byte() % 2 == 1;
  const std::string_view text = input.rest();

  const auto settings = quillon::ParseSettingsString(text);
  const auto selection = quillon::SelectionForSettings(text);

  if (settings) {
    require(settings->speed > 0);
    require(std::string_view("EONMS").find(settings->parity) != std::string_view::npos);
    // The dialog selects the parity and stop bits that were understood.
    require(selection.parity >= 0 &&
            entry(quillon::kParityEntries, selection.parity)[0] == settings->parity);
    require(selection.stopBits == static_cast<int>(settings->stopBits));
    if (selection.speed >= 0)
      require(std::to_string(settings->speed) == entry(quillon::kSpeedEntries, selection.speed));
    if (selection.dataBits >= 0)
      require(std::to_string(settings->dataBits) ==
              entry(quillon::kDataBitsEntries, selection.dataBits));

    // Written back as the dialog writes it, the settings read the same.
    const std::string parity(1, settings->parity);
    const std::string rebuilt = quillon::BuildSettingsString(
        std::to_string(settings->speed), parity, std::to_string(settings->dataBits),
        stopBitsText(settings->stopBits));
    require(quillon::ParseSettingsString(rebuilt) == settings);
  }

  // Whatever the dialog selects, OK writes a string that selects the same entries.
  if (selection.speed >= 0 && selection.parity >= 0 && selection.dataBits >= 0 &&
      selection.stopBits >= 0) {
    const std::string built =
        quillon::BuildSettingsString(entry(quillon::kSpeedEntries, selection.speed),
                                     entry(quillon::kParityEntries, selection.parity),
                                     entry(quillon::kDataBitsEntries, selection.dataBits),
                                     entry(quillon::kStopBitsEntries, selection.stopBits));
    require(quillon::SelectionForSettings(built) == selection);
    const auto parsed = quillon::ParseSettingsString(built);
    require(parsed.has_value());
    require(std::to_string(parsed->speed) == entry(quillon::kSpeedEntries, selection.speed));
  }

  const std::string status = quillon::PortStatusText(
      quillon::PortNumberText(static_cast<int>(size)), text, handshaking, open);
  require(status.starts_with("COM"));
  require(status.ends_with(open ? " active" : " not active"));
  return 0;
}
