#pragma once
// Puts a settings string and a handshaking mode onto a QSerialPort, and saves what the settings
// dialog chose.

#include <QSerialPort>
#include <string>
#include <string_view>

namespace quillon {

// False when the settings string is not understood or the port refuses a setting.
[[nodiscard]] bool ApplyLineSettings(QSerialPort& port, std::string_view settings, int handshaking);

// The settings dialog's OK: settings store "Kestrix", section "Configuration", keys
// "Configuration" (the settings string), "ComNr" and "Handshaking". Nothing reads them back at
// start-up; the port number of a new run comes from section "Einstellungen".
void SaveSerialConfiguration(const std::string& settings, int portNumber, int handshaking);

}  // namespace quillon
