// The window at its default size (11250 x 7000 twips) and on the common screens, in English and
// in German: every column of the messages page and every button of the flag page lies wholly
// inside the visible area, extra width goes to the message text, the phone boxes show whole
// numbers, and nothing on the flag page moves when its labels fill. The text entry box keeps its
// buttons whole beside a 160-character text.

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QtTest>

#include "app_harness.h"

using namespace quillon::app::testing;

class LayoutTest : public QObject {
  Q_OBJECT

 private slots:
  void everythingInSight_data();
  void everythingInSight();
  void entryBoxKeepsItsButtons_data();
  void entryBoxKeepsItsButtons();
};

namespace {

// The window's content, as far as it is drawn: a widget's rectangle in window coordinates.
QRect inWindow(const QWidget* widget) {
  return QRect(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
}

QString describe(const QRect& r) {
  return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

const char* const kFlagButtons[] = {"cmdSmsSet", "cmdSmsClear",    "cmdSmsClearAll",
                                    "cmdFlag",   "cmdEasy800Down", "cmdEasy800Up"};

}  // namespace

void LayoutTest::everythingInSight_data() {
  QTest::addColumn<int>("language");
  QTest::addColumn<QSize>("size");  // empty: the default size from an empty settings store

  // At 96 dots per inch the default 11250 x 7000 twips are 750 x 467 pixels.
  QTest::newRow("defaultEnglish") << 0 << QSize();
  QTest::newRow("defaultGerman") << 1 << QSize();
  // A 1366 x 768 laptop and a 1920 x 1080 screen, maximised below a panel.
  QTest::newRow("laptopGerman") << 1 << QSize(1366, 710);
  QTest::newRow("wideEnglish") << 0 << QSize(1920, 1020);
}

void LayoutTest::everythingInSight() {
  QFETCH(int, language);
  QFETCH(QSize, size);
  Harness h([language](QSettings& s) { s.setValue("Language/MyLang", QString::number(language)); });
  quillon::Project& project = h.project();
  project.messages.setCell(3, quillon::kMessageTextColumn, std::string(160, 'M'));
  project.messages.setCell(3, quillon::kMessageCommentColumn, std::string(95, 'c'));
  project.phones.setCell(2, quillon::kPhoneNumberColumn, "+4917107600001234567");
  project.flags.entries[1] = "3;2";
  h.window->projectReplaced();
  if (size.isValid()) h.window->resize(size);
  h.window->show();
  QVERIFY(QTest::qWaitForWindowExposed(h.window.get()));
  // The layout fits the size asked for: the window did not grow past it.
  QCOMPARE(h.window->size(), size.isValid() ? size : QSize(750, 467));
  const QRect window = h.window->rect();
  auto* pages = h.find<QTabWidget>("Eingabe");

  // Messages: the three marks, the text and the comment, whole, also after moving to the
  // comment of a far row, as an edit there does.
  pages->setCurrentIndex(0);
  auto* view = h.find<QTableView>("MeldTabelle");
  for (const QModelIndex& cell : {view->model()->index(0, 3), view->model()->index(60, 4)}) {
    view->setCurrentIndex(cell);
    view->scrollTo(cell);
    QCoreApplication::processEvents();
    const QRect viewport = inWindow(view->viewport());
    QVERIFY2(window.contains(viewport), qPrintable(describe(viewport)));
    QCOMPARE(view->horizontalScrollBar()->value(), 0);
    int used = 0;
    for (int column = 0; column < 5; ++column) {
      const int left = view->columnViewportPosition(column);
      const int right = left + view->columnWidth(column);
      QVERIFY2(left >= 0 && right <= viewport.width(),
               qPrintable(QStringLiteral("column %1: %2..%3 of %4")
                              .arg(column)
                              .arg(left)
                              .arg(right)
                              .arg(viewport.width())));
      used += view->columnWidth(column);
    }
    // The text takes what the others leave; the comment never more than the text.
    QCOMPARE(used, viewport.width());
    QVERIFY(view->columnWidth(3) > view->columnWidth(4));
  }
  // Extra width goes to the text: the comment keeps the width it has at the default size.
  QCOMPARE(view->columnWidth(4), view->fontMetrics().averageCharWidth() * 18);

  // Phone numbers: the SMS centre's box shows all twenty digits and the "+".
  pages->setCurrentIndex(2);
  QCoreApplication::processEvents();
  auto* centre = h.find<QLineEdit>("txtSMSC");
  QVERIFY(window.contains(inWindow(centre)));
  QVERIFY(centre->width() >=
          centre->fontMetrics().horizontalAdvance(QStringLiteral("+4917107600001234567")) + 8);
  auto* phones = h.find<QTableView>("TelTabelle");
  QVERIFY(phones->columnWidth(0) >=
          phones->fontMetrics().horizontalAdvance(QStringLiteral("+4917107600001234567")));

  // Flags: every button whole, and in the same place before and after a flag is chosen whose
  // message fills its label.
  pages->setCurrentIndex(3);
  QCoreApplication::processEvents();
  const QRect page = inWindow(pages->currentWidget());
  QVERIFY(window.contains(page));
  QList<QRect> before;
  for (const char* name : kFlagButtons) before << inWindow(h.find<QPushButton>(name));
  QTest::mouseClick(h.find<QWidget>("lblMerker0"), Qt::LeftButton);
  QCoreApplication::processEvents();
  QCOMPARE(h.find<QWidget>("lblMeldung")->property("text").toString(), QString(160, 'M'));
  for (std::size_t i = 0; i < std::size(kFlagButtons); ++i) {
    auto* button = h.find<QPushButton>(kFlagButtons[i]);
    const QRect shown = inWindow(button);
    QVERIFY2(page.contains(shown), qPrintable(kFlagButtons[i] + (" " + describe(shown))));
    QVERIFY2(shown.width() >= button->sizeHint().width() &&
                 shown.height() >= button->sizeHint().height(),
             qPrintable(kFlagButtons[i] + (" clipped: " + describe(shown))));
    QCOMPARE(shown, before[static_cast<qsizetype>(i)]);
  }
}

void LayoutTest::entryBoxKeepsItsButtons_data() {
  QTest::addColumn<int>("language");
  QTest::newRow("english") << 0;
  QTest::newRow("german") << 1;
}

void LayoutTest::entryBoxKeepsItsButtons() {
  QFETCH(int, language);
  Harness h([language](QSettings& s) { s.setValue("Language/MyLang", QString::number(language)); });
  // 160 characters without a blank: the preview must wrap them anywhere to show them all.
  const std::string text(160, 'W');
  h.project().messages.setCell(1, quillon::kMessageTextColumn, text);
  h.window->projectReplaced();
  h.window->show();
  auto* view = h.find<QTableView>("MeldTabelle");
  view->setCurrentIndex(view->model()->index(0, 3));

  QStringList problems;
  bool previewWhole = false;
  WhenShown look(modal("MInput"), [&](QDialog* box) {
    QCoreApplication::processEvents();
    for (const char* name : {"cmdOK", "cmdCancel"}) {
      auto* button = box->findChild<QPushButton*>(name);
      const QRect shown(button->mapTo(box, QPoint(0, 0)), button->size());
      if (!box->rect().contains(shown) || shown.height() < button->sizeHint().height())
        problems << QString(name) + " " + describe(shown);
    }
    auto* preview = box->findChild<QTextBrowser*>("lblVorschau");
    previewWhole = preview->toPlainText().contains(QString(160, 'W')) &&
                   preview->document()->size().height() <= preview->viewport()->height();
    box->reject();
  });
  QTest::keyClick(view, Qt::Key_Return);
  QVERIFY(look.ran);
  QVERIFY2(problems.isEmpty(), qPrintable(problems.join(", ")));
  QVERIFY(previewWhole);
}

QTEST_MAIN(LayoutTest)
#include "layout_test.moc"
