#include "text/gsm_preview.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

TEST(GsmPreview, WhatThePhoneShowsForEachTypedByte) {
  const std::vector<GsmPreviewChar> expected = {
      {U'a', false, true},       // plain letters arrive as typed
      {U'\u00A1', true, true},   // "@" arrives as an inverted exclamation mark
      {U'\u00A4', true, true},   // "$" as the currency sign
      {U'\u00C4', true, true},   // "[" as a capital A umlaut
      {U'\u00BF', true, true},   // "`" as an inverted question mark
      {U'\u00DF', false, true},  // a substituted letter arrives as typed
      {U' ', true, true},        // escape is shown as a blank
      {U'\u00E9', true, false},  // e acute cannot be sent
      {U'\u20AC', true, false},  // nor can the euro sign
  };
  EXPECT_EQ(gsmPreview("a@$[`\xDF\x1B\xE9\x80"), expected);
  EXPECT_TRUE(gsmPreview("").empty());
  EXPECT_EQ(gsmDefaultAlphabet(0x10), U'\u0394');
  EXPECT_EQ(gsmDefaultAlphabet(0x7F), U'\u00E0');
  EXPECT_EQ(gsmDefaultAlphabet(0x80), U'\uFFFD');
}

}  // namespace
}  // namespace quillon
