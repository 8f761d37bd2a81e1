// The window from the keyboard: the standard shortcuts, the mnemonics of both languages, Space on
// a mark, the arrow keys and Enter on the flags, and no transfer within reach of Tab and Space.

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>

#include "app/keyboard.h"
#include "app_harness.h"

using quillon::BoxAnswer;
using namespace quillon::app::testing;

class KeyboardTest : public QObject {
  Q_OBJECT

 private slots:
  void standardShortcut_data();
  void standardShortcut();
  void mnemonicsInBothLanguages();
  void mnemonicChoice_data();
  void mnemonicChoice();
  void spaceTogglesMark_data();
  void spaceTogglesMark();
  void arrowsAndEnterChooseFlags_data();
  void arrowsAndEnterChooseFlags();
  void tabNeverReachesATransfer();
};

namespace {

void showActive(Harness& h) {
  h.window->show();
  QApplication::setActiveWindow(h.window.get());
  QVERIFY(QTest::qWaitForWindowActive(h.window.get()));
}

}  // namespace

void KeyboardTest::standardShortcut_data() {
  // Where the desktop defines no key for Save as and Exit, Ctrl+Shift+S and Ctrl+Q stand in.
  QTest::addColumn<QKeySequence>("key");
  // The first thing the command does: a box, a file dialog's title, the print dialog, a file.
  QTest::addColumn<QString>("seen");
  auto standard = [](QKeySequence::StandardKey key, QKeySequence fallback) {
    const QList<QKeySequence> keys = QKeySequence::keyBindings(key);
    return keys.isEmpty() ? fallback : keys.front();
  };
  QTest::newRow("newAsksToSave") << standard(QKeySequence::New, {}) << "box Data changed. Save?";
  QTest::newRow("openChoosesAFile") << standard(QKeySequence::Open, {}) << "file Open message file";
  QTest::newRow("saveWritesTheFile") << standard(QKeySequence::Save, {}) << "written";
  QTest::newRow("saveAsChoosesAFile")
      << standard(QKeySequence::SaveAs, QKeySequence("Ctrl+Shift+S")) << "file Save message file";
  QTest::newRow("printOpensThePrintDialog")
      << standard(QKeySequence::Print, {}) << "dialog PrtForm";
  QTest::newRow("quitAsksFirst") << standard(QKeySequence::Quit, QKeySequence("Ctrl+Q"))
                                 << "box Really terminate?";
}

void KeyboardTest::standardShortcut() {
  QFETCH(QKeySequence, key);
  QFETCH(QString, seen);
  Harness h;
  // Only New is to ask about changed data first; the other commands show their own step.
  h.project().changed = seen.contains("Data changed");
  h.window->state().currentFile = h.path("Anlage.EAY");
  h.dialog.answer(seen.contains("terminate") ? BoxAnswer::Cancel : BoxAnswer::No);
  showActive(h);

  QString dialogName;
  WhenShown close(modal(), [&](QDialog* dialog) {
    dialogName = dialog->objectName();
    dialog->reject();
  });
  QVERIFY(!key.isEmpty());
  QTest::keySequence(h.window.get(), key);

  QStringList observed;
  for (const std::string& text : h.dialog.texts())
    observed << "box " + QString::fromStdString(text);
  for (const QString& title : h.files.titles) observed << "file " + title;
  if (!dialogName.isEmpty()) observed << "dialog " + dialogName;
  if (QFile::exists(h.path("Anlage.EAY"))) observed << "written";
  QVERIFY2(!observed.isEmpty(), "the shortcut did nothing");
  QCOMPARE(observed.front(), seen);
}

void KeyboardTest::mnemonicsInBothLanguages() {
  // Every menu and every entry can be reached with Alt and one letter, none twice in a menu,
  // and the visible wording is the text table's.
  for (const int language : {0, 1}) {
    Harness h(
        [language](QSettings& s) { s.setValue("Language/MyLang", QString::number(language)); });
    QList<QList<QAction*>> menus = {h.window->menuBar()->actions()};
    for (qsizetype m = 0; m < menus.size(); ++m) {
      QSet<QChar> letters;
      for (QAction* action : menus[m]) {
        if (action->isSeparator() || !action->isVisible()) continue;
        const QString text = action->text();
        const qsizetype at = text.indexOf('&');
        QVERIFY2(at >= 0 && at + 1 < text.size() && text.count('&') == 1, qPrintable(text));
        const QChar letter = text[at + 1].toLower();
        QVERIFY2(!letters.contains(letter), qPrintable(text));
        letters.insert(letter);
        if (QMenu* menu = action->menu()) menus << menu->actions();
      }
    }
    const QStringList bar =
        language == 0
            ? QStringList{"&File", "&Connection", "Co&nfiguration", "&Options", "&Help"}
            : QStringList{"&Datei", "&Verbindung", "&Konfiguration", "&Optionen", "&Hilfe"};
    QStringList titles;
    for (QAction* action : h.window->menuBar()->actions()) titles << action->text();
    QCOMPARE(titles, bar);
  }
}

void KeyboardTest::mnemonicChoice_data() {
  QTest::addColumn<QStringList>("captions");
  QTest::addColumn<QStringList>("marked");
  QTest::newRow("firstLettersWhenFree")
      << QStringList{"Neu", "Öffnen", "Speichern"} << QStringList{"&Neu", "&Öffnen", "&Speichern"};
  QTest::newRow("takenFirstLetterGoesToNextWord")
      << QStringList{"Save", "Save as"} << QStringList{"&Save", "Save &as"};
  QTest::newRow("thenAnyFreeLetter") << QStringList{"Print", "Printer setting", "Setup"}
                                     << QStringList{"&Print", "P&rinter setting", "&Setup"};
  QTest::newRow("givenMnemonicKeptAndReserved")
      << QStringList{"Help", "&Hilfe", "&1 recent"} << QStringList{"H&elp", "&Hilfe", "&1 recent"};
  QTest::newRow("emptyCaptionStaysEmpty") << QStringList{"", "Exit"} << QStringList{"", "&Exit"};
}

