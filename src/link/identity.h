#pragma once
// The module's identity as the identification dialog shows it, decoded from the version reply.

#include <string>
#include <string_view>

#include "project/project.h"
#include "project/user_dialog.h"

namespace quillon {

inline constexpr int kConflictWrongDevice = 1;
inline constexpr int kConflictPhoneCount = 2;

struct DeviceIdentity {
  std::string raw;           // lblTypzahl: the reply as received
  std::string version;       // lblVersion
  std::string bus;           // lblBus
  std::string unit;          // lblUnit
  std::string firmware;      // lblFirmware (the function text)
  std::string messageCount;  // lblMeldZahl
  std::string phoneCount;    // lblTelZahl
  int conflicts = 0;         // kConflictWrongDevice | kConflictPhoneCount
  bool holdsData = false;    // the dialog shows a decoded reply

  friend bool operator==(const DeviceIdentity&, const DeviceIdentity&) = default;
};

// The device type this program configures.
inline constexpr unsigned kTelvaneDeviceType = 3;
inline constexpr const char* kVersionBoxTitle = "Version";

// The firmware version as shown: the value divided by 100 ("1.23", "1.5", "1"), and the value 2,
// which the module reports when it cannot read its own version, as "2 (nicht lesbar)".
[[nodiscard]] std::string FirmwareVersionText(unsigned value);

// Decodes the version reply (hexadecimal fields at fixed positions) into `identity`, sets the
// highest message index of `limits` and, for the right device, `expectedPhoneCount`, and shows a
// box titled "Version" for each conflict. Returns the conflicts raised (0 for none). The reply is
// kept in identity.raw as given.
[[nodiscard]] int DecodeIdentity(std::string_view reply, DeviceIdentity& identity,
                                 ModuleLimits& limits, int& expectedPhoneCount, UserDialog& dialog);

}  // namespace quillon
