#include "text/sms_centres.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

TEST(SmsCentres, FiftyFiveEntries) { EXPECT_EQ(smsCentres().size(), 55u); }

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
      {"labelWithoutCountry", 35, "Globe Telecom", "+6391702"},
      {"spellingKept", 48, "Comvig GSM, Sveden", "+46707990001"},
      {"internationalPrefixWithZeros", 55, "Washington PCS, USA     ", "001410258953"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    SmsCentre centre = smsCentreAt(c.row);
    EXPECT_EQ(centre.label, c.label);
    EXPECT_EQ(centre.number, c.number);
    EXPECT_EQ(smsCentres()[static_cast<std::size_t>(c.row - 1)].label, c.label);
  }
}

TEST(SmsCentres, DuplicatesKept) {
  EXPECT_EQ(smsCentreAt(26).label, smsCentreAt(27).label);
  EXPECT_NE(smsCentreAt(26).number, smsCentreAt(27).number);
  EXPECT_EQ(smsCentreAt(41).number, smsCentreAt(42).number);
  EXPECT_NE(smsCentreAt(41).label, smsCentreAt(42).label);
  EXPECT_EQ(smsCentreAt(42).label, smsCentreAt(44).label);
  EXPECT_EQ(smsCentreAt(11).number, smsCentreAt(20).number);
}

TEST(SmsCentres, ClipboardText) {
  struct Case {
    const char* name;
    int row;
    const char* text;
  };
  const Case cases[] = {
      {"labelBlanksKept", 12, "+491710760000;D1, Deutschland    "},
      {"numberBlanksKept", 25, "+35387699989    ;Eircell, Irland?  "},
      {"lastEntry", 55, "001410258953;Washington PCS, USA     "},
      {"headerRow", 0, ";"},
      {"emptySlotAfterTheList", 56, ";"},
      {"lastSlot", 100, ";"},
      {"beyondTheSlots", 101, ";"},
      {"negative", -1, ";"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(smsCentreClipboardText(c.row), c.text);
  }
}

}  // namespace
}  // namespace quillon
