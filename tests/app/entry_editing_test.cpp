// Editing the tables through the real views and the real entry boxes.

#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>

#include "app/qt_text.h"
#include "app_harness.h"

using quillon::TableKind;
using namespace quillon::app::testing;

class EntryEditingTest : public QObject {
  Q_OBJECT

 private slots:
  void entryBoxWritesCell_data();
  void entryBoxWritesCell();
  void markColumnToggles();
};

namespace {

// Tab 0 messages, 1 filters, 2 phone numbers.
QTableView* showPage(Harness& h, int tab) {
  h.window->show();
  h.find<QTabWidget>("Eingabe")->setCurrentIndex(tab);
  QCoreApplication::processEvents();
  const char* views[] = {"MeldTabelle", "FilterTabelle", "TelTabelle"};
  return h.find<QTableView>(views[tab]);
}

void doubleClickCell(QTableView* view, int row, int column) {
  doubleClick(view->viewport(), view->visualRect(view->model()->index(row, column)).center());
}

// Cell texts are Windows-1252; titles and what the box shows or is typed, UTF-8.
struct CellEdit {
  const char* name;
  int tab;
  int row;
  int column;
  const char* trigger;  // "double", "enter" or the typed character
  std::string before;
  const char* box;
  const char* title;
  const char* startText;
  const char* typed;  // typed at the end of the start text
  bool confirm;
  std::string after;
};

const CellEdit kCellEdits[] = {
    {"messageTextByDoubleClickKeepsUmlauts", 0, 3, 4, "double", "Alarm", "MInput", "Edit message",
     "Alarm", " Grüße", true,
     "Alarm Gr\xFC\xDF"
     "e"},
    {"commentByEnterStartsWithCellText", 0, 1, 5, "enter", "alt", "MInput", "Edit comment", "alt",
     "er Text", true, "alter Text"},
    {"typedKeyReplacesFilterText", 1, 2, 1, "K", "secret", "MInput", "Edit filter text", "K", "ey",
     true, "Key"},
    {"phoneBoxFiltersKeys", 2, 1, 1, "double", "", "TInput", "Edit phone N°.", "", "+49 (0)171",
     true, "+490171"},
    {"phoneNameUsesCommentBox", 2, 4, 2, "enter", "Meier", "MInput", "Edit comment", "Meier", "s",
     true, "Meiers"},
    {"cancelKeepsCellButMarksChanged", 0, 5, 4, "double", "bleibt", "MInput", "Edit message",
     "bleibt", " nicht", false, "bleibt"},
};

}  // namespace

void EntryEditingTest::entryBoxWritesCell_data() {
  QTest::addColumn<int>("cellEdit");
  for (int i = 0; i < static_cast<int>(std::size(kCellEdits)); ++i)
    QTest::newRow(kCellEdits[i].name) << i;
}

void EntryEditingTest::entryBoxWritesCell() {
  QFETCH(int, cellEdit);
  const CellEdit& e = kCellEdits[cellEdit];
  Harness h;
  const TableKind kinds[] = {TableKind::Messages, TableKind::Filters, TableKind::Phones};
  quillon::Table& table = quillon::TableOf(h.project(), kinds[e.tab]);
  table.setCell(e.row, e.column, e.before);
  QTableView* view = showPage(h, e.tab);
  const QModelIndex index = view->model()->index(e.row - 1, e.column - 1);
  view->setCurrentIndex(index);

  QString seenBox;
  QString seenTitle;
  QString seenStart;
  WhenShown answer(modal(), [&](QDialog* dialog) {
    seenBox = dialog->objectName();
    seenTitle = dialog->windowTitle();
    auto* edit = dialog->findChild<QLineEdit*>();
    seenStart = edit->text();
    typeText(edit, QString::fromUtf8(e.typed));
    dialog->findChild<QPushButton*>(e.confirm ? "cmdOK" : "cmdCancel")->click();
  });
  if (e.trigger == std::string("double")) {
    doubleClickCell(view, e.row - 1, e.column - 1);
  } else if (e.trigger == std::string("enter")) {
    QTest::keyClick(view, Qt::Key_Return);
  } else {
    QTest::keyClicks(view, e.trigger);
  }

  QVERIFY(answer.ran);
  QCOMPARE(seenBox, QString(e.box));
  QCOMPARE(seenTitle, QString::fromUtf8(e.title));
  QCOMPARE(seenStart, QString::fromUtf8(e.startText));
  QCOMPARE(QByteArray::fromStdString(table.cell(e.row, e.column)),
           QByteArray::fromStdString(e.after));
  QCOMPARE(view->model()->data(index).toString(), quillon::app::toQString(e.after));
  QVERIFY(h.project().changed);
}

void EntryEditingTest::markColumnToggles() {
  Harness h;
  h.project().messages.setCell(2, 1, "j");  // anything but "x" counts as unmarked
  QTableView* view = showPage(h, 0);
  WhenShown noBox(modal(), [](QDialog* dialog) { dialog->reject(); });
  for (const char* expected : {"x", ""}) {
    doubleClickCell(view, 1, 0);
    QCOMPARE(QByteArray::fromStdString(h.project().messages.cell(2, 1)), QByteArray(expected));
  }
  QVERIFY(!noBox.ran);
  QVERIFY(h.project().changed);
}

QTEST_MAIN(EntryEditingTest)
#include "entry_editing_test.moc"
