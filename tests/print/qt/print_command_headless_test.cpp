// The command line prints a PDF without any Qt application of its own and without a display.

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

}  // namespace
}  // namespace quillon
