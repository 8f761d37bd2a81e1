#pragma once
// The module's identity as the identification dialog shows it, decoded from the version reply.

#include <string>

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

}  // namespace quillon
