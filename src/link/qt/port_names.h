#pragma once
// Which device a port number means. On Windows port n is COMn. Elsewhere a port is given either
// as a device path or as a number n, and n means, in this order:
//   1. the device path stored in the settings store, section "Ports", key "COMn"
//      (telvane-sim --register n writes its link there and removes it on exit);
//   2. the n-th entry (1-based) of the serial ports the system lists, sorted by port name.

#include <QString>
#include <optional>

namespace quillon {

inline constexpr const char* kSettingsOrganisation = "Kestrix";
inline constexpr const char* kSettingsApplication = "Kestrix";

struct PortId {
  int number = 0;  // 0 for a device path that no port number is registered for
  QString device;  // what QSerialPort opens
};

// False for a text that cannot name a device: empty, only blanks, or holding a control
// character (a NUL above all, which the system would cut the name at).
[[nodiscard]] bool isDeviceName(const QString& text);

// The device for port number n; empty when there is no such port, or when the settings store
// holds something for it that is no device name (then `why`, if given, says so).
[[nodiscard]] QString deviceForPortNumber(int number, QString* why = nullptr);

// "3" or "COM3" is port number 3; anything else is taken as a device path. nullopt when a
// number maps to no device or the text names none; `why`, if given, then says why.
[[nodiscard]] std::optional<PortId> resolvePort(const QString& text, QString* why = nullptr);

// The settings-store side of rule 1.
void registerPort(int number, const QString& device);
// Removes the entry only while it still names `device`, so a newer registration survives.
void unregisterPort(int number, const QString& device);

}  // namespace quillon
