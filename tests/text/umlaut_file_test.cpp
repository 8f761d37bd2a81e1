#include "text/umlaut_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "scripted_dialog.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

class UmlautFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_dir = fs::path(::testing::TempDir()) / (std::string("quillon_umlaut_") + info->name());
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
  }
  void TearDown() override { fs::remove_all(m_dir); }

  fs::path file() const { return m_dir / "Umlaut.ini"; }

  void write(const std::string& bytes) const {
    std::ofstream out(file(), std::ios::binary);
    out << bytes;
  }
  std::string read() const {
    std::string bytes(fs::file_size(file()), '\0');
    std::ifstream in(file(), std::ios::binary);
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
  }

  fs::path m_dir;
};

const Box kUninterpretable{"Kestrix", "String nicht interpretierbar", BoxIcon::Exclamation,
                           BoxButtons::Ok, BoxAnswer::Ok};

TEST_F(UmlautFileTest, Loading) {
  struct Case {
    const char* name;
    std::string bytes;
    UmlautRows rows;
    int boxes;
  };
  const Case cases[] = {
      {"twoRows", "U\xE4;{;\xF6;~\r\n", {{"\xE4", "{"}, {"\xF6", "~"}}, 0},
      {"lineFeedOnly", "U\xE4;{;\xF6;~\n", {{"\xE4", "{"}, {"\xF6", "~"}}, 0},
      {"noLineEnd", "U\xDF;\x1E", {{"\xDF", "\x1E"}}, 0},
      {"onlyTheTag", "U\r\n", {}, 0},
      {"emptyFile", "", {}, 0},
      {"lineWithoutTagDropped", "X\xE4;{\r\nU\xF6;|\r\n", {{"\xF6", "|"}}, 1},
      {"lowerCaseTagIsNoTag", "u\xE4;{\r\n", {}, 1},
      {"emptyLineReported", "U\xE4;{\r\n\r\nU\xFC;~\r\n", {{"\xE4", "{"}, {"\xFC", "~"}}, 1},
      {"rowsOfSeveralLinesAdd", "U\xE4;{\r\nU\xFC;~\r\n", {{"\xE4", "{"}, {"\xFC", "~"}}, 0},
      {"characterWithoutSubstituteDropped", "U\xE4;{;\xF6", {{"\xE4", "{"}}, 0},
      {"characterWithEmptySubstituteDropped", "U\xE4;{;\xF6;", {{"\xE4", "{"}}, 0},
      {"emptySubstituteBetweenRowsKept", "Ux;;y;z", {{"x", ""}, {"y", "z"}}, 0},
      {"semicolonAsSubstitute", "Ux;;;y;z", {{"x", ";"}, {"y", "z"}}, 0},
      {"semicolonAsLastSubstitute", "Ux;;", {{"x", ";"}}, 0},
      {"longerCells", "Uae;{;oe;|", {{"ae", "{"}, {"oe", "|"}}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    write(c.bytes);
    testing::ScriptedDialog dialog;
    UmlautFile loaded = loadUmlautFile(file(), dialog);
    EXPECT_EQ(loaded.status, UmlautFileStatus::Ok);
    EXPECT_EQ(loaded.rows, c.rows);
    ASSERT_EQ(dialog.boxes.size(), static_cast<std::size_t>(c.boxes));
    for (const auto& box : dialog.boxes) EXPECT_EQ(box, kUninterpretable);
  }
}

TEST_F(UmlautFileTest, MissingFileIsAStatusNotABox) {
  testing::ScriptedDialog dialog;
  UmlautFile loaded = loadUmlautFile(m_dir / "absent" / "Umlaut.ini", dialog);
  EXPECT_EQ(loaded.status, UmlautFileStatus::CannotOpen);
  EXPECT_TRUE(loaded.rows.empty());
  EXPECT_TRUE(dialog.boxes.empty());
}

TEST_F(UmlautFileTest, Saving) {
  struct Case {
    const char* name;
    UmlautRows rows;
    std::string bytes;
  };
  const Case cases[] = {
      {"noRows", {}, "U\r\n"},
      {"oneRow", {{"\xDF", "\x1E"}}, "U\xDF;\x1E\r\n"},
      {"twoRows", {{"\xE4", "{"}, {"\xF6", "~"}}, "U\xE4;{;\xF6;~\r\n"},
      {"semicolonSubstitute", {{"x", ";"}, {"y", "z"}}, "Ux;;;y;z\r\n"},
      {"emptyRowWritten", {{"", ""}}, "U;\r\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    write("U" + std::string(200, 'x') + "\r\n");  // older, longer content is replaced
    EXPECT_EQ(saveUmlautFile(file(), c.rows), UmlautFileStatus::Ok);
    EXPECT_EQ(read(), c.bytes);
  }
}

TEST_F(UmlautFileTest, SavedRowsLoadBack) {
  const UmlautRows rows = {{"\xE4", "{"}, {"x", ";"}, {"\xDC", "^"}, {"\xDF", "\x1E"}};
  ASSERT_EQ(saveUmlautFile(file(), rows), UmlautFileStatus::Ok);
  testing::ScriptedDialog dialog;
  EXPECT_EQ(loadUmlautFile(file(), dialog).rows, rows);
  EXPECT_TRUE(dialog.boxes.empty());
}

TEST_F(UmlautFileTest, SavingIntoAMissingFolderFails) {
  EXPECT_EQ(saveUmlautFile(m_dir / "absent" / "Umlaut.ini", {{"\xE4", "{"}}),
            UmlautFileStatus::CannotOpen);
}

TEST(UmlautPath, NamedUmlautIni) {
  fs::path path = defaultUmlautPath();
  EXPECT_EQ(path.filename(), "Umlaut.ini");
#ifndef _WIN32
  EXPECT_EQ(path.parent_path(), fs::temp_directory_path());
#endif
}

TEST(SubstituteFromDigits, ThreeDigitsAreOneCode) {
  struct Case {
    const char* name;
    const char* typed;
    std::optional<char> code;
  };
  const Case cases[] = {
      {"cedilla", "231", '\xE7'},
      {"sharpSInGsm", "030", '\x1E'},
      {"atSignInGsm", "000", '\0'},
      {"highest", "255", '\xFF'},
      {"aboveAByte", "256", std::nullopt},
      {"twoDigits", "23", std::nullopt},
      {"fourDigits", "2311", std::nullopt},
      {"letterAmongDigits", "2a1", std::nullopt},
      {"blankAmongDigits", "2 1", std::nullopt},
      {"sign", "-12", std::nullopt},
      {"nothingTyped", "", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(substituteFromDigits(c.typed), c.code);
  }
}

}  // namespace
}  // namespace quillon
