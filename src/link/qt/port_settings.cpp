#include "link/qt/port_settings.h"

#include <cctype>
#include <charconv>
#include <vector>

namespace quillon {
namespace {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
    text.remove_prefix(1);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
    text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> parts(std::string_view text) {
  std::vector<std::string_view> out;
  for (;;) {
    const auto comma = text.find(',');
    out.push_back(trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) return out;
    text.remove_prefix(comma + 1);
  }
}

std::optional<int> number(std::string_view text) {
  int value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

char upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

template <std::size_t N>
int indexOf(const std::array<const char*, N>& entries, std::string_view value) {
  for (std::size_t i = 0; i < N; ++i)
    if (value == entries[i]) return static_cast<int>(i);
  return -1;
}

}  // namespace

std::optional<LineSettings> ParseSettingsString(std::string_view text) {
  const auto fields = parts(text);
  if (fields.size() != 4) return std::nullopt;
  LineSettings settings;
  const auto speed = number(fields[0]);
  const auto dataBits = number(fields[2]);
  if (!speed || *speed <= 0 || !dataBits || fields[1].size() != 1) return std::nullopt;
  settings.speed = *speed;
  settings.dataBits = *dataBits;
  settings.parity = upper(fields[1].front());
  if (std::string_view("EONMS").find(settings.parity) == std::string_view::npos)
    return std::nullopt;
  if (fields[3].find('.') != std::string_view::npos)
    settings.stopBits = StopBits::OneAndHalf;
  else if (fields[3] == "1")
    settings.stopBits = StopBits::One;
  else if (fields[3] == "2")
    settings.stopBits = StopBits::Two;
  else
    return std::nullopt;
  return settings;
}

std::string BuildSettingsString(std::string_view speed, std::string_view parityEntry,
                                std::string_view dataBits, std::string_view stopBits) {
  std::string out(trimmed(speed));
  out += ',';
  if (!parityEntry.empty()) out += parityEntry.front();
  out += ',';
  out += trimmed(dataBits);
  out += ',';
  out += trimmed(stopBits);
  return out;
}

SettingsSelection SelectionForSettings(std::string_view text) {
  const auto fields = parts(text);
  SettingsSelection selection;
  if (!fields.empty()) selection.speed = indexOf(kSpeedEntries, fields[0]);
  if (fields.size() > 1 && !fields[1].empty()) {
    static constexpr std::string_view kLetters = "eonms";
    const char letter =
        static_cast<char>(std::tolower(static_cast<unsigned char>(fields[1].front())));
    const auto at = kLetters.find(letter);
    selection.parity = at == std::string_view::npos ? -1 : static_cast<int>(at);
  }
  if (fields.size() > 2) selection.dataBits = indexOf(kDataBitsEntries, fields[2]);
  if (fields.size() > 3) {
    selection.stopBits =
        fields[3].find('.') != std::string_view::npos ? 1 : indexOf(kStopBitsEntries, fields[3]);
  }
  return selection;
}

std::string PortNumberText(int number) {
  return number < 0 ? std::to_string(number) : " " + std::to_string(number);
}

std::string PortStatusText(std::string_view port, std::string_view settings, int handshaking,
                           bool open) {
  std::string text = "COM";
  text += port;
  text += ',';
  text += settings;
  switch (static_cast<Handshaking>(handshaking)) {
    case Handshaking::XonXoff:
      text += " , XON/XOFF";
      break;
    case Handshaking::RtsCts:
      text += " , RTS/CTS";
      break;
    case Handshaking::XonRts:
      text += " , XON-RTS";
      break;
    case Handshaking::None:
      break;
  }
  text += open ? " active" : " not active";
  return text;
}

}  // namespace quillon
