#include <chrono>
#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "file_bytes.h"
#include "project/flag_assignment.h"
#include "project/number_text.h"
#include "project/project_file.h"
#include "scripted_dialog.h"
#include "texts_in.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::ScriptedDialog;
using testing::textsIn;
using testing::writeBytes;

// A fresh directory per test, removed afterwards.
class ProjectFileIoTest : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directories(m_dir); }
  void TearDown() override { fs::remove_all(m_dir); }

  [[nodiscard]] auto fileCount() const {
    return std::distance(fs::directory_iterator(m_dir), fs::directory_iterator());
  }

  const fs::path m_dir =
      fs::temp_directory_path() /
      ("quillon-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
       "-" + std::to_string(std::random_device{}()));
};

TEST_F(ProjectFileIoTest, FilesUsingEveryRecordKindRoundTripByteForByte) {
  struct Case {
    fs::path source;
    ModuleLimits limits;
    ProgramVersion version;
  };
  const Case cases[] = {
      {fs::path(QUILLON_TEST_DATA_DIR) / "every_record.EAY",
       {.lastMessageIndex = 2, .phoneLimit = 3},
       {3, 6, 7}},
      {fs::path(QUILLON_EXAMPLES_DIR) / "Pumpstation.EAY", {}, {1, 0, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.source);
    Project project(c.limits);
    ScriptedDialog dialog;
    ASSERT_EQ(ProjectFileLoad(c.source, project, textsIn(kEnglish), dialog), LoadResult{});
    const fs::path target = m_dir / c.source.filename();
    writeBytes(target, std::string(100000, 'x'));  // longer old content is replaced as a whole
    ASSERT_TRUE(ProjectFileSave(target, project, dialog, c.version).ok);
    EXPECT_EQ(readBytes(target), readBytes(c.source));
    EXPECT_TRUE(dialog.boxes.empty());
  }
  EXPECT_EQ(fileCount(), 3);  // the two files and the history with the two they replaced
  for (const auto& entry : fs::directory_iterator(m_dir / ".quillon-history")) {
    EXPECT_EQ(readBytes(entry.path()), std::string(100000, 'x'));
  }
}

TEST_F(ProjectFileIoTest, MissingOrUnreadableFileLeavesProjectUntouched) {
  Project project;
  project.messages.setCell(1, 4, "bleibt");
  project.changed = true;
  const Project before = project;
  ScriptedDialog dialog;
  bool asked = false;
  const LoadResult missing = ProjectFileLoad(m_dir / "fehlt.EAY", project, textsIn(kEnglish),
                                             dialog, [&asked] { asked = true; });
  EXPECT_EQ(static_cast<int>(missing.status), 9);
  const LoadResult unreadable = ProjectFileLoad(m_dir, project, textsIn(kGerman), dialog);
  // The system's own text, which differs between systems.
#ifdef _WIN32
  const std::string folderText = "Permission denied";
#else
  const std::string folderText = "Is a directory";
#endif
  EXPECT_EQ(unreadable, (LoadResult{LoadStatus::ReadError, folderText}));
  (void)ProjectFileLoad(m_dir / "fehlt.EAY", project, textsIn(kGerman), dialog);
  EXPECT_EQ(project, before);
  EXPECT_FALSE(asked);
  EXPECT_EQ(
      dialog.boxes,
      (std::vector<Box>{
          {"Kestrix", "File not found", BoxIcon::None, BoxButtons::Ok, BoxAnswer::Ok},
          {"Kestrix", folderText, BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok},
          {"Kestrix", "Datei nicht gefunden", BoxIcon::None, BoxButtons::Ok, BoxAnswer::Ok}}));
}

TEST_F(ProjectFileIoTest, SavePromptOnlyForChangedProjectAndBeforeClearing) {
  const fs::path path = m_dir / "a.EAY";
  writeBytes(path, "M@neu;\r\n");
  for (const bool changed : {true, false}) {
    Project project;
    project.messages.setCell(1, 4, "alt");
    project.changed = changed;
    ScriptedDialog dialog;
    std::string seen = "not asked";
    ASSERT_EQ(ProjectFileLoad(path, project, textsIn(kEnglish), dialog,
                              [&] { seen = project.messages.cell(1, 4); }),
              LoadResult{});
    EXPECT_EQ(seen, changed ? "alt" : "not asked");
    EXPECT_EQ(project.messages.cell(1, 4), "neu");
    EXPECT_FALSE(project.changed);
  }
}

TEST_F(ProjectFileIoTest, FailedSaveKeepsTargetAndLeavesNoTemporary) {
  // A directory in the target's place is refused before anything is written.
  const fs::path target = m_dir / "Anlage.EAY";
  fs::create_directory(target);
  writeBytes(target / "inside", "kept");
  Project project;
  ScriptedDialog dialog;
  EXPECT_FALSE(ProjectFileSave(target, project, dialog).ok);
  EXPECT_EQ(fileCount(), 1);  // the directory in the way, and no temporary
  EXPECT_EQ(readBytes(target / "inside"), "kept");
  EXPECT_EQ(ProjectFileSave(m_dir / "nicht" / "da.EAY", project, dialog),
            (WriteResult{false, "No such file or directory"}));
}

// Loads `bytes` through a real file within a second and checks what any load must leave.
Project loadFast(const fs::path& path, const std::string& bytes, ScriptedDialog& dialog) {
  writeBytes(path, bytes);
  Project project;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(ProjectFileLoad(path, project, textsIn(kEnglish), dialog).status, LoadStatus::Ok);
  const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
  EXPECT_LT(elapsed.count(), 1000);
  ::testing::Test::RecordProperty("load_ms_" + path.stem().string(),
                                  static_cast<int>(elapsed.count()));
  EXPECT_EQ(project.messages.rows(), 100);
  EXPECT_EQ(project.filters.rows(), 10);
  EXPECT_EQ(project.phones.rows(), 60);
  EXPECT_TRUE(project.pin == "____" ||
              (project.pin.size() >= 4 && project.pin.size() <= 5 &&
               project.pin.find_first_not_of("0123456789") == std::string::npos))
      << project.pin;
  for (int flag = 1; flag <= 32; ++flag) {
    EXPECT_EQ(LabelColour(project, flag - 1) == FlagColour::Yellow,
              NumericValue(project.flags.entries[static_cast<std::size_t>(flag)]) > 0);
  }
  EXPECT_FALSE(project.changed);
  return project;
}

TEST_F(ProjectFileIoTest, HugeFilesLoadFast) {
  std::mt19937 random(20240611);
  std::string bytes(10U << 20, '\0');
  for (char& c : bytes) c = static_cast<char>(random() & 0xFF);
  ScriptedDialog dialog;
  (void)loadFast(m_dir / "random.EAY", bytes, dialog);

  const std::string line(1U << 20, 'q');  // not a hexadecimal digit
  dialog.boxes.clear();
  const Project project = loadFast(
      m_dir / "long.EAY",
      "M@" + line + ";" + line + "\r\nF01" + line + "\r\nT" + line + "\r\nT" + line + ";" + line +
          "\r\nL1;;" + line + "\r\nE 3;" + line + "\r\nE" + std::string(1U << 20, '9') + ";1;1\r\n",
      dialog);
  EXPECT_EQ(project.messages.cell(1, 4).size(), line.size());
  EXPECT_EQ(project.phones.cell(1, 2).size(), line.size());
  EXPECT_EQ(project.pin, "0000");
  EXPECT_EQ(dialog.texts(), std::vector<std::string>{"Message nr. 0 > 160"});
}

}  // namespace
}  // namespace quillon
