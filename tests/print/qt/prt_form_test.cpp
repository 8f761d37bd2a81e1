#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "print/qt/print_service.h"
#include "print/qt/prt_form.h"
#include "scripted_dialog.h"

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

UiTexts englishTexts() {
  UiTexts texts;
  texts.fill(kEnglish);
  return texts;
}

QPushButton* okButton(PrtForm& form) {
  return form.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

}  // namespace

class PrtFormTest : public QObject {
  Q_OBJECT

 private slots:
  void printCommandOpensPrtFormAndWritesThePdf() {
    QTemporaryDir dir;
    testing::ScriptedDialog boxes;
    PrintService service(boxes);
    Project project;
    project.messages.setCell(1, 4, "hello");
    const QString projectPath = dir.filePath(u"PUMPS.EAY"_s);

    QString suggested;
    QTimer::singleShot(0, [&] {
      auto* form = qobject_cast<PrtForm*>(QApplication::activeModalWidget());
      QVERIFY(form);
      QCOMPARE(form->objectName(), u"PrtForm"_s);
      // The PDF entry, so that no real printer is ever used by the test.
      auto* printers = form->findChild<QComboBox*>(u"cboPrinter"_s);
      printers->setCurrentIndex(printers->count() - 1);
      auto* file = form->findChild<QLineEdit*>(u"txtFile"_s);
      suggested = file->text();
      // A PDF needs a file name before OK.
      file->clear();
      QVERIFY(!okButton(*form)->isEnabled());
      QTest::keyClicks(file, suggested);
      QVERIFY(okButton(*form)->isEnabled());
      QTest::keyClicks(form->findChild<QLineEdit*>(u"txtMemo"_s), u"first"_s);
      okButton(*form)->click();
    });
    service.showPrintDialog(nullptr, project, englishTexts(), projectPath);
    QCOMPARE(suggested, dir.filePath(u"PUMPS.pdf"_s));
    QVERIFY(QFile::exists(suggested));

    QVERIFY(boxes.boxes.empty());
  }

  void aFileThatCannotBeWrittenIsToldInOneBox_data() {
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("text");
    QTest::newRow("english") << int{kEnglish}
                             << u"Printing failed: /nonexistent-quillon-dir/out.pdf"_s;
    QTest::newRow("german") << int{kGerman}
                            << u"Drucken nicht m\u00f6glich: /nonexistent-quillon-dir/out.pdf"_s;
  }
  void aFileThatCannotBeWrittenIsToldInOneBox() {
    QFETCH(int, language);
    QFETCH(QString, text);
    UiTexts texts;
    texts.fill(language);
    testing::ScriptedDialog boxes;
    PrintService service(boxes);
    QVERIFY(!service.print({{}, u"/nonexistent-quillon-dir/out.pdf"_s, {}, {}}, Project{}, texts,
                           u"P.EAY"_s, QDate(2025, 1, 2)));
    QCOMPARE(boxes.boxes.size(), std::size_t{1});
    QCOMPARE(boxes.boxes[0].title, std::string("Kestrix"));
    QCOMPARE(QString::fromLatin1(boxes.boxes[0].text), text);
    QVERIFY(boxes.boxes[0].icon == BoxIcon::Critical);
  }
};

QTEST_MAIN(PrtFormTest)
#include "prt_form_test.moc"
