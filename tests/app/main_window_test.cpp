// The main window's own wiring: the close sequence and its settings, start-up from the
// settings, the language switch, the toolbar, menu and page commands, and clearing a table.

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QtTest>

#include "app/shell_text.h"
#include "app/window_placement.h"
#include "app_harness.h"

using quillon::BoxAnswer;
using quillon::BoxButtons;
using quillon::BoxIcon;
using namespace quillon::app::testing;

class MainWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void closeSequence();
  void startUpReadsSettings();
  void unusableSettingsStillShowTheWindow();
  void placementOnTheNearestScreen();
  void titleIsShortenedPastFiftyCharacters();
  void languageSwitchReappliesCaptions();
  void manualCoversEveryResultInBothLanguages();
  void everyCommandReachesItsTarget();
  void clearTableAsksFirst();
  void onlyPinEditsCountAsChanges();
};

namespace {

void placeWindow(QSettings& s) {
  // At 96 dots per inch these are whole pixels: 100, 80, 600 x 480.
  s.setValue("Settings/MainLeft", "1500");
  s.setValue("Settings/MainTop", "1200");
  s.setValue("Settings/MainWidth", "9000");
  s.setValue("Settings/MainHeight", "7200");
}

// Each control with the one device command it must call (the device tests drive the rest).
constexpr const char* kWiring =
    "tbDown downloadAll,tbUp uploadAll,cmdMeldUp uploadMessages,cmdTelDown downloadPhones,"
    "cmdTelUp uploadPhones,cmdDown downloadConfiguration,cmdUp uploadConfiguration,"
    "cmdEasy800Down downloadFlags,cmdEasy800Up uploadFlags,cmdQuittung acknowledgementRequest,"
    "MenuConfigCom portSettings,MenuConfigSMSC smsCentreList,mnuConfigVersion identifyDevice,"
    "mnuConfigUmlaut substitutionTable,MenuHelpMonitor readLogger";

}  // namespace

void MainWindowTest::closeSequence() {
  struct Row {
    const char* name;
    bool maximized;
    bool changed;
    QList<BoxAnswer> answers;
    QStringList boxes;
    QString savedWidth;  // "7777": the placement was not written
  };
  const QStringList question = {"Really terminate?"};
  const Row rows[] = {
      {"normalWindowSavesPlacement", false, false, {BoxAnswer::Ok}, question, "9000"},
      {"maximizedKeepsSavedPlacement", true, false, {BoxAnswer::Ok}, question, "7777"},
      {"changedDataAskedAfterPortClosed",
       false,
       true,
       {BoxAnswer::Ok, BoxAnswer::No},
       question + QStringList{"Data changed. Save?"},
       "9000"},
      {"cancelKeepsRunning", false, true, {BoxAnswer::Cancel}, question, "7777"},
  };
  for (const Row& row : rows) {
    const bool closes = row.answers.front() == BoxAnswer::Ok;
    Harness h(placeWindow);
    // A width the window does not have: it shows whether the placement was written.
    h.settings.setValue("Settings/MainWidth", "7777");
    h.project().changed = row.changed;
    row.maximized ? h.window->showMaximized() : h.window->show();
    QCoreApplication::processEvents();
    for (BoxAnswer a : row.answers) h.dialog.answer(a);

    QVERIFY2(h.window->close() == closes, row.name);

    QStringList shown;
    for (const auto& box : h.dialog.boxes) shown << QString::fromStdString(box.text);
    QCOMPARE(shown, row.boxes);
    const quillon::Box asked{"Kestrix", "Really terminate?", BoxIcon::Question,
                             BoxButtons::OkCancel, BoxAnswer::Ok};
    QCOMPARE(h.dialog.boxes.front(), asked);
    QCOMPARE(h.recorded->calls, closes ? QStringList{"closePort"} : QStringList{});
    QVERIFY2(h.settings.value("Settings/MainWidth").toString() == row.savedWidth, row.name);
    if (!closes) {
      QVERIFY(h.project().changed);
      continue;
    }
    QCOMPARE(h.settings.value("Settings/MyProfile").toString(),
             h.window->panelText(quillon::StatusPanel::Clock));
    QCOMPARE(h.settings.value("Language/MyLang").toString(), QString("0"));
    QVERIFY(!h.settings.value("Settings/MyDir").toString().isEmpty());
  }
}

