#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "file_bytes.h"
#include "project/flag_assignment.h"
#include "project/number_text.h"
#include "project/project_file.h"
#include "row_name.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::ScriptedDialog;

using testing::readBytes;
using testing::writeBytes;

UiTexts english() {
  UiTexts texts;
  texts.fill(kEnglish);
  return texts;
}

// A fresh directory per test, removed afterwards.
class ProjectFileIoTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_dir = fs::temp_directory_path() /
            ("quillon-" + std::string(info->name()) + "-" + std::to_string(std::random_device{}()));
    fs::create_directories(m_dir);
  }
  void TearDown() override { fs::remove_all(m_dir); }

  [[nodiscard]] std::vector<std::string> filesInDir() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_dir)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  fs::path m_dir;
};

TEST_F(ProjectFileIoTest, EveryRecordKindRoundTripsByteForByte) {
  const fs::path source = fs::path(QUILLON_TEST_DATA_DIR) / "every_record.EAY";
  Project project({.lastMessageIndex = 2, .phoneLimit = 3});
  ScriptedDialog dialog;
  ASSERT_EQ(ProjectFileLoad(source, project, english(), dialog), LoadResult{});
  EXPECT_TRUE(dialog.boxes.empty());

  EXPECT_EQ(project.messages.cell(1, 4), "Pumpe 1 St\xF6rung");
  EXPECT_EQ(project.messages.cell(3, 3), "x");
  EXPECT_EQ(project.ack, (AckRequest{"*T#", "Vielen Dank ??? xxx angekommen"}));
  EXPECT_EQ(project.filters.cell(2, 2), "Zustand abfragen");
  EXPECT_EQ(project.smsCentre, "+491710760000");
  EXPECT_EQ(project.phones.cell(3, 1), "0171555");
  EXPECT_EQ(project.pin, "1234");
  EXPECT_EQ(project.station,
            "Pumpwerk S\xFC"
            "d");
  EXPECT_EQ(project.flags.entries[8], "-2;-1");
  EXPECT_TRUE(project.flags.used[2]);

  const fs::path target = m_dir / "copy.EAY";
  ASSERT_TRUE(ProjectFileSave(target, project, dialog, {3, 6, 7}).ok);
  EXPECT_EQ(readBytes(target), readBytes(source));
  EXPECT_EQ(filesInDir(), std::vector<std::string>{"copy.EAY"});
}

TEST_F(ProjectFileIoTest, ExampleProjectRoundTripsByteForByte) {
  const fs::path source = fs::path(QUILLON_EXAMPLES_DIR) / "Pumpstation.EAY";
  Project project;
  ScriptedDialog dialog;
  ASSERT_EQ(ProjectFileLoad(source, project, english(), dialog), LoadResult{});
  EXPECT_TRUE(dialog.boxes.empty());
  EXPECT_EQ(ProjectFileBytes(project, dialog, {1, 0, 0}), readBytes(source));
}

TEST_F(ProjectFileIoTest, MissingFileLeavesProjectUntouched) {
  Project project;
  project.messages.setCell(1, 4, "bleibt");
  project.changed = true;
  const Project before = project;
  ScriptedDialog dialog;
  bool asked = false;
  const LoadResult result =
      ProjectFileLoad(m_dir / "fehlt.EAY", project, english(), dialog, [&asked] { asked = true; });
  EXPECT_EQ(result.status, LoadStatus::FileNotFound);
  EXPECT_EQ(static_cast<int>(result.status), 9);
  EXPECT_EQ(project, before);
  EXPECT_FALSE(asked);
  ASSERT_EQ(dialog.boxes.size(), 1U);
  EXPECT_EQ(dialog.boxes[0],
            (Box{"Kestrix", "File not found", BoxIcon::None, BoxButtons::Ok, BoxAnswer::Ok}));
}

TEST_F(ProjectFileIoTest, MissingFileInGerman) {
  Project project;
  UiTexts texts;
  texts.fill(kGerman);
  ScriptedDialog dialog;
  EXPECT_EQ(ProjectFileLoad(m_dir / "fehlt.EAY", project, texts, dialog).status,
            LoadStatus::FileNotFound);
  EXPECT_EQ(dialog.texts(), std::vector<std::string>{"Datei nicht gefunden"});
}

struct PromptCase {
  const char* name;
  bool changed;
  bool asked;
};

class SavePromptBeforeLoadTest : public ProjectFileIoTest,
                                 public ::testing::WithParamInterface<PromptCase> {};

TEST_P(SavePromptBeforeLoadTest, AskedOnlyForChangedProject) {
  const fs::path path = m_dir / "a.EAY";
  writeBytes(path, "M@neu;\r\n");
  Project project;
  project.changed = GetParam().changed;
  ScriptedDialog dialog;
  bool asked = false;
  // The prompt runs before the project is cleared, so it still sees the old data.
  std::string seen;
  ASSERT_EQ(ProjectFileLoad(path, project, english(), dialog,
                            [&] {
                              asked = true;
                              seen = project.messages.cell(1, 4);
                            }),
            LoadResult{});
  EXPECT_EQ(asked, GetParam().asked);
  EXPECT_EQ(seen, "");
  EXPECT_EQ(project.messages.cell(1, 4), "neu");
  EXPECT_FALSE(project.changed);
}

