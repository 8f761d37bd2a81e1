#include "text/gsm_preview.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

TEST(GsmPreview, OneCharacterEach) {
  struct Case {
    const char* name;
    std::string typed;
    GsmPreviewChar expected;
  };
  const Case cases[] = {
      {"letterUnchanged", "a", {U'a', false, true}},
      {"digitUnchanged", "7", {U'7', false, true}},
      {"atSignArrivesAsInvertedExclamation", "@", {U'\u00A1', true, true}},
      {"underscoreArrivesAsSection", "_", {U'\u00A7', true, true}},
      {"dollarArrivesAsCurrencySign", "$", {U'\u00A4', true, true}},
      {"bracketArrivesAsCapitalAUmlaut", "[", {U'\u00C4', true, true}},
      {"braceArrivesAsAUmlaut", "{", {U'\u00E4', true, true}},
      {"backquoteArrivesAsInvertedQuestion", "`", {U'\u00BF', true, true}},
      {"substitutedUmlautArrivesAsTyped", "\xF6", {U'\u00F6', false, true}},
      {"substitutedSharpSArrivesAsTyped", "\xDF", {U'\u00DF', false, true}},
      {"lineFeedUnchanged", "\n", {U'\n', false, true}},
      {"escapeShownAsBlank", "\x1B", {U' ', true, true}},
      {"eAcuteCannotBeSent", "\xE9", {U'\u00E9', true, false}},
      {"euroCannotBeSent", "\x80", {U'\u20AC', true, false}},
      {"undefinedCodeCannotBeSent", "\x81", {U'\u0081', true, false}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    auto preview = gsmPreview(c.typed);
    ASSERT_EQ(preview.size(), 1u);
    EXPECT_EQ(preview[0], c.expected);
  }
}

TEST(GsmPreview, PositionsFollowTheTypedText) {
  auto preview = gsmPreview(
      "Gr\xFC\xDF"
      "e @ 5$");
  const std::vector<GsmPreviewChar> expected = {
      {U'G', false, true},      {U'r', false, true}, {U'\u00FC', false, true},
      {U'\u00DF', false, true}, {U'e', false, true}, {U' ', false, true},
      {U'\u00A1', true, true},  {U' ', false, true}, {U'5', false, true},
      {U'\u00A4', true, true},
  };
  EXPECT_EQ(preview, expected);
  EXPECT_TRUE(gsmPreview("").empty());
}

TEST(GsmDefaultAlphabet, Codes) {
  struct Case {
    unsigned char code;
    char32_t shown;
  };
  const Case cases[] = {
      {0x00, U'@'},      {0x01, U'\u00A3'}, {0x02, U'$'},      {0x09, U'\u00C7'},
      {0x0D, U'\r'},     {0x10, U'\u0394'}, {0x11, U'_'},      {0x1A, U'\u039E'},
      {0x1E, U'\u00DF'}, {0x1F, U'\u00C9'}, {0x20, U' '},      {0x23, U'#'},
      {0x5D, U'\u00D1'}, {0x7D, U'\u00F1'}, {0x7F, U'\u00E0'}, {0x80, U'\uFFFD'},
  };
  for (const auto& c : cases) EXPECT_EQ(gsmDefaultAlphabet(c.code), c.shown) << int{c.code};
}

}  // namespace
}  // namespace quillon