void KeyboardTest::mnemonicChoice() {
  QFETCH(QStringList, captions);
  QFETCH(QStringList, marked);
  QCOMPARE(quillon::app::withMnemonics(captions), marked);
}

void KeyboardTest::spaceTogglesMark_data() {
  QTest::addColumn<int>("column");
  QTest::addColumn<QString>("before");
  QTest::addColumn<QString>("after");
  QTest::newRow("emptyAcknowledgementBecomesX") << 1 << ""
                                                << "x";
  QTest::newRow("callBackXBecomesEmpty") << 2 << "x"
                                         << "";
  QTest::newRow("loadedOtherTextBecomesX") << 3 << "j"
                                           << "x";
}

void KeyboardTest::spaceTogglesMark() {
  QFETCH(int, column);
  QFETCH(QString, before);
  QFETCH(QString, after);
  Harness h;
  h.project().messages.setCell(4, column, before.toStdString());
  h.window->projectReplaced();
  showActive(h);
  auto* view = h.find<QTableView>("MeldTabelle");
  view->setFocus();
  view->setCurrentIndex(view->model()->index(3, column - 1));

  QTest::keyClick(view, Qt::Key_Space);

  QCOMPARE(QString::fromStdString(h.project().messages.cell(4, column)), after);
  QCOMPARE(view->model()->index(3, column - 1).data().toString(), after);
  QVERIFY(h.project().changed);
  QVERIFY(!QApplication::activeModalWidget());
}

void KeyboardTest::arrowsAndEnterChooseFlags_data() {
  QTest::addColumn<QString>("keys");
  QTest::addColumn<QString>("marker");
  // Eight flags to a row; the cursor starts on flag 1 and stops at the first and the last.
  QTest::newRow("enterChoosesTheFirst") << "Enter"
                                        << "Marker1";
  QTest::newRow("rightTwice") << "Right Right Enter"
                              << "Marker3";
  QTest::newRow("downGoesEightOn") << "Down Down Enter"
                                   << "Marker17";
  QTest::newRow("rightAtRowEndWrapsToNextRow") << "End Up Up Up Right Enter"
                                               << "Marker9";
  QTest::newRow("downPastTheLastRowStays") << "Down Down Down Down Enter"
                                           << "Marker25";
  QTest::newRow("leftAndUpAtTheFirstStay") << "Left Up Enter"
                                           << "Marker1";
  QTest::newRow("endAndRightStayOnTheLast") << "End Right Enter"
                                            << "Marker32";
  QTest::newRow("spaceChoosesToo") << "Right Space"
                                   << "Marker2";
  QTest::newRow("homeAfterMoving") << "Down Right Home Return"
                                   << "Marker1";
}

void KeyboardTest::arrowsAndEnterChooseFlags() {
  QFETCH(QString, keys);
  QFETCH(QString, marker);
  Harness h;
  showActive(h);
  h.find<QTabWidget>("Eingabe")->setCurrentIndex(3);
  QWidget* grid = h.find<QWidget>("grdMerker");
  grid->setFocus();
  const QHash<QString, Qt::Key> names = {
      {"Left", Qt::Key_Left},   {"Right", Qt::Key_Right},   {"Up", Qt::Key_Up},
      {"Down", Qt::Key_Down},   {"Home", Qt::Key_Home},     {"End", Qt::Key_End},
      {"Enter", Qt::Key_Enter}, {"Return", Qt::Key_Return}, {"Space", Qt::Key_Space}};
  for (const QString& key : keys.split(' ')) QTest::keyClick(grid, names.value(key));
  QCOMPARE(h.find<QLabel>("lblMerkerNr")->text(), marker);
}

void KeyboardTest::tabNeverReachesATransfer() {
  // From each table, and from the flags, Tab goes round every control of the page and the
  // window; a Space on the control it reaches must never start a transfer.
  const QStringList transfers = {"cmdMeldDown", "cmdMeldUp", "cmdTelDown",     "cmdTelUp",
                                 "cmdDown",     "cmdUp",     "cmdEasy800Down", "cmdEasy800Up"};
  Harness h;
  showActive(h);
  auto* pages = h.find<QTabWidget>("Eingabe");
  const char* starts[] = {"MeldTabelle", "FilterTabelle", "TelTabelle", "grdMerker"};
  QStringList reached;
  for (int page = 0; page < 4; ++page) {
    pages->setCurrentIndex(page);
    h.find<QWidget>(starts[page])->setFocus();
    for (int step = 0; step < 40; ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      if (QWidget* focused = QApplication::focusWidget()) reached << focused->objectName();
    }
  }
  for (const QString& transfer : transfers)
    QVERIFY2(!reached.contains(transfer), qPrintable(transfer));
  // The walk did get round: it came back to the tables and met the page's other buttons.
  QVERIFY(reached.contains("MeldTabelle") && reached.contains("cmdQuittung") &&
          reached.contains("cmdSMSCList") && reached.contains("cmdSmsClearAll"));
  QVERIFY(h.recorded->calls.isEmpty());
}

QTEST_MAIN(KeyboardTest)
#include "keyboard_test.moc"
