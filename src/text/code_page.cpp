#include "text/code_page.h"

#include <array>
#include <cstddef>

namespace quillon {
namespace {

// 0x80..0x9F; zero marks the five codes that Windows-1252 leaves undefined (kept as C1 controls).
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace

char32_t cp1252ToUnicode(unsigned char byte) {
  if (byte >= 0x80 && byte <= 0x9F) {
    char32_t mapped = kHighControls[static_cast<std::size_t>(byte - 0x80)];
    return mapped != 0 ? mapped : byte;
  }
  return byte;
}

std::optional<unsigned char> unicodeToCp1252(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<unsigned char>(code);
  for (std::size_t i = 0; i < kHighControls.size(); ++i) {
    char32_t mapped = kHighControls[i];
    if (mapped == code || (mapped == 0 && code == 0x80 + i)) {
      return static_cast<unsigned char>(0x80 + i);
    }
  }
  return std::nullopt;
}

std::string cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (char b : bytes) appendUtf8(out, cp1252ToUnicode(static_cast<unsigned char>(b)));
  return out;
}

std::string utf8ToCp1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    auto lead = static_cast<unsigned char>(utf8[i]);
    std::size_t length = lead < 0x80           ? 1
                         : (lead >> 5) == 0x6  ? 2
                         : (lead >> 4) == 0xE  ? 3
                         : (lead >> 3) == 0x1E ? 4
                                               : 0;
    bool valid = length != 0 && i + length <= utf8.size();
    char32_t code = 0;
    if (valid) {
      code = length == 1 ? lead : (lead & (0x7F >> length));
      for (std::size_t k = 1; k < length && valid; ++k) {
        auto cont = static_cast<unsigned char>(utf8[i + k]);
        valid = (cont & 0xC0) == 0x80;
        code = (code << 6) | (cont & 0x3F);
      }
    }
    if (!valid) {
      out += static_cast<char>(lead);  // not UTF-8: the byte stands for itself
      ++i;
      continue;
    }
    auto mapped = unicodeToCp1252(code);
    out += mapped ? static_cast<char>(*mapped) : '?';
    i += length;
  }
  return out;
}

}  // namespace quillon
