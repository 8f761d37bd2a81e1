#include "wire/wire_format.h"

namespace quillon::wire {

namespace {

constexpr char kFirstOptionLetter = '@';
constexpr int kAcknowledgeBit = 1;
constexpr int kCallBackBit = 2;
constexpr int kRingBit = 4;
constexpr int kAllOptionBits = kAcknowledgeBit | kCallBackBit | kRingBit;

std::string_view trimmedBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

}  // namespace

std::string hexDigits(std::uint32_t value) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string hex;
  do {
    hex.insert(hex.begin(), kDigits[value & 0xFU]);
    value >>= 4U;
  } while (value != 0);
  return hex;
}

std::string hexField(std::int64_t value, std::size_t digits) {
  std::string hex = hexDigits(static_cast<std::uint32_t>(value));
  if (hex.size() < digits) hex.insert(0, digits - hex.size(), '0');
  return hex.substr(hex.size() - digits);
}

std::string padded(std::string_view text, std::size_t width) {
  std::string out(text.substr(0, width));
  out.resize(width, kPad);
  return out;
}

std::string_view withoutTrailingPads(std::string_view text) {
  while (!text.empty() && text.back() == kPad) text.remove_suffix(1);
  return text;
}

std::optional<std::string_view> beforePad(std::string_view field) {
  const auto pos = field.find(kPad);
  if (pos == std::string_view::npos) return std::nullopt;
  return field.substr(0, pos);
}

char optionLetter(MessageOptions options) {
  int bits = 0;
  if (options.acknowledge) bits |= kAcknowledgeBit;
  if (options.callBack) bits |= kCallBackBit;
  if (options.ring) bits |= kRingBit;
  return static_cast<char>(kFirstOptionLetter + bits);
}

std::optional<MessageOptions> optionsOfLetter(char letter) {
  const int bits = static_cast<unsigned char>(letter) - kFirstOptionLetter;
  if (bits < 0 || bits > kAllOptionBits) return std::nullopt;
  return MessageOptions{(bits & kAcknowledgeBit) != 0, (bits & kCallBackBit) != 0,
                        (bits & kRingBit) != 0};
}

SemicolonSplit splitProjectRecord(std::string_view body) {
  if (body.size() <= 1) return {};
  const auto semicolon = body.find(';');
  if (semicolon == std::string_view::npos) return {{}, body};
  return {trimmedBlanks(body.substr(0, semicolon)), body.substr(semicolon + 1)};
}

SemicolonSplit splitFlagAssignment(std::string_view entry) {
  const auto semicolon = entry.find(';');
  if (semicolon == std::string_view::npos) return {entry, {}};
  return {entry.substr(0, semicolon), entry.substr(semicolon + 1)};
}

std::string_view takeUmlautCell(std::string_view& rest) {
  const auto end = rest.find(';');
  const std::string_view cell = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
  return cell;
}

}  // namespace quillon::wire
