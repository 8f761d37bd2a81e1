#include "text/sms_centres.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace quillon {
namespace {

// Every entry against the list in data/sms_centres.txt, written out by hand from the shipped list.
TEST(SmsCentres, EntriesKeptAsShipped) {
  std::ifstream golden(QUILLON_TEXT_DATA_DIR "/sms_centres.txt");
  ASSERT_TRUE(golden);
  int rows = 0;
  for (std::string line; std::getline(golden, line);) {
    if (line.starts_with('#')) continue;
    const auto bar1 = line.find('|'), bar2 = line.find('|', bar1 + 1);
    const int row = std::stoi(line.substr(0, bar1));
    const std::string label = line.substr(bar1 + 1, bar2 - bar1 - 1);
    const std::string number = line.substr(bar2 + 1, line.size() - bar2 - 2);
    SCOPED_TRACE(line);
    EXPECT_EQ(row, ++rows);
    EXPECT_EQ(smsCentreAt(row).label, label);
    EXPECT_EQ(smsCentreAt(row).number, number);
    EXPECT_EQ(smsCentreClipboardText(row), number + ";" + label);
  }
  EXPECT_EQ(rows, 55);
  EXPECT_EQ(smsCentres().size(), 55U);
  for (const int empty : {0, 56}) EXPECT_EQ(smsCentreClipboardText(empty), ";") << empty;
}

}  // namespace
}  // namespace quillon