void MainWindowTest::startUpReadsSettings() {
  QTemporaryDir work;
  const QString startDir = QDir::currentPath();
  Harness h([&](QSettings& s) {
    s.setValue("Language/MyLang", "1");
    s.setValue("Settings/MyDir", work.path());
  });
  const QString currentDir = QDir::currentPath();
  QDir::setCurrent(startDir);
  QCOMPARE(currentDir, QDir(work.path()).canonicalPath());
  QCOMPARE(h.find<QMenu>("MenuFile")->title(), QString("&Datei"));
  QCOMPARE(h.window->windowTitle(), QString("[NEW.EAY] Quillon "));

  // French at start leaves every text empty, the close question's too.
  Harness french([](QSettings& s) { s.setValue("Language/MyLang", "2"); });
  QCOMPARE(french.find<QAction>("tbNew")->toolTip(), QString());
  french.dialog.answer(BoxAnswer::Cancel);
  QVERIFY(!french.window->close());
  QCOMPARE(french.dialog.texts(), std::vector<std::string>{""});
}

void MainWindowTest::unusableSettingsStillShowTheWindow() {
  // The offscreen screen is 800 x 800 at 96 dots per inch. The defaults 1000, 1000, 11250 x 7000
  // twips are 67, 67, 750 x 467 pixels.
  const QRect defaults(67, 67, 750, 467);
  const std::tuple<QString, QString, QRect> rows[] = {
      {"Settings/MainLeft", "links", defaults},
      {"Settings/MainTop", "nan", defaults},
      {"Settings/MainWidth", "0", defaults},
      {"Settings/MainHeight", "-7000", defaults},
      {"Settings/MainLeft", "-99999999", QRect(0, 67, 750, 467)},  // moved to the edge
      {"Settings/MainTop", "1e300", QRect(50, 333, 750, 467)},     // moved up
      // Wider than the screen keeps its title bar shown.
      {"Settings/MainWidth", "99999999", QRect(67, 67, 800, 467)},
      {"Language/MyLang", "65537", defaults},  // beyond sixteen bits: English
      {"Language/MyLang", "7", defaults},      // outside the three: the table stays empty
  };
  for (const auto& [key, value, geometry] : rows) {
    Harness h([&](QSettings& s) { s.setValue(key, value); });
    QVERIFY2(QRect(h.window->pos(), h.window->size()) == geometry, qPrintable(key + " " + value));
    QCOMPARE(h.find<QMenu>("MenuFile")->title(), QString(value == "7" ? "" : "&File"));
  }
}

void MainWindowTest::placementOnTheNearestScreen() {
  // Two screens side by side: 0..1919 and, lower, 1920..3199.
  const QList<QRect> screens{QRect(0, 0, 1920, 1080), QRect(1920, 200, 1280, 1024)};
  const std::pair<QRect, QRect> rows[] = {
      {QRect(100, 100, 800, 600), QRect(100, 100, 800, 600)},         // on the first
      {QRect(1500, 200, 800, 600), QRect(1500, 200, 800, 600)},       // across both
      {QRect(-300, 10, 800, 600), QRect(-300, 10, 800, 600)},         // title bar half out stays
      {QRect(100, -30, 800, 600), QRect(100, 0, 800, 600)},           // title bar above goes down
      {QRect(9000, 300, 800, 600), QRect(2400, 300, 800, 600)},       // far right onto the second
      {QRect(2000, 5000, 1600, 1200), QRect(1920, 200, 1280, 1024)},  // shrunk to the second
      {QRect(500, 1500, 400, 300), QRect(500, 780, 400, 300)},        // in the gap under the first
  };
  for (const auto& [wanted, placed] : rows)
    QCOMPARE(quillon::app::placeOnScreens(wanted, screens), placed);
}

