// The main window's own wiring: the close sequence and its settings, start-up from the
// settings, the language switch, the toolbar and page buttons, and clearing a table.

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include "app_harness.h"

using quillon::BoxAnswer;
using quillon::BoxButtons;
using quillon::BoxIcon;
using quillon::app::testing::Harness;

class MainWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void closeSequence_data();
  void closeSequence();
  void startUpReadsSettings();
  void frenchAtStartLeavesTextsEmpty();
  void languageSwitchReappliesCaptions();
  void commandsReachTheDevice_data();
  void commandsReachTheDevice();
  void printOpensPrintDialog_data();
  void printOpensPrintDialog();
  void logButtonHidesItself();
  void helpViewerMissingIsReported();
  void clearTableAsksFirst_data();
  void clearTableAsksFirst();
  void onlyPinEditsCountAsChanges();
  void standInDeviceCommandsSayNotYet();
};

namespace {

void placeWindow(QSettings& s) {
  // At 96 dots per inch these are whole pixels: 100, 80, 600 x 480.
  s.setValue("Settings/MainLeft", "1500");
  s.setValue("Settings/MainTop", "1200");
  s.setValue("Settings/MainWidth", "9000");
  s.setValue("Settings/MainHeight", "7200");
}

QString menuTitle(const Harness& h, const char* name) {
  return h.window->findChild<QMenu*>(name)->title();
}

QString actionText(const Harness& h, const char* name) {
  return h.window->findChild<QAction*>(name)->text();
}

}  // namespace

void MainWindowTest::closeSequence_data() {
  QTest::addColumn<bool>("maximized");
  QTest::addColumn<bool>("changed");
  QTest::addColumn<QList<BoxAnswer>>("answers");
  QTest::addColumn<bool>("closes");
  QTest::addColumn<QStringList>("boxes");
  QTest::addColumn<QStringList>("deviceCalls");
  QTest::addColumn<QString>("savedWidth");

  QTest::newRow("normalWindowSavesPlacement")
      << false << false << QList<BoxAnswer>{BoxAnswer::Ok} << true
      << QStringList{"Really terminate?"} << QStringList{"closePort"} << "9000";
  QTest::newRow("maximizedKeepsSavedPlacement")
      << true << false << QList<BoxAnswer>{BoxAnswer::Ok} << true
      << QStringList{"Really terminate?"} << QStringList{"closePort"} << "7777";
  QTest::newRow("changedDataAskedAfterPortClosed")
      << false << true << QList<BoxAnswer>{BoxAnswer::Ok, BoxAnswer::No} << true
      << QStringList{"Really terminate?", "Data changed. Save?"} << QStringList{"closePort"}
      << "9000";
  QTest::newRow("cancelKeepsRunning")
      << false << true << QList<BoxAnswer>{BoxAnswer::Cancel} << false
      << QStringList{"Really terminate?"} << QStringList{} << "7777";
}

void MainWindowTest::closeSequence() {
  QFETCH(bool, maximized);
  QFETCH(bool, changed);
  QFETCH(QList<BoxAnswer>, answers);
  QFETCH(bool, closes);
  QFETCH(QStringList, boxes);
  QFETCH(QStringList, deviceCalls);
  QFETCH(QString, savedWidth);

  Harness h(placeWindow);
  // A width the window does not have: it shows whether the placement was written.
  h.settings.setValue("Settings/MainWidth", "7777");
  h.window->state().project.changed = changed;
  h.window->state().language = quillon::kEnglish;
  maximized ? h.window->showMaximized() : h.window->show();
  QCoreApplication::processEvents();
  for (BoxAnswer a : answers) h.dialog.answer(a);

  QCOMPARE(h.window->close(), closes);

  QStringList shown;
  for (const auto& box : h.dialog.boxes) shown << QString::fromStdString(box.text);
  QCOMPARE(shown, boxes);
  const quillon::Box question{"Kestrix", "Really terminate?", BoxIcon::Question,
                              BoxButtons::OkCancel, BoxAnswer::Ok};
  QCOMPARE(h.dialog.boxes.front(), question);
  QCOMPARE(h.devices->calls, deviceCalls);
  QCOMPARE(h.settings.value("Settings/MainWidth").toString(), savedWidth);
  if (!closes) {
    QVERIFY(!h.settings.contains("Settings/MyProfile"));
    QVERIFY(h.window->state().project.changed);
    return;
  }
  if (!maximized) {
    QCOMPARE(h.settings.value("Settings/MainLeft").toString(), QString("1500"));
    QCOMPARE(h.settings.value("Settings/MainHeight").toString(), QString("7200"));
  }
  const QString profile = h.settings.value("Settings/MyProfile").toString();
  QCOMPARE(profile, h.window->panelText(quillon::StatusPanel::Clock));
  QVERIFY(QRegularExpression("^\\d\\d\\.\\d\\d\\.\\d{4}   \\d\\d:\\d\\d:\\d\\d$")
              .match(profile)
              .hasMatch());
  QCOMPARE(h.settings.value("Language/MyLang").toString(), QString("0"));
  QVERIFY(!h.settings.value("Settings/MyDir").toString().isEmpty());
  QVERIFY(!h.settings.contains("Einstellungen/ComNr"));
}

