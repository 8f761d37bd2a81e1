// New / Open / Save / Save as / recent files of the main window against real files.

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>
#include <filesystem>

#include "app/left_pane.h"
#include "app_harness.h"

using quillon::BoxAnswer;
using quillon::app::testing::Harness;
using quillon::app::testing::modal;
using quillon::app::testing::WhenShown;

class FileCommandsTest : public QObject {
  Q_OBJECT

 private slots:
  void saveAsReplaceQuestion();
  void openAsksToSaveFirst();
  void saveWritesTheFileAndNewKeepsItsName();
  void missingRecentFileIsRemoved();
  void fileListHoldsOnlyProjectFiles();
  void previousVersionsBringBackTheChosenOne();
};

namespace {

QByteArray readFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}

// Message 1 with both marks, text and comment; a file of it starts with kSavedStart.
void fillMessageOne(quillon::Project& project) {
  project.messages.setCell(1, 1, "x");
  project.messages.setCell(1, 2, "x");
  project.messages.setCell(1, 4, "Hallo");
  project.messages.setCell(1, 5, "Halle 1");
  project.changed = true;
}
const QByteArray kSavedStart = "MCHallo;Halle 1\r\nM@;\r\n";

}  // namespace

void FileCommandsTest::saveAsReplaceQuestion() {
  // Yes replaces, No chooses again, Cancel still saves over the file.
  for (const auto& [answer, savedOverOld] :
       {std::pair{BoxAnswer::Yes, true}, {BoxAnswer::No, false}, {BoxAnswer::Cancel, true}}) {
    Harness h;
    const QString old = h.path("old.EAY");
    const QString other = h.path("other.EAY");
    writeFile(old, "old content\r\n");
    namespace fs = std::filesystem;
    fs::permissions(old.toStdString(), fs::perms(0600));
    fillMessageOne(h.project());
    h.files.paths = {old, other};
    h.dialog.answer(answer);

    h.activate("MenuFileSaveAs");

    const quillon::Box expected{"Kestrix", "Replace existing file? - " + old.toStdString() + "?",
                                quillon::BoxIcon::Question, quillon::BoxButtons::YesNoCancel,
                                BoxAnswer::Yes};
    QCOMPARE(h.dialog.boxes, std::vector<quillon::Box>{expected});
    QCOMPARE(h.files.titles, QStringList(savedOverOld ? 1 : 2, "Save message file"));
    QCOMPARE(h.files.filters.front(), QString("Message files (*.EAY)"));
    const QString target = savedOverOld ? old : other;
    QVERIFY(readFile(target).startsWith(kSavedStart));
    // The file that held the PIN stays private, and what it held is not lost.
    QCOMPARE(fs::status(old.toStdString()).permissions(), fs::perms(0600));
    const QStringList kept = QDir(h.path(".quillon-history")).entryList(QDir::Files);
    QCOMPARE(kept.size(), savedOverOld ? 1 : 0);
    if (savedOverOld) {
      QCOMPARE(readFile(h.path(".quillon-history/" + kept.front())), QByteArray("old content\r\n"));
    } else {
      QCOMPARE(readFile(old), QByteArray("old content\r\n"));
    }
    QCOMPARE(h.window->state().currentFile, target);
    QCOMPARE(h.settings.value("Settings/Recent1").toString(), target);
    QVERIFY(!h.project().changed);
  }
}

void FileCommandsTest::openAsksToSaveFirst() {
  // No drops the changes; Yes, then a cancelled save dialog, still opens. "" cancels a dialog,
  // "A" is the file.
  const std::tuple<BoxAnswer, QStringList, QStringList> rows[] = {
      {BoxAnswer::No, {"A"}, {"Open message file"}},
      {BoxAnswer::Yes, {"", "A"}, {"Save message file", "Open message file"}},
  };
  for (const auto& [answer, pickedPaths, dialogTitles] : rows) {
    Harness h;
    const QString file = h.path("A.EAY");
    writeFile(file, "MAErste Meldung;Kommentar\r\nL1;;04D2;Station Nord\r\n");
    quillon::Project& project = h.project();
    project.messages.setCell(7, 4, "ungespeichert");
    project.changed = true;
    for (const QString& p : pickedPaths) h.files.paths.push_back(p == "A" ? file : p);
    h.dialog.answer(answer);

    h.activate("tbOpen");

    const quillon::Box saveFirst{"Kestrix", "Data changed. Save?", quillon::BoxIcon::Exclamation,
                                 quillon::BoxButtons::YesNo, BoxAnswer::Yes};
    QCOMPARE(h.dialog.boxes, std::vector<quillon::Box>{saveFirst});
    QCOMPARE(h.files.titles, dialogTitles);
    QCOMPARE(project.messages.cell(1, 1), std::string("x"));
    QCOMPARE(project.messages.cell(1, 4), std::string("Erste Meldung"));
    QCOMPARE(project.messages.cell(7, 4), std::string());
    QCOMPARE(project.pin, std::string("1234"));
    QVERIFY(!project.changed);
    QCOMPARE(h.window->windowTitle(), "[" + file + "] Quillon ");
  }
}