void MainWindowTest::titleIsShortenedPastFiftyCharacters() {
  // 48 characters + brackets = 50: still whole.
  QCOMPARE(quillon::app::titleFor("/home/anna/projects/pumpstation/nord/anlage1.EAY"),
           QString("[/home/anna/projects/pumpstation/nord/anlage1.EAY] Quillon "));
  QCOMPARE(quillon::app::titleFor("/home/anna/projects/pumpstation/nord/anlage12.EAY"),
           QString("[/home/anna/proj ... /pumpstation/nord/anlage12.EAY] Quillon "));
}

void MainWindowTest::languageSwitchReappliesCaptions() {
  // A German start, then switches both ways: the captions are the text table's, and Qt's own
  // words in its boxes and file dialog come from the translations Qt ships.
  Harness h([](QSettings& s) { s.setValue("Language/MyLang", "1"); });
  auto captions = [&h] {
    auto* pages = h.find<QTabWidget>("Eingabe");
    QMessageBox box;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    return QStringList{
        h.find<QMenu>("MenuFile")->title(),
        h.find<QAction>("MenuFileSaveAs")->text(),
        h.find<QAction>("tbPrint")->toolTip(),
        pages->tabText(0),
        pages->tabText(3),
        h.window->model(quillon::TableKind::Messages)
            ->headerData(3, Qt::Horizontal, Qt::DisplayRole)
            .toString(),
        h.find<QPushButton>("cmdMeldDown")->text(),
        h.find<QPushButton>("cmdSmsSet")->text(),
        box.button(QMessageBox::Yes)->text(),
        box.button(QMessageBox::Cancel)->text(),
        QCoreApplication::translate("QFileDialog", "Look in:"),
    };
  };
  // Menu entries carry a mnemonic in either language; "S" is Save's, so Save as takes "a" / "U".
  const QStringList english = {"&File",          "Save &as", "Print table ",      "Messages",
                               "Marker Setting", "Messages", "Download messages", "Set as SMS flag",
                               "&Yes",           "Cancel",   "Look in:"};
  const QStringList german = {
      "&Datei",    "Speichern &Unter",   "Tabelle drucken",       "Meldungen", "Merkerfestlegung",
      "Meldungen", "Download Meldungen", "Als SMS-Merker setzen", "&Ja",       "Abbrechen",
      "Suchen in:"};
  QCOMPARE(captions(), german);
  h.find<QAction>("mnuLangEnglish")->trigger();
  QCOMPARE(captions(), english);
  // French changes nothing.
  h.find<QAction>("mnuLangFrench")->trigger();
  QCOMPARE(captions(), english);
  h.find<QAction>("mnuLangGerman")->trigger();
  QCOMPARE(captions(), german);
  // The program's own texts are the text table's, never Qt's.
  h.dialog.answer(BoxAnswer::Cancel);
  QVERIFY(!h.window->close());
  QCOMPARE(h.dialog.texts(), std::vector<std::string>{"wirklich beenden"});
}

void MainWindowTest::manualCoversEveryResultInBothLanguages() {
  // Both manuals have the chapters the Help menu opens and one for each failure result 1 to 8,
  // and every picture they show is built into the program.
  quillon::app::HelpWindow help;
  for (const int language : {0, 1}) {
    QFile page(":" + quillon::app::manualUrl(language).path());
    QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(page.fileName()));
    const QString html = QString::fromUtf8(page.readAll());
    QStringList anchors = {"contents", "first-steps"};
    for (int result = 1; result <= 8; ++result) anchors << QString("result-%1").arg(result);
    for (const QString& anchor : anchors)
      QVERIFY2(html.contains("id=\"" + anchor + "\""), qPrintable(page.fileName() + " " + anchor));
    const QRegularExpression picture("<img src=\"([^\"]+)\"");
    int pictures = 0;
    for (const auto& match : picture.globalMatch(html)) {
      ++pictures;
      QVERIFY2(QFile::exists(":/manual/" + match.captured(1)), qPrintable(match.captured(1)));
    }
    QVERIFY(pictures >= 6);
  }
}

