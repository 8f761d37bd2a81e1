#include <gtest/gtest.h>

#include "project/project_file.h"
#include "row_name.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;

// A small module (3 message rows, 3 phone rows) keeps the expected files short enough to read.
Project smallProject() { return Project({.lastMessageIndex = 2, .phoneLimit = 3}); }

TEST(ProjectFileSaveTest, EveryRecordKindByteExact) {
  Project project = smallProject();
  project.messages.setCell(1, 1, "x");
  project.messages.setCell(1, 4, "Pumpe 1 St\xF6rung");
  project.messages.setCell(1, 5, "Keller");
  project.messages.setCell(3, 2, "x");
  project.messages.setCell(3, 3, "x");
  project.messages.setCell(3, 4, "Niveau; zu hoch");
  project.ack = {" *T# ", " Vielen Dank ??? xxx angekommen "};
  project.filters.setCell(1, 1, "Reset");
  project.filters.setCell(1, 2, "Fernquittung");
  project.filters.setCell(10, 1, "Ende");
  project.smsCentre = "+491710760000";
  project.phones.setCell(1, 1, "+49 (0)171 5551234");
  project.phones.setCell(1, 2, "Meier");
  project.phones.setCell(2, 1, "12");
  project.phones.setCell(2, 2, "zu kurz");
  project.phones.setCell(3, 1, "0049171555123456789012");
  project.pin = "1234";
  project.station =
      "Pumpwerk S\xFC"
      "d";
  project.flags.entries[1] = "07;3";
  project.flags.entries[5] = "-2;-1";
  project.flags.entries[9] = "abc";
  project.flags.entries[12] = "0;5";
  project.flags.entries[32] = "12;60";

  ScriptedDialog dialog;
  const std::string bytes = ProjectFileBytes(project, dialog, {3, 6, 7});

  const std::string expected =
      "MAPumpe 1 St\xF6rung;Keller\r\n"
      "M@;\r\n"
      "MFNiveau; zu hoch;\r\n"
      "MQ*T#;Vielen Dank ??? xxx angekommen\r\n"
      "F01Reset;Fernquittung\r\n"
      "F02;\r\n"
      "F03;\r\n"
      "F04;\r\n"
      "F05;\r\n"
      "F06;\r\n"
      "F07;\r\n"
      "F08;\r\n"
      "F09;\r\n"
      "F10Ende;\r\n"
      "T+491710760000\xB6\xB6\xB6\xB6\xB6\xB6\xB6;SMSC\r\n"
      "T+4901715551234\xB6\xB6\xB6\xB6\xB6\xB6;Meier\r\n"
      "T\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;zu "
      "kurz\r\n"
      "T00491715551234567890;\r\n"
      "P\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\r\n"
      "L1;;04D2;Pumpwerk S\xFC"
      "d\r\n"
      "E 1;07;3\r\n"
      "E 5;-2;-1\r\n"
      "E 32;12;60\r\n"
      "V3.6.7\r\n";
  EXPECT_EQ(bytes, expected);

  // Saving cleans the table too; the cut to 20 characters is the file's alone.
  EXPECT_EQ(project.phones.cell(1, 1), "+4901715551234");
  EXPECT_EQ(project.phones.cell(2, 1), "");
  EXPECT_EQ(project.phones.cell(3, 1), "0049171555123456789012");
  EXPECT_EQ(
      dialog.texts(),
      std::vector<std::string>{
          "Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.\n+49 (0)171 5551234 wird gefiltert! "});
}

TEST(ProjectFileSaveTest, NewProjectWritesEmptyRecords) {
  Project project = smallProject();
  ScriptedDialog dialog;
  const std::string expected =
      "M@;\r\nM@;\r\nM@;\r\n"
      "MQ;\r\n"
      "F01;\r\nF02;\r\nF03;\r\nF04;\r\nF05;\r\nF06;\r\nF07;\r\nF08;\r\nF09;\r\nF10;\r\n"
      "T\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;SMSC\r\n"
      "T\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;\r\n"
      "T\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;\r\n"
      "T\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6;\r\n"
      "P\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\xB6\r\n"
      "L1;;0000;\r\n"
      "V1.0.0\r\n";
  EXPECT_EQ(ProjectFileBytes(project, dialog, {1, 0, 0}), expected);
  EXPECT_TRUE(dialog.boxes.empty());
}

