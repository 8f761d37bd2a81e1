#include "text/substitution.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

// The seven letters as the PC holds them and the GSM codes sent in their place.
struct Pair {
  const char* name;
  char pc;
  char gsm;
};
constexpr Pair kPairs[] = {
    {"aUmlaut", '\xE4', '\x7B'},        {"oUmlaut", '\xF6', '\x7C'},
    {"uUmlaut", '\xFC', '\x7E'},        {"capitalAUmlaut", '\xC4', '\x5B'},
    {"capitalOUmlaut", '\xD6', '\x5C'}, {"capitalUUmlaut", '\xDC', '\x5E'},
    {"sharpS", '\xDF', '\x1E'},
};

TEST(Substitution, EachOfTheSevenBothWays) {
  for (const auto& p : kPairs) {
    SCOPED_TRACE(p.name);
    EXPECT_EQ(toGsm(std::string(1, p.pc)), std::string(1, p.gsm));
    EXPECT_EQ(toPc(std::string(1, p.gsm)), std::string(1, p.pc));
  }
}

TEST(Substitution, Texts) {
  struct Case {
    const char* name;
    std::string pc;
    std::string gsm;
  };
  const Case cases[] = {
      {"greetingWord",
       "Gr\xFC\xDF"
       "e",
       "Gr~\x1E"
       "e"},
      {"allSevenInARow", "\xE4\xF6\xFC\xC4\xD6\xDC\xDF", "{|~[\\^\x1E"},
      {"umlautsBetweenPlainLetters", "M\xFCller \xC4rger", "M~ller [rger"},
      {"empty", "", ""},
      {"embeddedNulKept", std::string("a\0\xE4", 3), std::string("a\0{", 3)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(toGsm(c.pc), c.gsm);
    EXPECT_EQ(toPc(c.gsm), c.pc);
  }
}

TEST(Substitution, BracesTypedOnThePcComeBackAsUmlaut) {
  EXPECT_EQ(toGsm("{x}"), "{x}");
  EXPECT_EQ(toPc(toGsm("{x}")), "\xE4x}");
}

TEST(Substitution, NoOtherByteIsTouched) {
  const std::string pcLetters = "\xE4\xF6\xFC\xC4\xD6\xDC\xDF";
  const std::string gsmCodes = "{|~[\\^\x1E";
  for (int code = 0; code < 256; ++code) {
    const std::string one(1, static_cast<char>(code));
    if (pcLetters.find(one) == std::string::npos) {
      EXPECT_EQ(toGsm(one), one) << code;
    }
    if (gsmCodes.find(one) == std::string::npos) {
      EXPECT_EQ(toPc(one), one) << code;
    }
  }
}

}  // namespace
}  // namespace quillon