void MainWindowTest::everyCommandReachesItsTarget() {
  Harness h;
  const QStringList wiring = QString(kWiring).split(',');
  for (const QString& row : wiring) {
    h.recorded->calls.clear();
    h.activate(row.section(' ', 0, 0));
    QVERIFY2(h.recorded->calls == QStringList{row.section(' ', 1)}, qPrintable(row));
  }

  WhenShown cancel(modal("PrtForm"), [](QDialog* dialog) { dialog->reject(); });
  h.activate("MenuFilePrint");
  QVERIFY(cancel.ran);

  // The help viewer is tried first; where it cannot start, the built-in manual opens instead,
  // at the first steps or at its contents, and no box is shown.
  QStringList anchors;
  for (const char* command : {"MenuHelpFirst", "tbHelp", "MenuHelpManual"}) {
    h.activate(command);
    quillon::app::HelpWindow* help = h.window->helpWindow();
    QVERIFY(help && help->isVisible());
    anchors << help->browser()->source().fragment();
  }
  QCOMPARE(anchors, (QStringList{"first-steps", "contents", "contents"}));
  QCOMPARE(h.started,
           (QStringList{"winhelp FIRSTSTEP.hlp", "winhelp HXB27.hlp", "winhelp HXB27.hlp"}));
  QVERIFY(h.dialog.boxes.empty());
}

void MainWindowTest::clearTableAsksFirst() {
  // No on the phone page keeps it, Yes on the filter page clears it; never another table.
  Harness h;
  quillon::Project& project = h.project();
  project.filters.setCell(3, 1, "Filter");
  project.phones.setCell(3, 1, "+4930");
  project.messages.setCell(3, 4, "Meldung");
  for (const int page : {2, 1}) {
    h.find<QTabWidget>("Eingabe")->setCurrentIndex(page);
    h.dialog.answer(page == 1 ? BoxAnswer::Yes : BoxAnswer::No);
    h.activate("tbClear");
    QCOMPARE(project.changed, page == 1);
  }
  const quillon::Box question{"Kestrix", "Really clear the table?", BoxIcon::Question,
                              BoxButtons::YesNo, BoxAnswer::No};
  QCOMPARE(h.dialog.boxes, std::vector<quillon::Box>(2, question));
  QCOMPARE(project.filters.cell(3, 1), std::string());
  QCOMPARE(project.phones.cell(3, 1), std::string("+4930"));
  QCOMPARE(project.messages.cell(3, 4), std::string("Meldung"));
}

void MainWindowTest::onlyPinEditsCountAsChanges() {
  Harness h;
  h.window->show();
  h.find<QTabWidget>("Eingabe")->setCurrentIndex(2);
  QTest::keyClicks(h.find<QLineEdit>("txtSMSC"), "+491722270333");
  QTest::keyClicks(h.find<QLineEdit>("edStation"), "Nord");
  QCOMPARE(h.project().smsCentre, std::string("+491722270333"));
  QCOMPARE(h.project().station, std::string("Nord"));
  QVERIFY(!h.project().changed);

  auto* pin = h.find<QLineEdit>("PinNummer");
  pin->setFocus();
  pin->home(false);
  QTest::keyClicks(pin, "12");
  // The mask keeps its placeholders, which is how a short PIN is recognised later.
  QCOMPARE(h.project().pin, std::string("12__"));
  QVERIFY(h.project().changed);
}

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