struct MarkCase {
  const char* name;
  const char* ack;
  const char* callBack;
  const char* ring;
  std::string line;
};

class MessageFlagCharacterTest : public ::testing::TestWithParam<MarkCase> {};

TEST_P(MessageFlagCharacterTest, SixtyFourPlusMarkBits) {
  const MarkCase& c = GetParam();
  Project project = smallProject();
  project.messages.setCell(1, 1, c.ack);
  project.messages.setCell(1, 2, c.callBack);
  project.messages.setCell(1, 3, c.ring);
  project.messages.setCell(1, 4, "T");
  ScriptedDialog dialog;
  EXPECT_EQ(ProjectFileBytes(project, dialog).substr(0, c.line.size()), c.line);
}

INSTANTIATE_TEST_SUITE_P(Marks, MessageFlagCharacterTest,
                         ::testing::Values(MarkCase{"none", "", "", "", "M@T;\r\n"},
                                           MarkCase{"ack", "x", "", "", "MAT;\r\n"},
                                           MarkCase{"callBack", "", "x", "", "MBT;\r\n"},
                                           MarkCase{"ackAndCallBack", "x", "x", "", "MCT;\r\n"},
                                           MarkCase{"ring", "", "", "x", "MDT;\r\n"},
                                           MarkCase{"all", "x", "x", "x", "MGT;\r\n"},
                                           MarkCase{"anyTextCounts", "1", "", "?", "MET;\r\n"}),
                         testing::RowName{});

struct PinCase {
  const char* name;
  std::string pin;
  std::string file;
  std::string loaded;  // what the PIN box shows after reading the file back
};

class PinTest : public ::testing::TestWithParam<PinCase> {};

TEST_P(PinTest, FourHexDigitsInFile) {
  const PinCase& c = GetParam();
  EXPECT_EQ(PinToFile(c.pin), c.file);
  EXPECT_EQ(PinFromFile(c.file), c.loaded);
}

INSTANTIATE_TEST_SUITE_P(Pins, PinTest,
                         ::testing::Values(PinCase{"ordinary", "1234", "04D2", "1234"},
                                           PinCase{"leadingZeros", "0042", "002A", "0042"},
                                           PinCase{"noPin", "____", "0000", "0000"},
                                           PinCase{"partlyTyped", "12__", "0000", "0000"},
                                           PinCase{"largestFourDigits", "9999", "270F", "9999"},
                                           PinCase{"fiveDigitsKeepLastFour", "99999", "869F",
                                                   "34463"},
                                           PinCase{"empty", "", "0000", "0000"}),
                         testing::RowName{});

TEST(PinTest, FileFieldReadAsLeadingHexDigits) {
  EXPECT_EQ(PinFromFile("04d2"), "1234");
  EXPECT_EQ(PinFromFile("zz"), "0000");
  EXPECT_EQ(PinFromFile("FFFF"), "65535");
  EXPECT_EQ(PinFromFile(std::string(100000, 'F')), "65535");
}

struct SplitCase {
  const char* name;
  std::string body;
  std::string field;
  std::string remainder;
};

class SplitFieldTest : public ::testing::TestWithParam<SplitCase> {};

TEST_P(SplitFieldTest, FirstSemicolonSplits) {
  const SplitCase& c = GetParam();
  const SplitFieldResult split = SplitField(c.body);
  EXPECT_EQ(split.field, c.field);
  EXPECT_EQ(split.remainder, c.remainder);
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, SplitFieldTest,
    ::testing::Values(SplitCase{"fieldTrimmedRemainderNot", "  Pumpe ; aus ", "Pumpe", " aus "},
                      SplitCase{"onlyFirstSemicolon", "a;b;c", "a", "b;c"},
                      SplitCase{"noSemicolonAllRemainder", "Pumpe", "", "Pumpe"},
                      SplitCase{"oneCharacterGivesNothing", "x", "", ""},
                      SplitCase{"loneSemicolon", ";", "", ""}, SplitCase{"empty", "", "", ""},
                      SplitCase{"emptyField", ";rest", "", "rest"}),
    testing::RowName{});

}  // namespace
}  // namespace quillon
