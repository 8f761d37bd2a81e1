#include "project/validation.h"

#include <gtest/gtest.h>

#include "scripted_dialog.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;

TEST(CheckPhoneNumberTest, CleansAndWarnsInGermanWhateverTheLanguage) {
  struct Case {
    const char* name;
    std::string typed;
    std::string cleaned;
    std::string trimmedInPlace;
    bool firstCharacterWarning;
    bool filteredWarning;
  };
  const Case cases[] = {
      {"bracketedAreaCodeOneWarning", "+49 (0)171", "+490171", "+49 (0)171", false, true},
      {"letterFirstKeepsSecondCharacter", "ab12", "b12", "ab12", true, false},
      {"twoCharactersGiveEmpty", "  12  ", "", "12", false, false},
      {"blanksTrimmedInCallersText", "  0171 555  ", "0171555", "0171 555", false, true},
      {"bothWarnings", "abc", "b", "abc", true, true},
      {"plusOnlyFirst", "+4+9", "+49", "+4+9", false, true},
      {"cleanNumberUnchanged", "+491715551234", "+491715551234", "+491715551234", false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<Box> boxes;
    if (c.firstCharacterWarning) {
      boxes.push_back({"Kestrix",
                       "1. Zeichen der Telefonnummer nur Ziffer oder '+'.\n" + c.trimmedInPlace,
                       BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok});
    }
    if (c.filteredWarning) {
      boxes.push_back({"Kestrix",
                       "Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\n" + c.trimmedInPlace +
                           " wird gefiltert! ",
                       BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok});
    }
    ScriptedDialog dialog;
    std::string number = c.typed;
    EXPECT_EQ(CheckPhoneNumber(number, dialog), c.cleaned);
    EXPECT_EQ(number, c.trimmedInPlace);
    EXPECT_EQ(dialog.boxes, boxes);
  }
}

TEST(KeyFilterTest, PassesOrSwallows) {
  for (const int key : {int{'0'}, int{'9'}, 8, 127}) EXPECT_EQ(DigitKeyFilter(key), key) << key;
  for (const int key : {'+', 'a', ' ', '-'}) EXPECT_EQ(DigitKeyFilter(key), 0) << key;
  // The phone box also takes "+", and nothing but Backspace and Delete once it holds 20.
  EXPECT_EQ(PhoneKeyFilter('+', 3), '+');
  EXPECT_EQ(PhoneKeyFilter('9', 19), '9');
  EXPECT_EQ(PhoneKeyFilter('5', 20), 0);
  EXPECT_EQ(PhoneKeyFilter('+', 20), 0);
  EXPECT_EQ(PhoneKeyFilter(8, 20), 8);
  EXPECT_EQ(PhoneKeyFilter(127, 20), 127);
  EXPECT_EQ(PhoneKeyFilter('a', 0), 0);
}

TEST(ApplyEntryTest, WritesCellAndMarksChanged) {
  Project project;
  project.messages.setCell(4, 4, "before");
  project.phones.setCell(4, 1, "before");
  ApplyEntryResult(project, TableKind::Messages, 4, 4, EntryResult::fromBoxText("\xFD"));
  EXPECT_EQ(project.messages.cell(4, 4), "before");  // cancelled
  EXPECT_TRUE(project.changed);
  ApplyEntryResult(project, TableKind::Phones, 4, 1, EntryResult::fromBoxText("\xFE"));
  EXPECT_EQ(project.phones.cell(4, 1), "");  // OK on an empty phone box
  ApplyEntryResult(project, TableKind::Filters, 4, 1, EntryResult::fromBoxText("\xFD\xFD"));
  EXPECT_EQ(project.filters.cell(4, 1), "\xFD\xFD");
}

TEST(ToggleMarkTest, FlipsBetweenXAndEmpty) {
  Project project;
  project.messages.setCell(2, 3, "X");
  project.messages.setCell(2, 4, "Pumpe");
  EXPECT_TRUE(ToggleMark(project, 2, 1));
  EXPECT_TRUE(ToggleMark(project, 2, 3));  // any other text becomes "x" too
  EXPECT_EQ(project.messages.cell(2, 1), "x");
  EXPECT_EQ(project.messages.cell(2, 3), "x");
  EXPECT_TRUE(project.changed);
  project.changed = false;
  EXPECT_FALSE(ToggleMark(project, 2, 4));  // the text column is no mark column
  EXPECT_EQ(project.messages.cell(2, 4), "Pumpe");
  EXPECT_FALSE(project.changed);
  EXPECT_TRUE(ToggleMark(project, 2, 1));
  EXPECT_EQ(project.messages.cell(2, 1), "");
}

}  // namespace
}  // namespace quillon