void FileCommandsTest::saveWritesTheFileAndNewKeepsItsName() {
  Harness h;
  const QString file = h.path("keep.EAY");
  h.window->state().currentFile = file;
  fillMessageOne(h.project());

  h.activate("tbSave");
  QVERIFY(readFile(file).startsWith(kSavedStart));
  QVERIFY(!h.project().changed);

  h.project().pin = "1234";
  h.project().flags.entries[3] = "2;2";
  h.project().changed = true;
  h.dialog.answer(BoxAnswer::No);
  h.activate("MenuFileNew");

  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"Data changed. Save?"});
  QVERIFY(h.files.titles.isEmpty());
  QVERIFY(readFile(file).startsWith(kSavedStart));
  QCOMPARE(h.project().messages.cell(1, 4), std::string());
  QCOMPARE(h.project().flags.entries[3], std::string("-1;-1"));
  QCOMPARE(h.find<QLineEdit>("PinNummer")->displayText(), QString("____"));
  QCOMPARE(h.window->state().currentFile, file);
}

void FileCommandsTest::missingRecentFileIsRemoved() {
  QTemporaryDir files;
  const QString present = files.filePath("here.EAY");
  writeFile(present, "M@Da;\r\n");
  Harness h([&](QSettings& s) {
    s.setValue("Settings/Recent1", files.filePath("gone.EAY"));
    s.setValue("Settings/Recent2", present);
  });

  h.activate("MenuFileIns8");
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"File not found"});
  QCOMPARE(h.settings.value("Settings/Recent1").toString(), present);
  QVERIFY(!h.settings.contains("Settings/Recent2"));
  QVERIFY(!h.find<QAction>("MenuFileIns9")->isVisible());

  h.activate("MenuFileIns8");
  QCOMPARE(h.project().messages.cell(1, 4), std::string("Da"));
  QCOMPARE(h.window->state().currentFile, present);
}

void FileCommandsTest::fileListHoldsOnlyProjectFiles() {
  // A folder the list has shown once must not turn up among its parent's project files.
  QTemporaryDir dir;
  QVERIFY(QDir(dir.path()).mkdir("Anlage"));
  for (const QString& name : {QString("Nord.EAY"), QString("Anlage/Sued.EAY")}) {
    QFile file(dir.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
  }
  quillon::app::LeftPane pane;
  pane.show();
  pane.setDirectory(dir.filePath("Anlage"));
  QTRY_COMPARE(pane.listedFiles(), QStringList{"Sued.EAY"});
  pane.setDirectory(dir.path());
  QTRY_COMPARE(pane.listedFiles(), QStringList{"Nord.EAY"});
  // The folder would still be listed if it came back: only the file stays.
  QCoreApplication::processEvents();
  QCOMPARE(pane.listedFiles(), QStringList{"Nord.EAY"});
}

void FileCommandsTest::previousVersionsBringBackTheChosenOne() {
  Harness h;
  const QString file = h.path("A.EAY");
  h.window->state().currentFile = file;
  h.activate("MenuFileVersions");
  QCOMPARE(h.dialog.texts(),
           std::vector<std::string>{"No previous versions of " +
                                    QDir::toNativeSeparators(file).toStdString()});

  quillon::Project& project = h.project();
  for (const char* text : {"Erste", "Zweite", "Dritte"}) {
    project.messages.setCell(1, 4, text);
    project.changed = true;
    h.activate("tbSave");
  }
  project.messages.setCell(2, 4, "ungespeichert");
  project.changed = true;
  h.dialog.boxes.clear();
  h.dialog.answer(BoxAnswer::No);
  int rows = 0;
  WhenShown pick(modal("frmVersions"), [&rows](QDialog* dialog) {
    auto* list = dialog->findChild<QTableWidget*>("grdVersions");
    rows = list->rowCount();
    list->selectRow(rows - 1);  // the oldest
    dialog->findChild<QPushButton*>("cmdRestore")->click();
  });

  h.activate("MenuFileVersions");

  QVERIFY(pick.ran);
  QCOMPARE(rows, 2);
  // Restoring is a load: the save prompt comes first.
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"Data changed. Save?"});
  QCOMPARE(project.messages.cell(1, 4), std::string("Erste"));
  QCOMPARE(project.messages.cell(2, 4), std::string());
  // Until it is saved, the restored version is a change the save prompt guards.
  QVERIFY(project.changed);
  QVERIFY(readFile(file).startsWith("M@Dritte;"));
  QCOMPARE(h.window->state().currentFile, file);
}

QTEST_MAIN(FileCommandsTest)
#include "file_commands_test.moc"
