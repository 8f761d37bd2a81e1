// The texts the main window builds: title, file-dialog filter, clock, and the twips conversion
// of the saved placement.

#include <QtTest>

#include "app/shell_text.h"
#include "app/window_settings.h"

using namespace quillon::app;

class ShellTextTest : public QObject {
  Q_OBJECT

 private slots:
  void title_data();
  void title();
  void fileFilter_data();
  void fileFilter();
  void clock();
  void twips_data();
  void twips();
};

void ShellTextTest::title_data() {
  QTest::addColumn<QString>("file");
  QTest::addColumn<QString>("title");
  QTest::newRow("newProject") << "NEW.EAY"
                              << "[NEW.EAY] Quillon ";
  // 48 characters + brackets = 50: still whole.
  QTest::newRow("fiftyCharactersStayWhole")
      << "/home/anna/projects/pumpstation/nord/anlage1.EAY"
      << "[/home/anna/projects/pumpstation/nord/anlage1.EAY] Quillon ";
  QTest::newRow("fiftyOneAreShortened")
      << "/home/anna/projects/pumpstation/nord/anlage12.EAY"
      << "[/home/anna/proj ... /pumpstation/nord/anlage12.EAY] Quillon ";
}

void ShellTextTest::title() {
  QFETCH(QString, file);
  QFETCH(QString, title);
  QCOMPARE(titleFor(file), title);
}

void ShellTextTest::fileFilter_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("qt");
  QTest::newRow("english") << "Message files *.EAY|*.EAY"
                           << "Message files (*.EAY)";
  QTest::newRow("german") << "Meldungsdateien *.EAY|*.EAY"
                          << "Meldungsdateien (*.EAY)";
  QTest::newRow("twoPairs") << "Projects|*.EAY|All|*.*"
                            << "Projects (*.EAY);;All (*.*)";
  QTest::newRow("noTextTable") << ""
                               << "(*.EAY)";
}

void ShellTextTest::fileFilter() {
  QFETCH(QString, table);
  QFETCH(QString, qt);
  QCOMPARE(fileDialogFilter(table), qt);
}

void ShellTextTest::clock() {
  QCOMPARE(clockText(QDateTime(QDate(2012, 3, 5), QTime(7, 4, 9))),
           QString("05.03.2012   07:04:09"));
}

void ShellTextTest::twips_data() {
  QTest::addColumn<double>("twips");
  QTest::addColumn<double>("dpi");
  QTest::addColumn<int>("pixels");
  QTest::addColumn<double>("back");
  QTest::newRow("defaultLeftAt96") << 1000.0 << 96.0 << 67 << 1005.0;
  QTest::newRow("defaultWidthAt96") << 11250.0 << 96.0 << 750 << 11250.0;
  QTest::newRow("defaultHeightAt120") << 7000.0 << 120.0 << 583 << 6996.0;
}

void ShellTextTest::twips() {
  QFETCH(double, twips);
  QFETCH(double, dpi);
  QFETCH(int, pixels);
  QFETCH(double, back);
  QCOMPARE(twipsToPixels(twips, dpi), pixels);
  QCOMPARE(pixelsToTwips(pixels, dpi), back);
}

QTEST_MAIN(ShellTextTest)
#include "shell_text_test.moc"
