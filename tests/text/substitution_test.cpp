#include "text/substitution.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

// The seven letters as the PC holds them, and the GSM codes sent in their place, in that order.
const std::string kPcLetters = "\xE4\xF6\xFC\xC4\xD6\xDC\xDF";
const std::string kGsmCodes = "\x7B\x7C\x7E\x5B\x5C\x5E\x1E";

TEST(Substitution, TheSevenLettersBothWaysAndNothingElse) {
  EXPECT_EQ(toGsm(kPcLetters), kGsmCodes);
  EXPECT_EQ(toPc(kGsmCodes), kPcLetters);
  EXPECT_EQ(toGsm("M\xFCller \xC4rger"), "M~ller [rger");
  EXPECT_EQ(toPc(std::string("a\0{", 3)), std::string("a\0\xE4", 3));
  // A brace typed on the PC goes out unchanged but comes back as the umlaut.
  EXPECT_EQ(toPc(toGsm("{x}")), "\xE4x}");
  for (int code = 0; code < 256; ++code) {
    const std::string one(1, static_cast<char>(code));
    if (kPcLetters.find(one) == std::string::npos) {
      EXPECT_EQ(toGsm(one), one) << code;
    }
    if (kGsmCodes.find(one) == std::string::npos) {
      EXPECT_EQ(toPc(one), one) << code;
    }
  }
}

}  // namespace
}  // namespace quillon
