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
};

namespace {

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
  h.window->show();
  h.find<QTabWidget>("Eingabe")->setCurrentIndex(e.tab);
  const char* views[] = {"MeldTabelle", "FilterTabelle", "TelTabelle"};
  auto* view = h.find<QTableView>(views[e.tab]);
  const QModelIndex index = view->model()->index(e.row - 1, e.column - 1);
  view->setCurrentIndex(index);

  QStringList seen;  // box, title, start text
  WhenShown answer(modal(), [&](QDialog* dialog) {
    auto* edit = dialog->findChild<QLineEdit*>();
    seen = {dialog->objectName(), dialog->windowTitle(), edit->text()};
    typeText(edit, QString::fromUtf8(e.typed));
    dialog->findChild<QPushButton*>(e.confirm ? "cmdOK" : "cmdCancel")->click();
  });
  if (e.trigger == std::string("double")) {
    doubleClick(view->viewport(), view->visualRect(index).center());
  } else if (e.trigger == std::string("enter")) {
    QTest::keyClick(view, Qt::Key_Return);
  } else {
    QTest::keyClicks(view, e.trigger);
  }

  QVERIFY(answer.ran);
  QCOMPARE(seen, (QStringList{e.box, QString::fromUtf8(e.title), QString::fromUtf8(e.startText)}));
  QCOMPARE(QByteArray::fromStdString(table.cell(e.row, e.column)),
           QByteArray::fromStdString(e.after));
  QCOMPARE(view->model()->data(index).toString(), quillon::app::toQString(e.after));
  QVERIFY(h.project().changed);
}

QTEST_MAIN(EntryEditingTest)
#include "entry_editing_test.moc"
