// Editing the tables through the real views and the real entry boxes.

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QtTest>

#include "app/qt_text.h"
#include "app_harness.h"

using quillon::TableKind;
using quillon::app::testing::doubleClick;
using quillon::app::testing::Harness;
using quillon::app::testing::ModalAnswer;
using quillon::app::testing::typeText;

class EntryEditingTest : public QObject {
  Q_OBJECT

 private slots:
  void entryBoxWritesCell_data();
  void entryBoxWritesCell();
  void markColumnToggles();
  void previewMarksWhatArrivesDifferently();
  void gaugeFollowsEdits();
};

namespace {

struct Page {
  TableKind kind;
  int tab;
  const char* view;
};

Page pageOf(const QString& view) {
  if (view == "FilterTabelle") return {TableKind::Filters, 1, "FilterTabelle"};
  if (view == "TelTabelle") return {TableKind::Phones, 2, "TelTabelle"};
  return {TableKind::Messages, 0, "MeldTabelle"};
}

QTableView* showPage(Harness& h, const Page& page) {
  h.window->show();
  h.window->findChild<QTabWidget*>("Eingabe")->setCurrentIndex(page.tab);
  QCoreApplication::processEvents();
  return h.window->findChild<QTableView*>(page.view);
}

}  // namespace

void EntryEditingTest::entryBoxWritesCell_data() {
  QTest::addColumn<QString>("view");
  QTest::addColumn<int>("row");
  QTest::addColumn<int>("column");
  QTest::addColumn<QString>("trigger");  // "double", "enter" or the typed character
  QTest::addColumn<QByteArray>("cellBefore");
  QTest::addColumn<QString>("box");
  QTest::addColumn<QString>("title");
  QTest::addColumn<QString>("startText");
  QTest::addColumn<QString>("typed");  // typed at the end of the start text
  QTest::addColumn<bool>("clearFirst");
  QTest::addColumn<bool>("confirm");
  QTest::addColumn<QByteArray>("cellAfter");

  QTest::newRow("messageTextByDoubleClickKeepsUmlauts")
      << "MeldTabelle" << 3 << 4 << "double" << QByteArray("Alarm") << "MInput"
      << "Edit message"
      << "Alarm" << QString::fromUtf8(" Grüße") << false << true
      << QByteArray(
             "Alarm Gr\xFC\xDF"
             "e");
  QTest::newRow("commentByEnterStartsWithCellText")
      << "MeldTabelle" << 1 << 5 << "enter" << QByteArray("alt") << "MInput"
      << "Edit comment"
      << "alt"
      << "er Text" << false << true << QByteArray("alter Text");
  QTest::newRow("typedKeyReplacesFilterText")
      << "FilterTabelle" << 2 << 1 << "K" << QByteArray("secret") << "MInput"
      << "Edit filter text"
      << "K"
      << "ey" << false << true << QByteArray("Key");
  QTest::newRow("phoneBoxFiltersKeys") << "TelTabelle" << 1 << 1 << "double" << QByteArray()
                                       << "TInput" << QString::fromUtf8("Edit phone N°.") << ""
                                       << "+49 (0)171" << false << true << QByteArray("+490171");
  QTest::newRow("phoneNameUsesCommentBox")
      << "TelTabelle" << 4 << 2 << "enter" << QByteArray("Meier") << "MInput"
      << "Edit comment"
      << "Meier"
      << "s" << false << true << QByteArray("Meiers");
  QTest::newRow("emptyPhoneBoxEmptiesCell")
      << "TelTabelle" << 2 << 1 << "enter" << QByteArray("+4917") << "TInput"
      << QString::fromUtf8("Edit phone N°.") << "+4917"
      << "" << true << true << QByteArray();
  QTest::newRow("cancelKeepsCell")
      << "MeldTabelle" << 5 << 4 << "double" << QByteArray("bleibt") << "MInput"
      << "Edit message"
      << "bleibt"
      << " nicht" << false << false << QByteArray("bleibt");
}

