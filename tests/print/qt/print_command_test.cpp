// The print command's arguments, and its PDF without a Qt application or a display.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <sstream>

#include "print/qt/print_command.h"

namespace quillon {
namespace {

TEST(PrintCommandHeadless, PdfNeedsNoApplicationFromTheCaller) {
  ASSERT_EQ(QCoreApplication::instance(), nullptr);
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("l.pdf"));
  Project project;
  project.messages.setCell(1, 4, "hello");
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(
      writePrintOutput(project, {QStringLiteral("P.EAY"), path, {}}, QDate(2025, 3, 12), out, err),
      0)
      << err.str();
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.read(5), QByteArray("%PDF-"));
  EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST(PrintCommandArguments, AreReadInAnyOrder) {
  struct Row {
    const char* name;
    std::vector<std::string> arguments;
    std::string error;  // empty: parsed into the three fields below
    const char* project;
    const char* output;
    const char* memo;
  };
  const Row rows[] = {
      {"fileOnly", {"A.EAY"}, "", "A.EAY", "", ""},
      {"outputAndMemo", {"A.EAY", "-o", "l.pdf", "--memo", "m m"}, "", "A.EAY", "l.pdf", "m m"},
      {"optionsFirst", {"--memo", "x", "-o", "l.txt", "A.EAY"}, "", "A.EAY", "l.txt", "x"},
      {"memoWithEquals", {"A.EAY", "--memo=a=b"}, "", "A.EAY", "", "a=b"},
      {"memoInUtf8", {"A.EAY", "--memo", "M\xC3\xA4rz"}, "", "A.EAY", "", "M\xC3\xA4rz"},
      {"dashAloneIsAFile", {"-"}, "", "-", "", ""},
      {"noFile", {"-o", "l.txt"}, "print needs a project file", "", "", ""},
      {"outputWithoutValue", {"A.EAY", "-o"}, "option -o needs a value", "", "", ""},
      {"unknownOption", {"A.EAY", "--colour"}, "unknown option '--colour'", "", "", ""},
      {"twoFiles",
       {"A.EAY", "B.EAY"},
       "print takes one project file, not also 'B.EAY'",
       "",
       "",
       ""},
  };
  for (const auto& row : rows) {
    std::string error;
    const auto parsed = parsePrintArguments(row.arguments, error);
    EXPECT_EQ(error, row.error) << row.name;
    ASSERT_EQ(parsed.has_value(), row.error.empty()) << row.name;
    if (!parsed) continue;
    EXPECT_EQ(parsed->projectPath.toStdString(), row.project) << row.name;
    EXPECT_EQ(parsed->outputPath.toStdString(), row.output) << row.name;
    EXPECT_EQ(parsed->memo.toStdString(), row.memo) << row.name;
  }
}

}  // namespace
}  // namespace quillon