void MainWindowTest::startUpReadsSettings() {
  QTemporaryDir work;
  Harness h([&](QSettings& s) {
    placeWindow(s);
    s.setValue("Language/MyLang", "1");
    s.setValue("Settings/MyDir", work.path());
    s.setValue("Einstellungen/ComNr", "3");
  });
  const QString startDir = QDir::currentPath();
  QCOMPARE(h.window->size(), QSize(600, 480));
  QCOMPARE(h.window->pos(), QPoint(100, 80));
  QCOMPARE(h.window->state().portNumber, 3);
  QCOMPARE(h.window->state().language, 1);
  QCOMPARE(QDir::currentPath(), QDir(work.path()).canonicalPath());
  QCOMPARE(h.window->windowTitle(), QString("[NEW.EAY] Quillon "));
  QCOMPARE(h.window->panelText(quillon::StatusPanel::Port),
           QString("COM 3,9600, N ,8 ,1 not active"));
  QCOMPARE(menuTitle(h, "MenuFile"), QString("Datei"));
  QCOMPARE(h.window->state().project.flags.entries[1], std::string("-1;-1"));
  QDir::setCurrent(startDir);
}

void MainWindowTest::frenchAtStartLeavesTextsEmpty() {
  Harness h([](QSettings& s) { s.setValue("Language/MyLang", "2"); });
  QCOMPARE(menuTitle(h, "MenuFile"), QString());
  QCOMPARE(h.window->findChild<QAction*>("tbNew")->toolTip(), QString());
  QVERIFY(!h.window->findChild<QLabel*>("picSprache")->pixmap().isNull());
  h.dialog.answer(BoxAnswer::Cancel);
  QVERIFY(!h.window->close());
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{""});
}

