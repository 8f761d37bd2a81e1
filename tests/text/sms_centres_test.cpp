#include "text/sms_centres.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

TEST(SmsCentres, EntriesKeptAsShipped) {
  struct Case {
    const char* name;
    int row;
    const char* label;
    const char* number;
  };
  const Case cases[] = {
      {"firstEntry", 1, "Optus Aus, Australia", "+61412025989"},
      {"fourBlanksAfterLabel", 12, "D1, Deutschland    ", "+491710760000"},
      {"blanksAfterLabelAndNumber", 25, "Eircell, Irland?  ", "+35387699989    "},
      {"lowerCaseRepeatOfEntry11", 20, "cellnet, GB      ", "+44802000332"},
      {"spellingKept", 48, "Comvig GSM, Sveden", "+46707990001"},
      {"internationalPrefixWithZeros", 55, "Washington PCS, USA     ", "001410258953"},
      {"emptySlotAfterTheList", 56, "", ""},
      {"rowZeroIsTheHeader", 0, "", ""},
  };
  ASSERT_EQ(smsCentres().size(), 55U);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const SmsCentre centre = smsCentreAt(c.row);
    EXPECT_EQ(centre.label, c.label);
    EXPECT_EQ(centre.number, c.number);
    EXPECT_EQ(smsCentreClipboardText(c.row), std::string(c.number) + ";" + c.label);
  }
  // Duplicates are kept: same label with two numbers, same number under two labels.
  EXPECT_EQ(smsCentreAt(26).label, smsCentreAt(27).label);
  EXPECT_NE(smsCentreAt(26).number, smsCentreAt(27).number);
  EXPECT_EQ(smsCentreAt(41).number, smsCentreAt(42).number);
  EXPECT_EQ(smsCentreAt(11).number, smsCentreAt(20).number);
}

}  // namespace
}  // namespace quillon
