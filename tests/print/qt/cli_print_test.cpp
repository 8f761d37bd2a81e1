// `quillon-cli print` end to end: a project saved to a real file, loaded and listed by the CLI.

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <regex>
#include <sstream>

#include "cli/cli.h"
#include "project/project_file.h"
#include "scripted_dialog.h"

namespace quillon {
namespace {

struct CliRun {
  int code = 0;
  std::string out;
  std::string err;
};

CliRun run(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int code = cli::RunCli(arguments, out, err);
  return {code, out.str(), err.str()};
}

std::string readFile(const std::string& path) {
  QFile file(QString::fromStdString(path));
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

class CliPrintTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Project project;
    project.station =
        "Br\xFC"
        "cke";
    project.smsCentre = "+491722270333";
    project.filters.setCell(1, 1, "AUS");
    project.messages.setCell(2, 1, "x");
    project.messages.setCell(2, 3, "x");
    project.messages.setCell(2, 4, "Tor offen");
    project.phones.setCell(1, 1, "+491701234567");
    project.phones.setCell(1, 2, "Wache");
    testing::ScriptedDialog boxes;
    ASSERT_TRUE(ProjectFileSave(path("BRUECKE.EAY"), project, boxes).ok);
  }
  [[nodiscard]] std::string path(const char* name) const {
    return m_dir.filePath(QString::fromLatin1(name)).toStdString();
  }

  QTemporaryDir m_dir;
};

TEST_F(CliPrintTest, ListsASavedProjectInUtf8WithTodaysDate) {
  const CliRun result = run({"print", path("BRUECKE.EAY"), "--memo",
                             "gepr\xC3\xBC"
                             "ft"});
  ASSERT_EQ(result.code, 0) << result.err;
  std::string listing = result.out;
  const std::regex dateLine("\nDatum: [0-3][0-9]\\.[01][0-9]\\.20[0-9][0-9]\n");
  ASSERT_TRUE(std::regex_search(listing, dateLine)) << listing;
  listing = std::regex_replace(listing, dateLine, "\nDatum: TODAY\n");
  const std::string expected =
      "Project: BRUECKE.EAY\n"
      "Station: Br\xC3\xBC"
      "cke\n"
      "Datum: TODAY\n"
      "Memo: gepr\xC3\xBC"
      "ft\n"
      "\n"
      "Filter texts\n"
      "------------\n"
      "Filter 1\n"
      "AUS\n"
      "\n"
      "Messages\n"
      "--------\n"
      "Message 2 Acknowledgement Ring\n"
      "Tor offen\n"
      "\n"
      "Phone numbers\n"
      "-------------\n"
      "SMS-Center +491722270333\n"
      "Nr  Number                Name\n"
      " 1  +491701234567         Wache\n"
      "\n"
      "--------------------------------------------------------------------------------\n";
  EXPECT_EQ(listing.substr(0, expected.size()), expected);
  EXPECT_TRUE(result.err.empty()) << result.err;
}

TEST_F(CliPrintTest, OutputFileAndMistakesGiveTheirExitCodes) {
  struct Row {
    const char* name;
    std::vector<std::string> arguments;
    int code;
    std::string err;
  };
  const std::string project = path("BRUECKE.EAY");
  const Row rows[] = {
      {"textFile", {"print", project, "-o", path("l.txt"), "--memo=Wartung"}, 0, ""},
      {"pdfFile", {"print", "-o", path("l.pdf"), project}, 0, ""},
      {"memoWithoutValue", {"print", project, "--memo"}, 64, "option --memo needs a value"},
      {"unknownOption", {"print", project, "--colour"}, 64, "unknown option '--colour'"},
      {"missingProject", {"print", path("NONE.EAY")}, 9, "File not found"},
      {"unwritableOutput",
       {"print", project, "-o", "/nonexistent-quillon-dir/l.txt"},
       73,
       "quillon-cli: cannot write /nonexistent-quillon-dir/l.txt\n"},
  };
  for (const auto& row : rows) {
    const CliRun result = run(row.arguments);
    EXPECT_EQ(result.code, row.code) << row.name << ": " << result.err;
    EXPECT_NE(result.err.find(row.err), std::string::npos) << row.name << ": " << result.err;
    EXPECT_TRUE(result.out.empty()) << row.name;
  }
  EXPECT_NE(readFile(path("l.txt")).find("\nMemo: Wartung\n"), std::string::npos);
  EXPECT_EQ(readFile(path("l.pdf")).substr(0, 5), "%PDF-");
}

}  // namespace
}  // namespace quillon
