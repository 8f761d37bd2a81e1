// The print command's PDF, made without a Qt application or a display and read back with
// pdftotext.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdlib>
#include <sstream>

#include "print/qt/print_command.h"

namespace quillon {
namespace {

TEST(PrintPdf, CarriesTheListingWithoutAnApplicationFromTheCaller) {
  ASSERT_EQ(QCoreApplication::instance(), nullptr);
  QTemporaryDir dir;
  Project p;
  p.smsCentre = "+491722270333";
  p.filters.setCell(1, 1, "STOP");
  p.messages.setCell(1, 1, "x");
  p.messages.setCell(1, 4, "Pumpe 1 St\xF6rung");
  p.phones.setCell(2, 1, "+491701234567");
  p.phones.setCell(2, 2, "M\xFCller");

  // An upper-case extension is a PDF as well.
  const QString path = dir.filePath("PUMPS.PDF");
  std::ostringstream out;
  std::ostringstream err;
  EXPECT_EQ(writePrintOutput(p, {"PUMPS.EAY", path, "Wartung"}, QDate(2025, 3, 12), out, err), 0)
      << err.str();
  EXPECT_TRUE(out.str().empty());
  EXPECT_EQ(QCoreApplication::instance(), nullptr);
  QFile pdf(path);
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_EQ(pdf.read(5), QByteArray("%PDF-"));

  // pdftotext's layout, one page, runs of blanks made one.
  QFile text(path + ".txt");
  const std::string command =
      "pdftotext -layout '" + path.toStdString() + "' '" + text.fileName().toStdString() + "'";
  if (std::system(command.c_str()) != 0 || !text.open(QIODevice::ReadOnly))
    GTEST_SKIP() << "pdftotext is not installed";
  const QStringList pages = QString::fromUtf8(text.readAll()).split('\f', Qt::SkipEmptyParts);
  ASSERT_EQ(pages.size(), 1);
  QStringList lines;
  for (const QString& line : pages.front().split('\n')) lines << line.simplified();
  for (const char* line :
       {"Project: PUMPS.EAY", "Datum: 12.03.2025", "Memo: Wartung", "Filter 1", "STOP",
        "Message 1 Acknowledgement", "Pumpe 1 St\xC3\xB6rung", "SMS-Center +491722270333",
        "2 +491701234567 M\xC3\xBCller", "PUMPS.EAY 1 / 1"}) {
    EXPECT_TRUE(lines.contains(QString::fromUtf8(line))) << line;
  }
  EXPECT_EQ(lines.filter("Printed with Quillon ").size(), 1);
}

}  // namespace
}  // namespace quillon
