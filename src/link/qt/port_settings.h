#pragma once
// The port's line settings as the settings dialog and the status bar show them: a settings
// string "speed,parity letter,data bits,stop bits" (a "." marks 1.5 stop bits), the
// handshaking mode 0..3, and the port status text of status-bar panel 1.

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// What ConfigurePort sets each time the transfer window is prepared; the blanks are part of it.
inline constexpr const char* kDefaultSettingsString = "9600, N ,8 ,1";

enum class Handshaking : int { None = 0, XonXoff = 1, RtsCts = 2, XonRts = 3 };
enum class StopBits { One, OneAndHalf, Two };

struct LineSettings {
  int speed = 9600;
  char parity = 'N';  // one of E O N M S
  int dataBits = 8;
  StopBits stopBits = StopBits::One;

  friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

// The entries of the settings dialog's lists, in their order.
inline constexpr std::array<const char*, 16> kSpeedEntries = {
    "110",   "300",   "600",   "1200",  "2400",  "4800",   "9600",   "14400",
    "19200", "28800", "38400", "56000", "57600", "115200", "128000", "256000"};
inline constexpr std::array<const char*, 5> kDataBitsEntries = {"4", "5", "6", "7", "8"};
inline constexpr std::array<const char*, 5> kParityEntries = {"Even", "Odd", "None", "Mark",
                                                              "Space"};
inline constexpr std::array<const char*, 3> kStopBitsEntries = {"1", "1.5", "2"};

// nullopt when a part is missing or not understood. Blanks around the parts do not matter and
// the parity letter may be in either case.
[[nodiscard]] std::optional<LineSettings> ParseSettingsString(std::string_view text);

// The dialog's OK: trimmed speed + "," + first letter of the parity entry + "," + trimmed data
// bits + "," + trimmed stop bits.
[[nodiscard]] std::string BuildSettingsString(std::string_view speed, std::string_view parityEntry,
                                              std::string_view dataBits, std::string_view stopBits);

// Which entry of each list the dialog selects when it loads a settings string; -1 for a part
// that matches no entry.
struct SettingsSelection {
  int speed = -1;
  int parity = -1;
  int dataBits = -1;
  int stopBits = -1;

  friend bool operator==(const SettingsSelection&, const SettingsSelection&) = default;
};
[[nodiscard]] SettingsSelection SelectionForSettings(std::string_view text);

// A number as the number-to-text conversion writes it: a blank before a number that is not
// negative, "-" before one that is.
[[nodiscard]] std::string PortNumberText(int number);

// "COM" + port + "," + settings + the handshaking suffix + " active" / " not active". `port` is
// PortNumberText of the port number (or a blank and a device path for a port without a number).
[[nodiscard]] std::string PortStatusText(std::string_view port, std::string_view settings,
                                         int handshaking, bool open);

}  // namespace quillon
