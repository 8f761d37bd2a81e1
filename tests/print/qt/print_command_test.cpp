// The print command's PDF, made without a Qt application or a display and read back with
// pdftotext.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdlib>
#include <optional>
#include <sstream>

#include "print/qt/print_command.h"

namespace quillon {
namespace {

// The PDF written for `project`, as pdftotext lays it out: pages split at "\f", runs of blanks
// made one. Nothing when pdftotext is missing.
std::optional<QStringList> writePdf(const Project& project, const QString& path) {
  std::ostringstream out;
  std::ostringstream err;
  const QString name = QFileInfo(path).completeBaseName() + ".EAY";
  EXPECT_EQ(writePrintOutput(project, {name, path, "Wartung"}, QDate(2025, 3, 12), out, err), 0)
      << err.str();
  EXPECT_TRUE(out.str().empty());
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.read(5), QByteArray("%PDF-"));

  QFile text(path + ".txt");
  const std::string command =
      "pdftotext -layout '" + path.toStdString() + "' '" + text.fileName().toStdString() + "'";
  if (std::system(command.c_str()) != 0 || !text.open(QIODevice::ReadOnly)) return std::nullopt;
  QStringList pages = QString::fromUtf8(text.readAll()).split('\f', Qt::SkipEmptyParts);
  for (QString& page : pages) {
    QStringList simplified;
    for (const QString& line : page.split('\n')) simplified << line.simplified();
    page = simplified.join('\n');
  }
  return pages;
}

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
  const auto pages = writePdf(p, dir.filePath("PUMPS.PDF"));
  EXPECT_EQ(QCoreApplication::instance(), nullptr);
  if (!pages) GTEST_SKIP() << "pdftotext is not installed";
  ASSERT_EQ(pages->size(), 1);
  const QStringList lines = pages->front().split('\n');
  for (const char* line :
       {"Project: PUMPS.EAY", "Datum: 12.03.2025", "Memo: Wartung", "Filter 1", "STOP",
        "Message 1 Acknowledgement", "Pumpe 1 St\xC3\xB6rung", "SMS-Center +491722270333",
        "2 +491701234567 M\xC3\xBCller", "PUMPS.EAY 1 / 1"}) {
    EXPECT_TRUE(lines.contains(QString::fromUtf8(line))) << line;
  }
  EXPECT_EQ(lines.filter("Printed with Quillon ").size(), 1);
}

TEST(PrintPdf, LongListingKeepsEachMessageOnOnePage) {
  QTemporaryDir dir;
  Project p;
  for (int row = 1; row <= p.messages.rows(); ++row) {
    p.messages.setCell(row, 4, std::string(160, 'a'));
    p.messages.setCell(row, 5, "comment " + std::to_string(row));
  }
  const auto pages = writePdf(p, dir.filePath("FULL.pdf"));
  if (!pages) GTEST_SKIP() << "pdftotext is not installed";
  ASSERT_GT(pages->size(), 5);
  qsizetype messages = 0;
  for (qsizetype page = 0; page < pages->size(); ++page) {
    const QStringList lines = (*pages)[page].split('\n');
    EXPECT_TRUE(lines.contains(QString("FULL.EAY %1 / %2").arg(page + 1).arg(pages->size())));
    // Each message's header has its comment, three lines further, on its own page.
    for (const QString& line : lines.filter(QRegularExpression("^Message \\d+$"))) {
      EXPECT_TRUE(lines.contains("Comment: comment " + line.mid(8))) << line.toStdString();
      ++messages;
    }
  }
  EXPECT_EQ(messages, 100);
}

}  // namespace
}  // namespace quillon
