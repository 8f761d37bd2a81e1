#include "link/identity.h"

#include <array>

#include "link/transfer.h"
#include "wire/wire_format.h"

namespace quillon {

namespace {

constexpr std::array<const char*, 10> kBusTypes = {
    " Kein Bus", " SUCOnet", " Comli", " EIB",     " EASY400",
    " EASY400",  " MPI",     " CAN",   " Easy800", " Millenium M3",
};
constexpr std::array<const char*, 4> kDeviceTypes = {" Tarvos", " Ombra", " Quessa", " Telvane"};
constexpr std::array<const char*, 3> kFunctions = {" Alarmieren", " Fernwirken", " DF\xDC"};
constexpr const char* kUnknown = " unbekannt";

constexpr int kSmallMessageIndex = 99;
constexpr int kLargeMessageIndex = 399;
constexpr int kTelvanePhoneCount = 60;
// The phone field counts two places more than the module has for numbers.
constexpr int kPhoneFieldOffset = 2;

template <std::size_t N>
std::string lookUp(const std::array<const char*, N>& table, unsigned index) {
  return index < N ? table[index] : kUnknown;
}

// A number as a text with a blank in place of a plus sign.
std::string signedNumber(int n) { return (n < 0 ? "" : " ") + std::to_string(n); }

}  // namespace

std::string FirmwareVersionText(unsigned value) {
  if (value == 2) return "2 (nicht lesbar)";
  std::string text = std::to_string(value / 100);
  const unsigned hundredths = value % 100;
  if (hundredths == 0) return text;
  text += '.';
  text += static_cast<char>('0' + hundredths / 10);
  if (hundredths % 10 != 0) text += static_cast<char>('0' + hundredths % 10);
  return text;
}

int DecodeIdentity(std::string_view reply, DeviceIdentity& identity, ModuleLimits& limits,
                   int& expectedPhoneCount, UserDialog& dialog) {
  const auto field = [reply](std::size_t position, std::size_t width) {
    return wire::hexPrefixValue(wire::fixedField(reply, position, width));
  };
  int conflicts = 0;
  // The reply as the module sent it, without the end mark that frames its last block.
  identity.raw = std::string(reply);
  if (!identity.raw.empty() && identity.raw.back() == wire::kEndMark) identity.raw.pop_back();

  identity.version = FirmwareVersionText(field(1, 4));
  identity.bus = lookUp(kBusTypes, field(5, 2));

  const unsigned messageSize = field(9, 2);
  identity.messageCount = messageSize == 0 ? " 100" : messageSize == 1 ? " 400" : kUnknown;
  limits.lastMessageIndex = messageSize == 1 ? kLargeMessageIndex : kSmallMessageIndex;

  identity.firmware = lookUp(kFunctions, field(11, 2));

  const unsigned device = field(7, 2);
  identity.unit = lookUp(kDeviceTypes, device);
  if (device < kTelvaneDeviceType) {
    conflicts |= kConflictWrongDevice;
    dialog.tell(kVersionBoxTitle, "Kestrix ist auf falsches Ger\xE4t eingestellt");
  } else if (device == kTelvaneDeviceType) {
    expectedPhoneCount = kTelvanePhoneCount;
  }

  const int places = static_cast<int>(field(13, 2)) - kPhoneFieldOffset;
  if (places < 1) {
    identity.phoneCount.clear();
  } else {
    if (places != expectedPhoneCount) {
      conflicts |= kConflictPhoneCount;
      dialog.tell(kVersionBoxTitle, "Falsche Anzahl Telefonnummern: \nEingestellt sind " +
                                        signedNumber(expectedPhoneCount) +
                                        ", aber im Ger\xE4t ist Platz f\xFCr" +
                                        signedNumber(places));
    }
    identity.phoneCount = std::to_string(places);
  }

  identity.conflicts = conflicts;
  identity.holdsData = true;
  return conflicts;
}

}  // namespace quillon
