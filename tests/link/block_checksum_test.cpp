#include <gtest/gtest.h>

#include "link/block_checksum.h"
#include "link/start_identifier.h"

namespace quillon::testing {
namespace {

struct ChecksumRow {
  std::string data;
  std::string digits;
};

TEST(BlockChecksum, XorOfAllCodesAsTwoUpperCaseDigits) {
  for (const auto& [data, digits] :
       {ChecksumRow{"", "00"}, ChecksumRow{"0:", "0A"}, ChecksumRow{"AB", "03"},
        ChecksumRow{"\xFF\x0F", "F0"}, ChecksumRow{"007B090300003E\xFD", "F4"},
        ChecksumRow{std::string(64, 'A'), "00"}}) {
    EXPECT_EQ(BlockChecksum(data), digits) << data;
  }
}

struct IdentifierRow {
  const char* name;
  char letter;
  std::size_t length;
  int digits;
  std::string expected;
};

class StartIdentifier : public ::testing::TestWithParam<IdentifierRow> {};

TEST_P(StartIdentifier, IsTheUpperCaseLetterAndTheLengthInHex) {
  const auto& r = GetParam();
  EXPECT_EQ(MakeStartIdentifier(r.letter, std::string(r.length, 'x'), r.digits), r.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StartIdentifier,
    ::testing::Values(IdentifierRow{"messagesOf40000", 'M', 40000, 4, "M9C40"},
                      IdentifierRow{"lowerCaseLetter", 'p', 39, 4, "P0027"},
                      IdentifierRow{"empty", 'T', 0, 4, "T0000"},
                      IdentifierRow{"threeDigits", 't', 0x1234, 3, "T234"},
                      IdentifierRow{"otherDigitCountMeansFour", 'Y', 0x2A, 7, "Y002A"},
                      IdentifierRow{"cutToTheLastDigits", 'y', 0x11170, 4, "Y1170"}),
    [](const auto& p) { return std::string(p.param.name); });

}  // namespace
}  // namespace quillon::testing
