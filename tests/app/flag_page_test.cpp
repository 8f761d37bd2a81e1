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

void FlagPageTest::setClearReceptionFlagAndClearAll() {
  Harness h;
  quillon::Project& project = h.project();
  project.messages.setCell(7, 4, "Pumpe steht");
  project.phones.setCell(3, 1, "+49301234");
  project.flags.entries[9] = "2;4";
  project.flags.used[9] = true;
  h.window->show();
  QApplication::setActiveWindow(h.window.get());
  h.find<QTabWidget>("Eingabe")->setCurrentIndex(3);
  QCoreApplication::processEvents();
  auto clickFlag = [&h](int label) {
    QTest::mouseClick(h.find<QLabel>(QString("lblMerker%1").arg(label)), Qt::LeftButton);
  };
  auto click = [&h](const char* name) { h.find<QPushButton>(name)->click(); };
  auto text = [&h](const char* name) { return h.find<QLabel>(name)->text(); };
  auto* message = h.find<QLineEdit>("mskMeldNr");
  auto* phone = h.find<QLineEdit>("mskTelNr");

  clickFlag(4);
  QCOMPARE(text("lblMerkerNr"), QString("Marker5"));

  QTest::keyClicks(message, "7x");
  QCOMPARE(message->text(), QString("7"));
  click("cmdSmsSet");
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"Details not complete! "});
  QCOMPARE(project.flags.entries[5], std::string("-1;-1"));

  message->clear();
  message->setFocus();
  QTest::keyClicks(message, "07");
  phone->setFocus();
  QTest::keyClicks(phone, "3");
  QTest::keyClick(phone, Qt::Key_Tab);
  QCOMPARE(text("lblMeldung"), QString("Pumpe steht"));
  QCOMPARE(text("lblTelefon"), QString("+49301234"));
  click("cmdSmsSet");
  QCOMPARE(project.flags.entries[5], std::string("07;3"));
  QVERIFY(project.flags.used[5]);

  // A changed number is not in force until Set is pressed again.
  QTest::keyClicks(phone, "1");
  QCOMPARE(project.flags.entries[5], std::string("-1;-1"));
  QVERIFY(!project.flags.used[5]);

  clickFlag(0);
  click("cmdFlag");
  QCOMPARE(project.flags.entries[1], std::string("-2;-1"));
  // The reception flag stays white, its number in green; a flag in use is yellow, in black.
  const auto colours = [&h](int label) {
    auto* shown = h.find<QLabel>(QString("lblMerker%1").arg(label));
    shown->ensurePolished();
    return std::pair{shown->palette().color(QPalette::Window).name(),
                     shown->palette().color(QPalette::WindowText).name()};
  };
  QCOMPARE(colours(0), std::pair(QString("#ffffff"), QString("#1f7a3a")));
  QCOMPARE(colours(8), std::pair(QString("#ffff00"), QString("#000000")));
  QCOMPARE(colours(1), std::pair(QString("#ffffff"), QString("#000000")));
  clickFlag(1);
  click("cmdFlag");
  QCOMPARE(h.dialog.texts().back(),
           std::string("Reception flag is set already. First reset former flag."));
  QCOMPARE(project.flags.entries[2], std::string("-1;-1"));
  clickFlag(0);
  click("cmdSmsClear");
  QCOMPARE(project.flags.entries[1], std::string("-1;-1"));
  QVERIFY(!project.changed);

  for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
    h.dialog.answer(answer);
    click("cmdSmsClearAll");
    QCOMPARE(h.dialog.texts().back(), std::string("Really clear all? "));
    QCOMPARE(project.flags.entries[9], std::string(answer == BoxAnswer::No ? "2;4" : "-1;-1"));
  }
}

QTEST_MAIN(FlagPageTest)
#include "flag_page_test.moc"
