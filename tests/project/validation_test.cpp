#include "project/validation.h"

#include <gtest/gtest.h>

#include "row_name.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;

UiTexts textsIn(int language) {
  UiTexts texts;
  texts.fill(language);
  return texts;
}

struct PhoneCase {
  const char* name;
  std::string typed;
  std::string cleaned;
  std::string trimmedInPlace;
  std::vector<std::string> boxes;
};

class CheckPhoneNumberTest : public ::testing::TestWithParam<PhoneCase> {};

TEST_P(CheckPhoneNumberTest, CleansAndWarnsInGerman) {
  const PhoneCase& c = GetParam();
  ScriptedDialog dialog;
  std::string number = c.typed;
  EXPECT_EQ(CheckPhoneNumber(number, dialog), c.cleaned);
  EXPECT_EQ(number, c.trimmedInPlace);
  EXPECT_EQ(dialog.texts(), c.boxes);
  for (const Box& box : dialog.boxes) {
    EXPECT_EQ(box.title, "Kestrix");
    EXPECT_EQ(box.icon, BoxIcon::Exclamation);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, CheckPhoneNumberTest,
    ::testing::Values(
        PhoneCase{"bracketedAreaCode",
                  "+49 (0)171",
                  "+490171",
                  "+49 (0)171",
                  {"Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\n+49 (0)171 wird gefiltert! "}},
        PhoneCase{"letterFirstKeepsSecondCharacter",
                  "ab12",
                  "b12",
                  "ab12",
                  {"1. Zeichen der Telefonnummer nur Ziffer oder '+'.\nab12"}},
        PhoneCase{"twoCharactersGiveEmpty", "12", "", "12", {}},
        PhoneCase{"blanksTrimmedBeforeLengthCheck", "  12  ", "", "12", {}},
        PhoneCase{"blanksTrimmedInCallersText",
                  "  0171 555  ",
                  "0171555",
                  "0171 555",
                  {"Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\n0171 555 wird gefiltert! "}},
        PhoneCase{"oneWarningPerNumber",
                  "0171-55-66",
                  "01715566",
                  "0171-55-66",
                  {"Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\n0171-55-66 wird gefiltert! "}},
        PhoneCase{"bothWarnings",
                  "abc",
                  "b",
                  "abc",
                  {"1. Zeichen der Telefonnummer nur Ziffer oder '+'.\nabc",
                   "Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\nabc wird gefiltert! "}},
        PhoneCase{"plusOnlyFirst",
                  "+4+9",
                  "+49",
                  "+4+9",
                  {"Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\n+4+9 wird gefiltert! "}},
        PhoneCase{"cleanNumberUnchanged", "+491715551234", "+491715551234", "+491715551234", {}},
        PhoneCase{"emptyStaysEmpty", "", "", "", {}}),
    testing::RowName{});

TEST(CheckPhoneNumberTest, WarningsStayGermanInEnglishMode) {
  // The check takes no text table at all: there is nothing to translate.
  ScriptedDialog dialog;
  std::string number = "x123";
  EXPECT_EQ(CheckPhoneNumber(number, dialog), "123");
  EXPECT_EQ(dialog.texts(),
            std::vector<std::string>{"1. Zeichen der Telefonnummer nur Ziffer oder '+'.\nx123"});
}

struct LenCase {
  const char* name;
  std::string text;
  std::int64_t number;
  int language;
  std::vector<std::string> boxes;
};

class DoLenCheckTest : public ::testing::TestWithParam<LenCase> {};

TEST_P(DoLenCheckTest, WarnsWithoutChangingText) {
  const LenCase& c = GetParam();
  ScriptedDialog dialog;
  DoLenCheck(c.text, c.number, textsIn(c.language), dialog);
  EXPECT_EQ(dialog.texts(), c.boxes);
  for (const Box& box : dialog.boxes) EXPECT_EQ(box.title, "Kestrix");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DoLenCheckTest,
    ::testing::Values(
        LenCase{"oneCharacterEnglish", "a", 7, kEnglish, {"Message nr. 7only 1 character"}},
        LenCase{"oneCharacterGerman", "a", 7, kGerman, {"Meldungsnr.: 7nur 1 Zeichen!"}},
        LenCase{"oneCharacterFirstTextSilent", "a", 0, kEnglish, {}},
        LenCase{"twoCharactersSilent", "ab", 7, kEnglish, {}},
        LenCase{"exactly160Silent", std::string(160, 'z'), 3, kEnglish, {}},
        LenCase{"over160English", std::string(161, 'z'), 3, kEnglish, {"Message nr. 3 > 160"}},
        LenCase{"over160FirstTextStillWarns",
                std::string(161, 'z'),
                0,
                kGerman,
                {"Meldungsnr.: 0 > 160"}},
        LenCase{"emptySilent", "", 5, kEnglish, {}}),
    testing::RowName{});

struct KeyCase {
  const char* name;
  int key;
  std::size_t length;  // characters already in the phone box
  int digitFilter;
  int phoneFilter;
};

class KeyFilterTest : public ::testing::TestWithParam<KeyCase> {};

TEST_P(KeyFilterTest, PassesOrSwallows) {
  const KeyCase& c = GetParam();
  EXPECT_EQ(DigitKeyFilter(c.key), c.digitFilter);
  EXPECT_EQ(PhoneKeyFilter(c.key, c.length), c.phoneFilter);
}

INSTANTIATE_TEST_SUITE_P(Keys, KeyFilterTest,
                         ::testing::Values(KeyCase{"digitZero", '0', 0, '0', '0'},
                                           KeyCase{"digitNine", '9', 19, '9', '9'},
                                           KeyCase{"plusOnlyInPhoneBox", '+', 3, 0, '+'},
                                           KeyCase{"letterSwallowed", 'a', 0, 0, 0},
                                           KeyCase{"blankSwallowed", ' ', 0, 0, 0},
                                           KeyCase{"backspacePasses", 8, 20, 8, 8},
                                           KeyCase{"deletePasses", 127, 20, 127, 127},
                                           KeyCase{"digitRefusedWhenFull", '5', 20, '5', 0},
                                           KeyCase{"plusRefusedWhenFull", '+', 20, 0, 0},
                                           KeyCase{"minusSwallowed", '-', 0, 0, 0}),
                         testing::RowName{});

struct EntryCase {
  const char* name;
  TableKind kind;
  int column;
  std::string boxText;
  std::string cellAfter;
};

class ApplyEntryTest : public ::testing::TestWithParam<EntryCase> {};

TEST_P(ApplyEntryTest, WritesCellAndMarksChanged) {
  const EntryCase& c = GetParam();
  Project project;
  TableOf(project, c.kind).setCell(4, c.column, "before");
  ApplyEntryResult(project, c.kind, 4, c.column, EntryResult::fromBoxText(c.boxText));
  EXPECT_EQ(TableOf(project, c.kind).cell(4, c.column), c.cellAfter);
  EXPECT_TRUE(project.changed);
}

INSTANTIATE_TEST_SUITE_P(
    Results, ApplyEntryTest,
    ::testing::Values(EntryCase{"cancelledKeepsMessage", TableKind::Messages, 4, "\xFD", "before"},
                      EntryCase{"cancelledKeepsPhone", TableKind::Phones, 1, "\xFD", "before"},
                      EntryCase{"emptyPhoneConfirmedEmptiesCell", TableKind::Phones, 1, "\xFE", ""},
                      EntryCase{"textReplacesFilter", TableKind::Filters, 1, "Reset", "Reset"},
                      EntryCase{"twoMarkersAreText", TableKind::Phones, 2, "\xFD\xFD", "\xFD\xFD"},
                      EntryCase{"textReplacesComment", TableKind::Messages, 5, "Keller", "Keller"}),
    testing::RowName{});

struct MarkCase {
  const char* name;
  int column;
  std::string before;
  std::string after;
  bool toggled;
};

class ToggleMarkTest : public ::testing::TestWithParam<MarkCase> {};

TEST_P(ToggleMarkTest, FlipsBetweenXAndEmpty) {
  const MarkCase& c = GetParam();
  Project project;
  project.messages.setCell(2, c.column, c.before);
  EXPECT_EQ(ToggleMark(project, 2, c.column), c.toggled);
  EXPECT_EQ(project.messages.cell(2, c.column), c.after);
  EXPECT_EQ(project.changed, c.toggled);
}

INSTANTIATE_TEST_SUITE_P(Marks, ToggleMarkTest,
                         ::testing::Values(MarkCase{"emptyBecomesX", 1, "", "x", true},
                                           MarkCase{"xBecomesEmpty", 2, "x", "", true},
                                           MarkCase{"otherTextBecomesX", 3, "1", "x", true},
                                           MarkCase{"upperCaseXBecomesX", 3, "X", "x", true},
                                           MarkCase{"textColumnUntouched", 4, "Pumpe", "Pumpe",
                                                    false}),
                         testing::RowName{});

}  // namespace
}  // namespace quillon
