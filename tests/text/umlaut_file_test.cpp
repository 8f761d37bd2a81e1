#include "text/umlaut_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

#include "scripted_dialog.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

// A folder of its own per test, removed afterwards.
class UmlautFileTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directories(m_dir); }
  void TearDown() override { fs::remove_all(m_dir); }
  const fs::path m_dir =
      fs::path(::testing::TempDir()) /
      ("quillon_umlaut_" +
       std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
  const fs::path m_file = m_dir / "Umlaut.ini";
};

TEST_F(UmlautFileTest, Loading) {
  struct Case {
    const char* name;
    std::string bytes;
    UmlautRows rows;
    std::size_t boxes;
  };
  const Case cases[] = {
      {"twoRows", "U\xE4;{;\xF6;~\r\n", {{"\xE4", "{"}, {"\xF6", "~"}}, 0},
      {"lineWithoutTagDropped", "X\xE4;{\r\nU\xF6;|\n", {{"\xF6", "|"}}, 1},
      {"lowerCaseTagIsNoTag", "u\xE4;{\r\n", {}, 1},
      {"emptyLineReportedRowsAdd", "U\xE4;{\r\n\r\nU\xFC;~", {{"\xE4", "{"}, {"\xFC", "~"}}, 1},
      {"characterWithoutSubstituteDropped", "U\xE4;{;\xF6;", {{"\xE4", "{"}}, 0},
      {"emptySubstituteBetweenRowsKept", "Ux;;y;z", {{"x", ""}, {"y", "z"}}, 0},
      {"semicolonAsSubstitute", "Ux;;;y;z", {{"x", ";"}, {"y", "z"}}, 0},
      {"semicolonAsLastSubstitute", "Ux;;", {{"x", ";"}}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::ofstream(m_file, std::ios::binary) << c.bytes;
    testing::ScriptedDialog dialog;
    const UmlautFile loaded = loadUmlautFile(m_file, dialog);
    EXPECT_EQ(loaded.status, UmlautFileStatus::Ok);
    EXPECT_EQ(loaded.rows, c.rows);
    EXPECT_EQ(
        dialog.boxes,
        std::vector<Box>(c.boxes, Box{"Kestrix", "String nicht interpretierbar: " + m_file.string(),
                                      BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok}));
  }
}

TEST_F(UmlautFileTest, ManyBadLinesGiveOneBox) {
  std::string lines;
  for (int i = 0; i < 100000; ++i) lines += "Xunsinn\r\n";
  std::ofstream(m_file, std::ios::binary) << lines << "U\xE4;{\r\n";
  testing::ScriptedDialog dialog;
  EXPECT_EQ(loadUmlautFile(m_file, dialog).rows, (UmlautRows{{"\xE4", "{"}}));
  EXPECT_EQ(dialog.texts(),
            std::vector<std::string>{"String nicht interpretierbar: " + m_file.string()});
}

TEST_F(UmlautFileTest, SavingReplacesTheFileAndLoadsBack) {
  struct Case {
    const char* name;
    UmlautRows rows;
    std::string bytes;
  };
  const Case cases[] = {
      {"noRows", {}, "U\r\n"},
      {"twoRows", {{"\xE4", "{"}, {"\xDF", "\x1E"}}, "U\xE4;{;\xDF;\x1E\r\n"},
      {"semicolonSubstitute", {{"x", ";"}, {"\xDC", "^"}}, "Ux;;;\xDC;^\r\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::ofstream(m_file, std::ios::binary) << "U" << std::string(200, 'x') << "\r\n";
    ASSERT_EQ(saveUmlautFile(m_file, c.rows), UmlautFileStatus::Ok);
    std::ostringstream saved;
    saved << std::ifstream(m_file, std::ios::binary).rdbuf();
    EXPECT_EQ(saved.str(), c.bytes);
    testing::ScriptedDialog dialog;
    EXPECT_EQ(loadUmlautFile(m_file, dialog).rows, c.rows);
  }
}

// A folder of that name is no empty table, nor is a missing folder: the caller says it cannot
// be read or written.
TEST_F(UmlautFileTest, FolderOrMissingFolderIsAStatusNotABox) {
  const fs::path folder = m_dir / "folder" / "Umlaut.ini";
  fs::create_directories(folder);
  for (const fs::path& path : {folder, m_dir / "absent" / "Umlaut.ini"}) {
    SCOPED_TRACE(path);
    testing::ScriptedDialog dialog;
    const UmlautFile loaded = loadUmlautFile(path, dialog);
    EXPECT_EQ(loaded.status, UmlautFileStatus::CannotOpen);
    EXPECT_TRUE(loaded.rows.empty());
    EXPECT_TRUE(dialog.boxes.empty());
    EXPECT_EQ(saveUmlautFile(path, {{"\xE4", "{"}}), UmlautFileStatus::CannotWrite);
  }
  EXPECT_TRUE(fs::is_directory(folder));
  EXPECT_FALSE(fs::exists(m_dir / "absent"));
#ifndef _WIN32
  EXPECT_EQ(umlautPathIn("/home/anna/.config/Kestrix/Kestrix"),
            fs::path("/home/anna/.config/Kestrix/Kestrix/Umlaut.ini"));
#endif
}

TEST(SubstituteFromDigits, ThreeDigitsAreOneCode) {
  EXPECT_EQ(substituteFromDigits("231"), '\xE7');
  EXPECT_EQ(substituteFromDigits("030"), '\x1E');
  EXPECT_EQ(substituteFromDigits("000"), '\0');
  for (const char* typed : {"256", "23", "2311", "-12", "2 1", ""}) {
    EXPECT_EQ(substituteFromDigits(typed), std::nullopt) << typed;
  }
}

}  // namespace
}  // namespace quillon