void MainWindowTest::languageSwitchReappliesCaptions() {
  Harness h;
  struct Caption {
    const char* what;
    std::function<QString(const Harness&)> read;
    QString english;
    QString german;
  };
  const std::vector<Caption> captions = {
      {"file menu", [](const Harness& x) { return menuTitle(x, "MenuFile"); }, "&File", "Datei"},
      {"help menu", [](const Harness& x) { return menuTitle(x, "MenuHelp"); }, "&Help", "Hilfe"},
      {"save as", [](const Harness& x) { return actionText(x, "MenuFileSaveAs"); }, "Save as",
       "Speichern Unter"},
      {"new tooltip",
       [](const Harness& x) { return x.window->findChild<QAction*>("tbNew")->toolTip(); }, "New",
       "Neu"},
      {"print tooltip",
       [](const Harness& x) { return x.window->findChild<QAction*>("tbPrint")->toolTip(); },
       "Print table ", "Tabelle drucken"},
      {"first tab",
       [](const Harness& x) { return x.window->findChild<QTabWidget*>("Eingabe")->tabText(0); },
       "Messages", "Meldungen"},
      {"flag tab",
       [](const Harness& x) { return x.window->findChild<QTabWidget*>("Eingabe")->tabText(3); },
       "Marker Setting", "Merkerfestlegung"},
      {"text header",
       [](const Harness& x) {
         return x.window->model(quillon::TableKind::Messages)
             ->headerData(3, Qt::Horizontal, Qt::DisplayRole)
             .toString();
       },
       "Messages", "Meldungen"},
      {"download button",
       [](const Harness& x) { return x.window->findChild<QPushButton*>("cmdMeldDown")->text(); },
       "Download messages", "Download Meldungen"},
      {"set flag button",
       [](const Harness& x) { return x.window->findChild<QPushButton*>("cmdSmsSet")->text(); },
       "Set as SMS flag", "Als SMS-Merker setzen"},
  };
  auto expectAll = [&](bool german) {
    for (const Caption& c : captions) {
      const QString expected = german ? c.german : c.english;
      if (c.read(h) != expected) {
        QFAIL(qPrintable(QString("%1: \"%2\" instead of \"%3\"").arg(c.what, c.read(h), expected)));
      }
    }
  };
  expectAll(false);
  h.window->findChild<QAction*>("mnuLangGerman")->trigger();
  expectAll(true);
  h.window->findChild<QAction*>("mnuLangFrench")->trigger();
  expectAll(true);
  QCOMPARE(h.window->state().language, 1);
  h.dialog.answer(BoxAnswer::Cancel);
  QVERIFY(!h.window->close());
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"wirklich beenden"});
  h.window->findChild<QAction*>("mnuLangEnglish")->trigger();
  expectAll(false);
}

void MainWindowTest::commandsReachTheDevice_data() {
  QTest::addColumn<QString>("control");
  QTest::addColumn<QString>("call");
  QTest::newRow("toolbarDownloadAll") << "tbDown"
                                      << "downloadAll";
  QTest::newRow("menuReadAll") << "MenuConnUpAll"
                               << "uploadAll";
  QTest::newRow("messagesUpload") << "cmdMeldUp"
                                  << "uploadMessages";
  QTest::newRow("phonesDownload") << "cmdTelDown"
                                  << "downloadPhones";
  QTest::newRow("pinDownload") << "cmdDown"
                               << "downloadConfiguration";
  QTest::newRow("flagsUpload") << "cmdEasy800Up"
                               << "uploadFlags";
  QTest::newRow("acknowledgementRequest") << "cmdQuittung"
                                          << "acknowledgementRequest";
  QTest::newRow("smscListButton") << "cmdSMSCList"
                                  << "smsCentreList";
  QTest::newRow("identification") << "mnuConfigVersion"
                                  << "identifyDevice";
  QTest::newRow("logger") << "MenuHelpMonitor"
                          << "readLogger";
  QTest::newRow("portSettings") << "MenuConfigCom"
                                << "portSettings";
}

void MainWindowTest::commandsReachTheDevice() {
  QFETCH(QString, control);
  QFETCH(QString, call);
  Harness h;
  if (auto* button = h.window->findChild<QPushButton*>(control)) {
    button->click();
  } else {
    h.window->findChild<QAction*>(control)->trigger();
  }
  QCOMPARE(h.devices->calls, QStringList{call});
}

void MainWindowTest::printOpensPrintDialog_data() {
  QTest::addColumn<QString>("control");
  QTest::newRow("toolbar") << "tbPrint";
  QTest::newRow("fileMenu") << "MenuFilePrint";
}

void MainWindowTest::printOpensPrintDialog() {
  QFETCH(QString, control);
  Harness h;
  QString opened;
  QString title;
  quillon::app::testing::ModalAnswer answer([&](QDialog* dialog) {
    opened = dialog->objectName();
    title = dialog->windowTitle();
    dialog->reject();
  });
  h.window->findChild<QAction*>(control)->trigger();
  QVERIFY(answer.ran);
  QCOMPARE(opened, QString("PrtForm"));
  QCOMPARE(title, QString("Print"));
  QVERIFY(h.dialog.boxes.empty());
}

