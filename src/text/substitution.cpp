#include "text/substitution.h"

#include <array>

namespace quillon {
namespace {

struct Substitution {
  unsigned char pc;
  unsigned char gsm;
};

constexpr std::array<Substitution, 7> kSubstitutions = {{
    {0xE4, 0x7B},  // ä
    {0xF6, 0x7C},  // ö
    {0xFC, 0x7E},  // ü
    {0xC4, 0x5B},  // Ä
    {0xD6, 0x5C},  // Ö
    {0xDC, 0x5E},  // Ü
    {0xDF, 0x1E},  // ß
}};

}  // namespace

std::string toGsm(std::string text) {
  for (char& c : text) {
    for (const auto& s : kSubstitutions) {
      if (static_cast<unsigned char>(c) == s.pc) {
        c = static_cast<char>(s.gsm);
        break;
      }
    }
  }
  return text;
}

std::string toPc(std::string text) {
  for (char& c : text) {
    for (const auto& s : kSubstitutions) {
      if (static_cast<unsigned char>(c) == s.gsm) {
        c = static_cast<char>(s.pc);
        break;
      }
    }
  }
  return text;
}

}  // namespace quillon
