#include "text/gsm_preview.h"

#include <array>
#include <string>

#include "text/code_page.h"
#include "text/substitution.h"

namespace quillon {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr unsigned char kFirstUnsendable = 0x80;

// GSM 03.38 default alphabet; only the codes that differ from ASCII are listed.
struct Difference {
  unsigned char code;
  char32_t shown;
};
constexpr std::array<Difference, 43> kDifferences = {{
    {0x00, U'@'},      {0x01, U'\u00A3'}, {0x02, U'$'},      {0x03, U'\u00A5'}, {0x04, U'\u00E8'},
    {0x05, U'\u00E9'}, {0x06, U'\u00F9'}, {0x07, U'\u00EC'}, {0x08, U'\u00F2'}, {0x09, U'\u00C7'},
    {0x0B, U'\u00D8'}, {0x0C, U'\u00F8'}, {0x0E, U'\u00C5'}, {0x0F, U'\u00E5'}, {0x10, U'\u0394'},
    {0x11, U'_'},      {0x12, U'\u03A6'}, {0x13, U'\u0393'}, {0x14, U'\u039B'}, {0x15, U'\u03A9'},
    {0x16, U'\u03A0'}, {0x17, U'\u03A8'}, {0x18, U'\u03A3'}, {0x19, U'\u0398'}, {0x1A, U'\u039E'},
    {0x1B, U' '},      {0x1C, U'\u00C6'}, {0x1D, U'\u00E6'}, {0x1E, U'\u00DF'}, {0x1F, U'\u00C9'},
    {0x24, U'\u00A4'}, {0x40, U'\u00A1'}, {0x5B, U'\u00C4'}, {0x5C, U'\u00D6'}, {0x5D, U'\u00D1'},
    {0x5E, U'\u00DC'}, {0x5F, U'\u00A7'}, {0x60, U'\u00BF'}, {0x7B, U'\u00E4'}, {0x7C, U'\u00F6'},
    {0x7D, U'\u00F1'}, {0x7E, U'\u00FC'}, {0x7F, U'\u00E0'},
}};

}  // namespace

char32_t gsmDefaultAlphabet(unsigned char code) {
  if (code >= kFirstUnsendable) return kReplacement;
  for (const auto& d : kDifferences) {
    if (d.code == code) return d.shown;
  }
  return code;  // LF, CR and the rest of printable ASCII are the same in both
}

std::vector<GsmPreviewChar> gsmPreview(std::string_view cp1252Text) {
  std::string sent = toGsm(std::string(cp1252Text));
  std::vector<GsmPreviewChar> preview;
  preview.reserve(sent.size());
  for (std::size_t i = 0; i < sent.size(); ++i) {
    char32_t typed = cp1252ToUnicode(static_cast<unsigned char>(cp1252Text[i]));
    auto code = static_cast<unsigned char>(sent[i]);
    if (code >= kFirstUnsendable) {
      preview.push_back({typed, true, false});
      continue;
    }
    char32_t shown = gsmDefaultAlphabet(code);
    preview.push_back({shown, shown != typed, true});
  }
  return preview;
}

}  // namespace quillon
