#include "text/code_page.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace quillon {
namespace {

TEST(CodePage, BytesAndTheirCharacters) {
  const std::pair<unsigned char, char32_t> cases[] = {
      {0x41, 0x0041}, {0x80, 0x20AC}, {0x81, 0x0081}, {0x8A, 0x0160},
      {0x9D, 0x009D}, {0x9F, 0x0178}, {0xB6, 0x00B6}, {0xFF, 0x00FF},
  };
  for (const auto& [byte, code] : cases) {
    EXPECT_EQ(cp1252ToUnicode(byte), code) << int{byte};
    EXPECT_EQ(unicodeToCp1252(code), std::optional<unsigned char>(byte)) << int{byte};
  }
  // U+0080 is the one C1 control whose byte holds the euro sign instead.
  EXPECT_EQ(unicodeToCp1252(0x0080), std::nullopt);
  EXPECT_EQ(unicodeToCp1252(0x0100), std::nullopt);
}

TEST(CodePage, Utf8BothWays) {
  struct Case {
    const char* name;
    std::string utf8;
    std::string cp1252;
  };
  const Case cases[] = {
      {"euroEllipsisDegree", "\xE2\x82\xAC\xE2\x80\xA6\xC2\xB0", "\x80\x85\xB0"},
      {"omegaHasNoByte", "\xCE\xA9", "?"},
      {"emojiHasNoByte", "a\xF0\x9F\x98\x80", "a?"},
      {"loneLatin1ByteKept", "M\xFCller", "M\xFCller"},
      {"truncatedSequenceKept", "a\xC3", "a\xC3"},
      {"strayContinuationKept", "\x80x", "\x80x"},
  };
  for (const auto& c : cases) EXPECT_EQ(utf8ToCp1252(c.utf8), c.cp1252) << c.name;
  EXPECT_EQ(cp1252ToUtf8("\xFC\x80\x85\xB0\x81"),
            "\xC3\xBC\xE2\x82\xAC\xE2\x80\xA6\xC2\xB0\xC2\x81");
  std::string all;
  for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(utf8ToCp1252(cp1252ToUtf8(all)), all);
}

}  // namespace
}  // namespace quillon
