// The page "Marker Setting" driven through its widgets.

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

#include "app_harness.h"

using quillon::BoxAnswer;
using quillon::app::testing::Harness;

class FlagPageTest : public QObject {
  Q_OBJECT

 private slots:
  void setClearReceptionFlagAndClearAll();
};

namespace {

struct FlagPageControls {
  explicit FlagPageControls(Harness& h) : harness(h) {
    h.window->show();
    QApplication::setActiveWindow(h.window.get());
    h.find<QTabWidget>("Eingabe")->setCurrentIndex(3);
    QCoreApplication::processEvents();
  }
  void clickFlag(int label) {
    QTest::mouseClick(harness.find<QLabel>(QString("lblMerker%1").arg(label)), Qt::LeftButton);
  }
  QLineEdit* field(const char* name) { return harness.find<QLineEdit>(name); }
  void click(const char* name) { harness.find<QPushButton>(name)->click(); }
  QString text(const char* name) { return harness.find<QLabel>(name)->text(); }
  Harness& harness;
};

}  // namespace

void FlagPageTest::setClearReceptionFlagAndClearAll() {
  Harness h;
  quillon::Project& project = h.project();
  project.messages.setCell(7, 4, "Pumpe steht");
  project.phones.setCell(3, 1, "+49301234");
  project.flags.entries[9] = "2;4";
  project.flags.used[9] = true;
  FlagPageControls page(h);

  page.clickFlag(4);
  QCOMPARE(page.text("lblMerkerNr"), QString("Marker5"));

  QTest::keyClicks(page.field("mskMeldNr"), "7x");
  QCOMPARE(page.field("mskMeldNr")->text(), QString("7"));
  page.click("cmdSmsSet");
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"Details not complete! "});
  QCOMPARE(project.flags.entries[5], std::string("-1;-1"));

  page.field("mskMeldNr")->clear();
  page.field("mskMeldNr")->setFocus();
  QTest::keyClicks(page.field("mskMeldNr"), "07");
  page.field("mskTelNr")->setFocus();
  QTest::keyClicks(page.field("mskTelNr"), "3");
  QTest::keyClick(page.field("mskTelNr"), Qt::Key_Tab);
  QCOMPARE(page.text("lblMeldung"), QString("Pumpe steht"));
  QCOMPARE(page.text("lblTelefon"), QString("+49301234"));
  page.click("cmdSmsSet");
  QCOMPARE(project.flags.entries[5], std::string("07;3"));
  QVERIFY(project.flags.used[5]);

  // A changed number is not in force until Set is pressed again.
  QTest::keyClicks(page.field("mskTelNr"), "1");
  QCOMPARE(project.flags.entries[5], std::string("-1;-1"));
  QVERIFY(!project.flags.used[5]);

  page.clickFlag(0);
  page.click("cmdFlag");
  QCOMPARE(project.flags.entries[1], std::string("-2;-1"));
  page.clickFlag(1);
  page.click("cmdFlag");
  QCOMPARE(h.dialog.texts().back(),
           std::string("Reception flag is set already. First reset former flag."));
  QCOMPARE(project.flags.entries[2], std::string("-1;-1"));
  page.clickFlag(0);
  page.click("cmdSmsClear");
  QCOMPARE(project.flags.entries[1], std::string("-1;-1"));
  QVERIFY(!project.changed);

  for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
    h.dialog.answer(answer);
    page.click("cmdSmsClearAll");
    QCOMPARE(h.dialog.texts().back(), std::string("Really clear all? "));
    QCOMPARE(project.flags.entries[9], std::string(answer == BoxAnswer::No ? "2;4" : "-1;-1"));
  }
}

QTEST_MAIN(FlagPageTest)
#include "flag_page_test.moc"