void MainWindowTest::logButtonHidesItself() {
  Harness h;
  const QString startDir = QDir::currentPath();
  QDir::setCurrent(h.dir.path());
  auto* log = h.window->findChild<QAction*>("tbLog");
  log->trigger();
  QDir::setCurrent(startDir);

  QVERIFY(!log->isVisible());
  QVERIFY(h.window->state().trafficLog.isOpen());
  const QStringList logs = QDir(h.dir.path()).entryList({"*.LOG"});
  QCOMPARE(logs.size(), 1);
  QVERIFY(QRegularExpression("^\\d{4}_\\d\\d_\\d\\d\\d{1,5}\\.LOG$").match(logs[0]).hasMatch());
  const std::string expected =
      "Log file " + logs[0].toStdString() + "  in directory:\r" + h.dir.path().toStdString();
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{expected});
  QCOMPARE(h.dialog.boxes[0].title, std::string());
}

void MainWindowTest::helpViewerMissingIsReported() {
  Harness h;
  h.window->findChild<QAction*>("MenuHelpFirst")->trigger();
  h.window->findChild<QAction*>("tbHelp")->trigger();
  QCOMPARE(h.started, (QStringList{"winhelp FIRSTSTEP.hlp", "winhelp HXB27.hlp"}));
  QCOMPARE(h.dialog.texts(),
           (std::vector<std::string>{"The help viewer could not be started: winhelp FIRSTSTEP.hlp",
                                     "The help viewer could not be started: winhelp HXB27.hlp"}));
}

void MainWindowTest::clearTableAsksFirst_data() {
  QTest::addColumn<int>("page");
  QTest::addColumn<BoxAnswer>("answer");
  QTest::addColumn<bool>("cleared");
  QTest::newRow("filtersYes") << 1 << BoxAnswer::Yes << true;
  QTest::newRow("phonesNo") << 2 << BoxAnswer::No << false;
}

void MainWindowTest::clearTableAsksFirst() {
  QFETCH(int, page);
  QFETCH(BoxAnswer, answer);
  QFETCH(bool, cleared);
  Harness h;
  quillon::Project& project = h.window->state().project;
  project.filters.setCell(3, 1, "Filter");
  project.phones.setCell(3, 1, "+4930");
  project.messages.setCell(3, 4, "Meldung");
  h.window->findChild<QTabWidget*>("Eingabe")->setCurrentIndex(page);
  h.dialog.answer(answer);

  h.window->findChild<QAction*>("tbClear")->trigger();

  const quillon::Box question{"Kestrix", "Really clear the table?", BoxIcon::Question,
                              BoxButtons::YesNo, BoxAnswer::No};
  QCOMPARE(h.dialog.boxes, std::vector<quillon::Box>{question});
  const quillon::Table& table = page == 1 ? project.filters : project.phones;
  QCOMPARE(table.cell(3, 1).empty(), cleared);
  QCOMPARE(project.changed, cleared);
  QCOMPARE(project.messages.cell(3, 4), std::string("Meldung"));
}

void MainWindowTest::onlyPinEditsCountAsChanges() {
  Harness h;
  h.window->show();
  h.window->findChild<QTabWidget*>("Eingabe")->setCurrentIndex(2);
  quillon::Project& project = h.window->state().project;

  QTest::keyClicks(h.window->findChild<QLineEdit*>("txtSMSC"), "+491722270333");
  QTest::keyClicks(h.window->findChild<QLineEdit*>("edStation"), "Nord");
  QCOMPARE(project.smsCentre, std::string("+491722270333"));
  QCOMPARE(project.station, std::string("Nord"));
  QVERIFY(!project.changed);

  auto* pin = h.window->findChild<QLineEdit*>("PinNummer");
  pin->setFocus();
  pin->home(false);
  QTest::keyClicks(pin, "12");
  // The mask keeps its placeholders, which is how a short PIN is recognised later.
  QCOMPARE(project.pin, std::string("12__"));
  QVERIFY(project.changed);
}

void MainWindowTest::standInDeviceCommandsSayNotYet() {
  Harness h([](QSettings& s) { s.setValue("Einstellungen/ComNr", "2"); }, false);
  QCOMPARE(h.window->panelText(quillon::StatusPanel::Port),
           QString("COM 2,9600, N ,8 ,1 not active"));
  h.window->findChild<QPushButton*>("cmdMeldDown")->click();
  QCOMPARE(h.dialog.texts(),
           std::vector<std::string>{"This command is not available in this build yet."});
}

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
