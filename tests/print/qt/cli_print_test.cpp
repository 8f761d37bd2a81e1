// `quillon-cli print` end to end: a project saved to a real file, loaded and listed by the CLI.

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <regex>
#include <sstream>

#include "cli/cli.h"

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

class CliPrintTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // Message 2 with the acknowledgement and ring marks, station "Mühle".
    QFile file(m_dir.filePath("MUEHLE.EAY"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("M@;\r\nMETor offen;\r\nL1;;0000;M\xFChle\r\n");
  }
  [[nodiscard]] std::string path(const char* name) const {
    return m_dir.filePath(QString::fromLatin1(name)).toStdString();
  }

  QTemporaryDir m_dir;
};

TEST_F(CliPrintTest, ListsASavedProjectInUtf8WithTodaysDate) {
  const CliRun result = run({"print", path("MUEHLE.EAY"), "--memo", "gr\xC3\xBCn"});
  ASSERT_EQ(result.code, 0) << result.err;
  EXPECT_TRUE(result.err.empty()) << result.err;
  const std::regex date("\nDatum: [0-3][0-9]\\.[01][0-9]\\.20[0-9][0-9]\n");
  ASSERT_TRUE(std::regex_search(result.out, date)) << result.out;
  const std::string listing = std::regex_replace(result.out, date, "\nDatum: TODAY\n");
  const std::string head =
      "Project: MUEHLE.EAY\nStation: M\xC3\xBChle\nDatum: TODAY\nMemo: gr\xC3\xBCn\n\n";
  EXPECT_EQ(listing.substr(0, head.size()), head);
  EXPECT_NE(listing.find("\nMessage 2 Acknowledgement Ring\nTor offen\n"), std::string::npos);
}

TEST_F(CliPrintTest, OutputFilesAndMistakesGiveTheirExitCodes) {
  struct Row {
    const char* name;
    std::vector<std::string> arguments;
    int code;
    std::string err;
  };
  const std::string project = path("MUEHLE.EAY");
  const std::string nowhere = "/nonexistent-quillon-dir/l";
  const Row rows[] = {
      {"textFileWithMemoAfterEquals", {"print", project, "-o", path("l.txt"), "--memo=a=b"}, 0, ""},
      {"pdfFileOptionFirst", {"print", "-o", path("l.pdf"), project}, 0, ""},
      {"noFile", {"print", "-o", path("x.txt")}, 64, "print needs a project file"},
      {"twoFiles", {"print", project, "B.EAY"}, 64, "one project file, not also 'B.EAY'"},
      {"outputWithoutValue", {"print", project, "-o"}, 64, "option -o needs a value"},
      {"unknownOption", {"print", project, "--colour"}, 64, "unknown option '--colour'"},
      {"missingProject", {"print", path("NONE.EAY")}, 9, "File not found"},
      {"unwritableText", {"print", project, "-o", nowhere + ".txt"}, 73, "cannot write " + nowhere},
      {"unwritablePdf", {"print", project, "-o", nowhere + ".pdf"}, 73, "cannot write " + nowhere},
  };
  for (const auto& row : rows) {
    const CliRun result = run(row.arguments);
    EXPECT_EQ(result.code, row.code) << row.name << ": " << result.err;
    EXPECT_NE(result.err.find(row.err), std::string::npos) << row.name << ": " << result.err;
    EXPECT_TRUE(result.out.empty()) << row.name;
  }
  QFile text(QString::fromStdString(path("l.txt")));
  ASSERT_TRUE(text.open(QIODevice::ReadOnly));
  EXPECT_TRUE(text.readAll().contains("\nMemo: a=b\n"));
  QFile pdf(QString::fromStdString(path("l.pdf")));
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_EQ(pdf.read(5), QByteArray("%PDF-"));
}

}  // namespace
}  // namespace quillon
