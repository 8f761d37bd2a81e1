#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <sstream>

#include "print/qt/print_command.h"
#include "project/project.h"

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

Project smallProject() {
  Project p;
  p.smsCentre = "+491722270333";
  p.filters.setCell(1, 1, "STOP");
  p.messages.setCell(1, 1, "x");
  p.messages.setCell(1, 4,
                     "Pumpe 1 St\xF6"
                     "rung");
  p.phones.setCell(2, 1, "+491701234567");
  p.phones.setCell(2, 2,
                   "M\xFC"
                   "ller");
  return p;
}

// Every message filled to the full 160 characters, and the whole phone book.
Project fullProject() {
  Project p;
  for (int row = 1; row <= p.messages.rows(); ++row) {
    const std::string tag = "text of message " + std::to_string(row) + " ";
    std::string text;
    while (text.size() < 160) text += tag;
    p.messages.setCell(row, 4, text.substr(0, 160));
    p.messages.setCell(row, 5, "comment " + std::to_string(row));
  }
  for (int row = 1; row <= p.phones.rows(); ++row) {
    p.phones.setCell(row, 1, "+49170" + std::to_string(1000 + row));
  }
  return p;
}

QString pdfText(const QString& pdf) {
  QProcess process;
  process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
  if (!process.waitForFinished(30000) || process.exitCode() != 0) return {};
  return QString::fromUtf8(process.readAllStandardOutput());
}

QStringList simplifiedLines(const QString& text) {
  QStringList lines;
  for (const auto& line : text.split(QLatin1Char('\n'))) lines << line.simplified();
  return lines;
}

}  // namespace

class PrintOutputTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
      m_pdftotext = false;
    }
  }

  void textGoesToStandardOutputInUtf8() {
    PrintArguments args{QStringLiteral("/data/PUMPS.EAY"), {}, QStringLiteral("Wartung \u00e4")};
    std::ostringstream out;
    std::ostringstream err;
    QCOMPARE(writePrintOutput(smallProject(), args, QDate(2025, 3, 12), out, err), 0);
    QVERIFY(out.str().starts_with("Project: PUMPS.EAY\nDatum: 12.03.2025\n"));
    for (const char* line : {"\nMemo: Wartung \xC3\xA4\n", "\nPumpe 1 St\xC3\xB6rung\n",
                             "\n 2  +491701234567         M\xC3\xBCller\n"}) {
      QVERIFY2(out.str().find(line) != std::string::npos, line);
    }
    QVERIFY(err.str().empty());
  }

  void textFileHoldsWhatStandardOutputShows() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("listing.txt"));
    std::ostringstream shown;
    std::ostringstream err;
    const QDate day(2025, 3, 12);
    QCOMPARE(writePrintOutput(smallProject(), {QStringLiteral("P.EAY"), {}, {}}, day, shown, err),
             0);
    std::ostringstream none;
    QCOMPARE(writePrintOutput(smallProject(), {QStringLiteral("P.EAY"), path, {}}, day, none, err),
             0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().toStdString(), shown.str());
    QVERIFY(none.str().empty());
  }

  void pdfCarriesTheListingText() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("listing.PDF"));
    std::ostringstream out;
    std::ostringstream err;
    QCOMPARE(writePrintOutput(smallProject(),
                              {QStringLiteral("PUMPS.EAY"), path, QStringLiteral("Wartung")},
                              QDate(2025, 3, 12), out, err),
             0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(5), QByteArray("%PDF-"));
    QVERIFY(out.str().empty());
    if (!m_pdftotext) QSKIP("pdftotext is not installed");

    const QStringList lines = simplifiedLines(pdfText(path));
    const QStringList expected = {
        QStringLiteral("Project: PUMPS.EAY"),
        QStringLiteral("Datum: 12.03.2025"),
        QStringLiteral("Memo: Wartung"),
        QStringLiteral("Filter 1"),
        QStringLiteral("STOP"),
        QStringLiteral("Message 1 Acknowledgement"),
        QStringLiteral("Pumpe 1 St\u00f6rung"),
        QStringLiteral("SMS-Center +491722270333"),
        QStringLiteral("2 +491701234567 M\u00fcller"),
        QStringLiteral("PUMPS.EAY 1 / 1"),
    };
    for (const auto& line : expected) QVERIFY2(lines.contains(line), qPrintable(line));
    QVERIFY(lines.filter(QStringLiteral("Printed with Quillon ")).size() == 1);
  }

  void longListingKeepsEachMessageOnOnePage() {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("full.pdf"));
    std::ostringstream out;
    std::ostringstream err;
    QCOMPARE(writePrintOutput(fullProject(), {QStringLiteral("FULL.EAY"), path, {}},
                              QDate(2025, 3, 12), out, err),
             0);
    if (!m_pdftotext) QSKIP("pdftotext is not installed");

    const QStringList pages = pdfText(path).split(QLatin1Char('\f'), Qt::SkipEmptyParts);
    QVERIFY(pages.size() > 5);
    const auto total = QString::number(pages.size());
    for (qsizetype page = 0; page < pages.size(); ++page) {
      const QStringList lines = simplifiedLines(pages[page]);
      QVERIFY(lines.contains(QStringLiteral("FULL.EAY %1 / %2").arg(page + 1).arg(total)));
    }
    for (int row = 1; row <= 100; ++row) {
      const QString header = QStringLiteral("Message %1").arg(row);
      const QString comment = QStringLiteral("Comment: comment %1").arg(row);
      const auto onPage = [&](const QString& line) {
        for (qsizetype page = 0; page < pages.size(); ++page) {
          if (simplifiedLines(pages[page]).contains(line)) return page;
        }
        return qsizetype{-1};
      };
      QVERIFY2(onPage(header) >= 0, qPrintable(header));
      QCOMPARE(onPage(comment), onPage(header));
    }
  }

  void unwritableOutputIsReported_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("pdf") << QStringLiteral("listing.pdf");
    QTest::newRow("text") << QStringLiteral("listing.txt");
  }
  void unwritableOutputIsReported() {
    QFETCH(QString, name);
    const QString path = QStringLiteral("/nonexistent-quillon-dir/") + name;
    std::ostringstream out;
    std::ostringstream err;
    QCOMPARE(writePrintOutput(smallProject(), {QStringLiteral("P.EAY"), path, {}},
                              QDate(2025, 3, 12), out, err),
             73);
    QCOMPARE(err.str(), "quillon-cli: cannot write " + path.toStdString() + "\n");
  }

 private:
  bool m_pdftotext = true;
};

QTEST_MAIN(PrintOutputTest)
#include "print_output_test.moc"