void EntryEditingTest::entryBoxWritesCell() {
  QFETCH(QString, view);
  QFETCH(int, row);
  QFETCH(int, column);
  QFETCH(QString, trigger);
  QFETCH(QByteArray, cellBefore);
  QFETCH(QString, box);
  QFETCH(QString, title);
  QFETCH(QString, startText);
  QFETCH(QString, typed);
  QFETCH(bool, clearFirst);
  QFETCH(bool, confirm);
  QFETCH(QByteArray, cellAfter);

  Harness h;
  const Page page = pageOf(view);
  quillon::Table& table = quillon::TableOf(h.window->state().project, page.kind);
  table.setCell(row, column, cellBefore.toStdString());
  QTableView* tableView = showPage(h, page);
  const QModelIndex index = tableView->model()->index(row - 1, column - 1);
  tableView->setCurrentIndex(index);

  QString seenBox;
  QString seenTitle;
  QString seenStart;
  ModalAnswer answer([&](QDialog* dialog) {
    seenBox = dialog->objectName();
    seenTitle = dialog->windowTitle();
    auto* edit = dialog->findChild<QLineEdit*>();
    seenStart = edit->text();
    if (clearFirst) edit->clear();
    typeText(edit, typed);
    dialog->findChild<QPushButton*>(confirm ? "cmdOK" : "cmdCancel")->click();
  });
  if (trigger == "double") {
    doubleClick(tableView->viewport(), tableView->visualRect(index).center());
  } else if (trigger == "enter") {
    QTest::keyClick(tableView, Qt::Key_Return);
  } else {
    QTest::keyClicks(tableView, trigger);
  }

  QVERIFY(answer.ran);
  QCOMPARE(seenBox, box);
  QCOMPARE(seenTitle, title);
  QCOMPARE(seenStart, startText);
  QCOMPARE(QByteArray::fromStdString(table.cell(row, column)), cellAfter);
  QCOMPARE(tableView->model()->data(index).toString(),
           quillon::app::toQString(cellAfter.toStdString()));
  QVERIFY(h.window->state().project.changed);
}

void EntryEditingTest::markColumnToggles() {
  Harness h;
  quillon::Project& project = h.window->state().project;
  project.messages.setCell(2, 1, "j");  // anything but "x" counts as unmarked
  QTableView* view = showPage(h, pageOf("MeldTabelle"));
  const QModelIndex cell = view->model()->index(1, 0);
  bool opened = false;
  for (const char* expected : {"x", ""}) {
    ModalAnswer answer([&](QDialog* dialog) {
      opened = true;
      dialog->reject();
    });
    doubleClick(view->viewport(), view->visualRect(cell).center());
    QCOMPARE(QByteArray::fromStdString(project.messages.cell(2, 1)), QByteArray(expected));
  }
  QVERIFY(!opened);
  QVERIFY(project.changed);
}

void EntryEditingTest::previewMarksWhatArrivesDifferently() {
  Harness h;
  QTableView* view = showPage(h, pageOf("MeldTabelle"));
  const QModelIndex cell = view->model()->index(0, 3);
  QString preview;
  QString count;
  ModalAnswer answer([&](QDialog* dialog) {
    // Umlauts and sharp s have GSM codes of their own; "@" arrives as an inverted exclamation.
    typeText(dialog->findChild<QLineEdit*>(), QString::fromUtf8("Grüße @"));
    preview = dialog->findChild<QLabel*>("lblVorschau")->text();
    count = dialog->findChild<QLabel*>("lblAnzahl")->text();
    dialog->reject();
  });
  doubleClick(view->viewport(), view->visualRect(cell).center());
  QVERIFY(answer.ran);
  QVERIFY2(preview.contains(QString::fromUtf8("7: @ \u2192 \u00A1")), qPrintable(preview));
  QVERIFY2(!preview.contains("3:") && !preview.contains("4:"), qPrintable(preview));
  QCOMPARE(count, QString("Characters left: 153   (7 / 160)"));
}

void EntryEditingTest::gaugeFollowsEdits() {
  Harness h;
  auto* gauge = h.window->findChild<QProgressBar*>("sbrStatusGauge");
  // Header 3, 100 empty message records of 2, the acknowledgement record 3, 10 empty filter
  // records of 1, the end mark 1.
  QCOMPARE(gauge->value(), 217);
  QCOMPARE(gauge->maximum(), 22272);
  QTableView* view = showPage(h, pageOf("MeldTabelle"));
  view->setCurrentIndex(view->model()->index(9, 3));
  ModalAnswer answer([](QDialog* dialog) {
    typeText(dialog->findChild<QLineEdit*>(), "allo");
    dialog->accept();
  });
  QTest::keyClick(view, 'H');
  QVERIFY(answer.ran);
  QCOMPARE(gauge->value(), 222);
}

QTEST_MAIN(EntryEditingTest)
#include "entry_editing_test.moc"