INSTANTIATE_TEST_SUITE_P(Changed, SavePromptBeforeLoadTest,
                         ::testing::Values(PromptCase{"changedAsks", true, true},
                                           PromptCase{"unchangedDoesNotAsk", false, false}),
                         testing::RowName{});

TEST_F(ProjectFileIoTest, UnreadableFileLeavesProjectUntouched) {
  Project project;
  project.station = "bleibt";
  const Project before = project;
  ScriptedDialog dialog;
  const LoadResult result = ProjectFileLoad(m_dir, project, english(), dialog);
  EXPECT_EQ(result.status, LoadStatus::ReadError);
  EXPECT_EQ(result.error, "Is a directory");
  EXPECT_EQ(project, before);
  EXPECT_EQ(dialog.texts(), std::vector<std::string>{"Is a directory"});
}

TEST_F(ProjectFileIoTest, SaveIntoMissingDirectoryFailsWithSystemText) {
  Project project;
  ScriptedDialog dialog;
  const WriteResult result = ProjectFileSave(m_dir / "nicht" / "da.EAY", project, dialog);
  EXPECT_EQ(result, (WriteResult{false, "No such file or directory"}));
  EXPECT_TRUE(filesInDir().empty());
}

TEST_F(ProjectFileIoTest, FailedSaveKeepsTargetAndLeavesNoTemporary) {
  // A directory in the target's place makes the final rename fail after the bytes were written.
  const fs::path target = m_dir / "Anlage.EAY";
  fs::create_directory(target);
  writeBytes(target / "inside", "kept");
  Project project;
  ScriptedDialog dialog;
  const WriteResult result = ProjectFileSave(target, project, dialog);
  EXPECT_FALSE(result.ok);
  EXPECT_FALSE(result.error.empty());
  EXPECT_EQ(filesInDir(), std::vector<std::string>{"Anlage.EAY"});
  EXPECT_EQ(readBytes(target / "inside"), "kept");
}

TEST_F(ProjectFileIoTest, SaveReplacesOldContentCompletely) {
  const fs::path target = m_dir / "Anlage.EAY";
  writeBytes(target, std::string(100000, 'x'));
  Project project({.lastMessageIndex = 0, .phoneLimit = 0});
  ScriptedDialog dialog;
  ASSERT_TRUE(ProjectFileSave(target, project, dialog, {2, 0, 1}).ok);
  const std::string pads(20, '\xB6');
  EXPECT_EQ(readBytes(target),
            "M@;\r\nMQ;\r\nF01;\r\nF02;\r\nF03;\r\nF04;\r\nF05;\r\nF06;\r\nF07;\r\nF08;\r\n"
            "F09;\r\nF10;\r\nT" +
                pads + ";SMSC\r\nP" + pads + "\r\nL1;;0000;\r\nV2.0.1\r\n");
  EXPECT_EQ(filesInDir(), std::vector<std::string>{"Anlage.EAY"});
}

// Invariants that any load must leave, whatever the bytes were.
void expectConsistent(const Project& project) {
  EXPECT_EQ(project.messages.rows(), 100);
  EXPECT_EQ(project.messages.columns(), 5);
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
}

TEST_F(ProjectFileIoTest, TenMegabytesOfRandomBytesLoadFast) {
  std::mt19937 random(20240611);
  std::string bytes(10U << 20, '\0');
  for (char& c : bytes) c = static_cast<char>(random() & 0xFF);
  const fs::path path = m_dir / "random.EAY";
  writeBytes(path, bytes);

  Project project;
  ScriptedDialog dialog;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(ProjectFileLoad(path, project, english(), dialog).status, LoadStatus::Ok);
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_LT(elapsed, std::chrono::milliseconds(1000));
  ::testing::Test::RecordProperty(
      "load_ms",
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count()));
  expectConsistent(project);
}

TEST_F(ProjectFileIoTest, MegabyteLinesLoadFast) {
  const std::string line(1U << 20, 'q');  // not a hexadecimal digit
  const std::string bytes = "M@" + line + ";" + line + "\r\nF01" + line + "\r\nT" + line + "\r\nT" +
                            line + ";" + line + "\r\nL1;;" + line + "\r\nE 3;" + line + "\r\nE" +
                            std::string(1U << 20, '9') + ";1;1\r\n";
  const fs::path path = m_dir / "long.EAY";
  writeBytes(path, bytes);

  Project project;
  ScriptedDialog dialog;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(ProjectFileLoad(path, project, english(), dialog).status, LoadStatus::Ok);
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_LT(elapsed, std::chrono::milliseconds(1000));
  ::testing::Test::RecordProperty(
      "load_ms",
      static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count()));
  expectConsistent(project);
  EXPECT_EQ(project.messages.cell(1, 4).size(), line.size());
  EXPECT_EQ(project.phones.cell(1, 2).size(), line.size());
  EXPECT_EQ(project.pin, "0000");
  EXPECT_EQ(dialog.texts(), std::vector<std::string>{"Message nr. 0 > 160"});
}

}  // namespace
}  // namespace quillon
