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
  void standardShortcut();
  void mnemonicsInBothLanguages();
  void mnemonicChoice();
  void spaceTogglesMark();
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

void KeyboardTest::standardShortcut() {
  auto standard = [](QKeySequence::StandardKey key, QKeySequence fallback = {}) {
    const QList<QKeySequence> keys = QKeySequence::keyBindings(key);
    return keys.isEmpty() ? fallback : keys.front();
  };
  // The first thing the command does: a box, a file dialog's title, the print dialog, a file.
  // Where the desktop defines no key for Save as and Exit, Ctrl+Shift+S and Ctrl+Q stand in.
  const std::pair<QKeySequence, QString> rows[] = {
      {standard(QKeySequence::New), "box Data changed. Save?"},
      {standard(QKeySequence::Open), "file Open message file"},
      {standard(QKeySequence::Save), "written"},
      {standard(QKeySequence::SaveAs, QKeySequence("Ctrl+Shift+S")), "file Save message file"},
      {standard(QKeySequence::Print), "dialog PrtForm"},
      {standard(QKeySequence::Quit, QKeySequence("Ctrl+Q")), "box Really terminate?"},
  };
  for (const auto& [key, seen] : rows) {
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
    QVERIFY2(!key.isEmpty(), qPrintable(seen));
    QTest::keySequence(h.window.get(), key);

    QStringList observed;
    for (const std::string& text : h.dialog.texts())
      observed << "box " + QString::fromStdString(text);
    for (const QString& title : h.files.titles) observed << "file " + title;
    if (!dialogName.isEmpty()) observed << "dialog " + dialogName;
    if (QFile::exists(h.path("Anlage.EAY"))) observed << "written";
    QCOMPARE(observed.value(0), seen);
  }
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

void KeyboardTest::mnemonicChoice() {
  const std::pair<QStringList, QStringList> rows[] = {
      // First letters when free; a taken first letter goes to the next word, then any free one.
      {{"Neu", "Öffnen", "Speichern"}, {"&Neu", "&Öffnen", "&Speichern"}},
      {{"Save", "Save as"}, {"&Save", "Save &as"}},
      {{"Print", "Printer setting", "Setup"}, {"&Print", "P&rinter setting", "&Setup"}},
      // A given mnemonic is kept and reserved; an empty caption stays empty.
      {{"Help", "&Hilfe", "&1 recent"}, {"H&elp", "&Hilfe", "&1 recent"}},
      {{"", "Exit"}, {"", "&Exit"}},
  };
  for (const auto& [captions, marked] : rows)
    QCOMPARE(quillon::app::withMnemonics(captions), marked);
}

void KeyboardTest::spaceTogglesMark() {
  // An empty acknowledgement becomes "x", a call back "x" empty, a loaded other text "x".
  Harness h;
  h.project().messages.setCell(4, 2, "x");
  h.project().messages.setCell(4, 3, "j");
  h.window->projectReplaced();
  showActive(h);
  auto* view = h.find<QTableView>("MeldTabelle");
  view->setFocus();
  for (const auto& [column, after] : {std::pair{1, "x"}, {2, ""}, {3, "x"}}) {
    h.project().changed = false;
    view->setCurrentIndex(view->model()->index(3, column - 1));
    QTest::keyClick(view, Qt::Key_Space);
    QCOMPARE(h.project().messages.cell(4, column), std::string(after));
    QCOMPARE(view->model()->index(3, column - 1).data().toString(), QString(after));
    QVERIFY(h.project().changed);
    QVERIFY(!QApplication::activeModalWidget());
  }
}

void KeyboardTest::arrowsAndEnterChooseFlags() {
  // Eight flags to a row; the cursor starts on flag 1 and stops at the first and the last.
  const std::pair<QString, QString> rows[] = {
      {"Enter", "Marker1"},
      {"Right Right Enter", "Marker3"},
      {"Down Down Enter", "Marker17"},
      {"End Up Up Up Right Enter", "Marker9"},  // right at a row's end wraps to the next row
      {"Down Down Down Down Enter", "Marker25"},
      {"Left Up Enter", "Marker1"},
      {"End Right Enter", "Marker32"},
      {"Right Space", "Marker2"},
      {"Down Right Home Return", "Marker1"},
  };
  const QHash<QString, Qt::Key> names = {
      {"Left", Qt::Key_Left},   {"Right", Qt::Key_Right},   {"Up", Qt::Key_Up},
      {"Down", Qt::Key_Down},   {"Home", Qt::Key_Home},     {"End", Qt::Key_End},
      {"Enter", Qt::Key_Enter}, {"Return", Qt::Key_Return}, {"Space", Qt::Key_Space}};
  for (const auto& [keys, marker] : rows) {
    Harness h;
    showActive(h);
    h.find<QTabWidget>("Eingabe")->setCurrentIndex(3);
    QWidget* grid = h.find<QWidget>("grdMerker");
    grid->setFocus();
    for (const QString& key : keys.split(' ')) QTest::keyClick(grid, names.value(key));
    QVERIFY2(h.find<QLabel>("lblMerkerNr")->text() == marker, qPrintable(keys));
  }
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
