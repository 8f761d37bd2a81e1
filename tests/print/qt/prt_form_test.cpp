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
    UiTexts english;
    english.fill(kEnglish);
    service.showPrintDialog(nullptr, project, english, projectPath);
    QCOMPARE(suggested, dir.filePath(u"PUMPS.pdf"_s));
    QVERIFY(QFile::exists(suggested));

    QVERIFY(boxes.boxes.empty());
  }

  void aFileThatCannotBeWrittenIsToldInOneBox() {
    const std::pair<int, QString> rows[] = {
        {kEnglish,
         u"Printing failed: /nonexistent-quillon-dir/out.pdf: No such file or directory"_s},
        {kGerman,
         u"Drucken nicht m\u00f6glich: /nonexistent-quillon-dir/out.pdf: No such file or directory"_s}};
    for (const auto& [language, text] : rows) {
      UiTexts texts;
      texts.fill(language);
      testing::ScriptedDialog boxes;
      QVERIFY(!PrintService(boxes).print({{}, u"/nonexistent-quillon-dir/out.pdf"_s, {}, {}},
                                         Project{}, texts, u"P.EAY"_s, QDate(2025, 1, 2)));
      const Box expected{"Kestrix", text.toLatin1().toStdString(), BoxIcon::Critical};
      QCOMPARE(boxes.boxes, std::vector<Box>{expected});
    }
  }
};

QTEST_MAIN(PrtFormTest)
#include "prt_form_test.moc"
