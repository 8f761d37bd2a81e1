#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "file_bytes.h"
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

}  // namespace
}  // namespace quillon
