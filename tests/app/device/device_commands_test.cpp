// The device commands behind the main window, with telvane-sim on a pseudo-terminal registered
// as port 1: a download from the page button, "Download all" read back by "Read all", Cancel in
// the middle of a transfer, a wrong module, and the SMS-centre list.

#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include "app/device/module_commands.h"
#include "app_harness.h"
#include "link/qt/port_names.h"
#include "sim_module.h"

using quillon::BoxAnswer;
using quillon::StatusPanel;
using quillon::app::device::ModuleCommands;
using namespace quillon::app::testing;

namespace {

// The main window of the harness with the real device commands, talking to a simulated module
// that keeps its memory in a state file. The simulator registers its port before the window
// starts.
struct Rig {
  explicit Rig(const QStringList& simOptions = {}, int language = 0,
               quillon::TimeOfDay replyTimeout = 3000)
      : sim(QStringLiteral("telvane"),
            QStringList{"--register", "1", "--state", statePath()} + simOptions),
        h([language](QSettings& s) { s.setValue("Language/MyLang", QString::number(language)); },
          [this, replyTimeout](Harness& harness) {
            quillon::app::device::ModuleCommandsOptions options;
            options.files = &harness.files;
            // The module answers within milliseconds; this only bounds a test that has gone wrong.
            options.replyTimeout = replyTimeout;
            options.created = [this](ModuleCommands& created) { commands = &created; };
            return quillon::app::device::moduleCommandsFactory(options);
          }) {}

  // Runs a command of the window to its end: the command returns at once and goes on from the
  // event loop.
  void run(const QString& command) {
    h.activate(command);
    QVERIFY(QTest::qWaitFor([this] { return !commands->busy(); }, 60'000));
  }

  [[nodiscard]] QString statePath() const { return state.filePath("module.state"); }
  [[nodiscard]] QString transferStatus() const {
    return h.window->panelText(StatusPanel::Transfer);
  }

  // What the simulated module holds of one kind, from its state file ("\nK length\n" + bytes).
  [[nodiscard]] std::string moduleImage(char kind) const {
    QFile file(statePath());
    if (!file.open(QIODevice::ReadOnly)) return "(no state file)";
    const std::string image = file.readAll().toStdString();
    const std::size_t at = image.find(std::string("\n") + kind + ' ');
    if (at == std::string::npos) return "(no record)";
    const std::size_t eol = image.find('\n', at + 1);
    return image.substr(eol + 1, std::stoul(image.substr(at + 3, eol - at - 3)));
  }

  QTemporaryDir state;
  quillon::testing::SimModule sim;
  ModuleCommands* commands = nullptr;
  Harness h;
};

}  // namespace

class DeviceCommandsTest : public QObject {
  Q_OBJECT

 private slots:
  void messagesDownloadFromTheButton();
  void readAllReturnsWhatDownloadAllSent();
  void cancelEndsTheTransferAtOnce();
  void wrongModuleOpensTheIdentification();
  void smsCentreList();
  void lastTransferInStatusBar_data();
  void lastTransferInStatusBar();
};

void DeviceCommandsTest::messagesDownloadFromTheButton() {
  Rig rig;
  QVERIFY(rig.sim.running());
  rig.h.project().messages.setCell(1, quillon::kAckColumn, "x");
  rig.h.project().messages.setCell(1, quillon::kMessageTextColumn, "Pumpe 1 gest\xF6rt");
  rig.h.window->projectReplaced();

  rig.run("cmdMeldDown");

  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.transferStatus(), QStringLiteral("Download successful"));
  QCOMPARE(rig.h.dialog.texts(), std::vector<std::string>{"Telvane ready ?"});
  QVERIFY(!rig.commands->term().isVisible());
  // Header, message 1 acknowledged with its umlaut in the GSM code, 99 empty messages, the
  // empty acknowledgement request, ten empty filters, the end mark.
  const std::string expected =
      "A;\xB6"
      "APumpe 1 gest|rt\xB6" +
      QByteArray("@\xB6").repeated(99).toStdString() + "Q \xB6" + std::string(10, '\xB6') + "\xFD";
  QCOMPARE(rig.moduleImage('M'), expected);
}

void DeviceCommandsTest::readAllReturnsWhatDownloadAllSent() {
  Rig rig;
  quillon::Project& project = rig.h.project();
  project.messages.setCell(1, quillon::kCallBackColumn, "x");
  project.messages.setCell(1, quillon::kMessageTextColumn, "Druck zu hoch");
  project.messages.setCell(7, quillon::kMessageTextColumn, "F\xFCllstand");
  project.filters.setCell(2, quillon::kFilterTextColumn, "STOP");
  project.phones.setCell(1, quillon::kPhoneNumberColumn, "+491701234567");
  project.smsCentre = "+491710760000";
  project.pin = "4711";
  project.flags.entries[3] = "7;1";
  project.ack = {"*T#", "Vielen?xxxx?"};
  rig.h.window->projectReplaced();

  rig.run("MenuConnDownAll");
  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.transferStatus(), QStringLiteral("Download successful"));

  project.changed = false;
  rig.h.window->fileNew();
  project.ack = {};
  rig.run("MenuConnUpAll");

  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.h.dialog.texts(), std::vector<std::string>{"Telvane ready ?"});
  QCOMPARE(project.messages.cell(1, quillon::kCallBackColumn), std::string("x"));
  QCOMPARE(project.messages.cell(1, quillon::kAckColumn), std::string());
  QCOMPARE(project.messages.cell(1, quillon::kMessageTextColumn), std::string("Druck zu hoch"));
  QCOMPARE(project.filters.cell(2, quillon::kFilterTextColumn), std::string("STOP"));
  QCOMPARE(project.phones.cell(1, quillon::kPhoneNumberColumn), std::string("+491701234567"));
  QCOMPARE(project.pin, std::string("4711"));
  QCOMPARE(project.flags.entries[3], std::string("7;1"));
  QVERIFY(project.ack == (quillon::AckRequest{"*T#", "Vielen?xxxx?"}));
  // The views show what was read.
  QCOMPARE(rig.h.window->findChild<QLineEdit*>("txtSMSC")->text(), QStringLiteral("+491710760000"));
  const auto* messages = rig.h.window->model(quillon::TableKind::Messages);
  QCOMPARE(messages->index(6, 3).data().toString(), QString::fromUtf8("Füllstand"));
}

void DeviceCommandsTest::cancelEndsTheTransferAtOnce() {
  // At 1200 baud each block takes half a second on the line, so the transfer is still running
  // when Cancel is pressed.
  Rig rig({"--baud", "1200"});
  for (int row = 1; row <= 20; ++row)
    rig.h.project().messages.setCell(row, quillon::kMessageTextColumn, std::string(150, 'a'));

  QElapsedTimer sincePressed;
  bool modalWhilePressed = false;
  QDialog* term = &rig.commands->term();
  WhenShown press(
      [term]() -> QDialog* {
        const bool sending =
            term->findChild<QLabel*>("Kommentar")->text() == "Sending data block by block...";
        return term->isVisible() && sending ? term : nullptr;
      },
      [&](QDialog*) {
        modalWhilePressed = QApplication::activeModalWidget() == term;
        sincePressed.start();
        QTest::mouseClick(term->findChild<QPushButton*>("cmdAbbruch"), Qt::LeftButton);
      });
  rig.run("cmdMeldDown");
  const qint64 afterPress = sincePressed.elapsed();

  QVERIFY(press.ran);
  QVERIFY(modalWhilePressed);
  QVERIFY2(afterPress < 1000, qPrintable(QString::number(afterPress)));
  QCOMPARE(rig.commands->lastResult(), 3);
  QCOMPARE(term->windowTitle(), QStringLiteral("Cancel"));
  QCOMPARE(rig.transferStatus(), QStringLiteral("Error occurred  while downloading"));
  QVERIFY(!term->isVisible());
}

void DeviceCommandsTest::wrongModuleOpensTheIdentification() {
  Rig rig({"--device-type", "1"});
  QString unit;
  bool noticeShown = false;
  int blinkInterval = 0;
  WhenShown version(modal("frmVersion"), [&](QDialog* dialog) {
    unit = dialog->findChild<QLabel*>("lblUnit")->text();
    noticeShown = dialog->findChild<QLabel*>("lblEinstellung")->isVisible();
    const auto* timer = dialog->findChild<QTimer*>("Timer1");
    blinkInterval = timer->isActive() ? timer->interval() : 0;
    dialog->findChild<QPushButton*>("cmdOK")->click();
  });

  rig.run("cmdMeldDown");

  QVERIFY(version.ran);
  QCOMPARE(unit, QStringLiteral(" Ombra"));
  QVERIFY(noticeShown);
  QCOMPARE(blinkInterval, 500);
  QCOMPARE(rig.commands->lastResult(), 7);
  QCOMPARE(rig.transferStatus(), QStringLiteral("Error occurred  while downloading"));
  const std::vector<quillon::Box> expected = {
      {"Kestrix", "Telvane ready ?", quillon::BoxIcon::Question, quillon::BoxButtons::OkCancel,
       BoxAnswer::Ok},
      {"Version", "Kestrix ist auf falsches Ger\xE4t eingestellt"},
      {"Versionsanzeige", "Wirklich Versions-Daten l\xF6schen ?", quillon::BoxIcon::Question,
       quillon::BoxButtons::YesNo, BoxAnswer::Yes},
  };
  QCOMPARE(rig.h.dialog.boxes, expected);
  // The module never got the messages.
  QCOMPARE(rig.moduleImage('M'), std::string("(no state file)"));
}

void DeviceCommandsTest::smsCentreList() {
  Rig rig;
  rig.h.project().smsCentre = "+4930123";
  rig.h.window->projectReplaced();
  // Row 12, German D1, keeps the trailing blanks of its label.
  WhenShown choose(modal("SMSC_Liste"), [](QDialog* list) {
    auto* table = list->findChild<QTableWidget*>("tabSMSC");
    const QModelIndex cell = table->model()->index(11, 0);
    table->scrollTo(cell);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(cell).center());
  });
  rig.h.activate("cmdSMSCList");

  QVERIFY(choose.ran);
  QCOMPARE(QGuiApplication::clipboard()->text(), QString("+491710760000;D1, Deutschland    "));
  QCOMPARE(rig.h.window->findChild<QLineEdit*>("txtSMSC")->text(), QString("+491710760000"));
  QCOMPARE(rig.h.project().smsCentre, std::string("+491710760000"));
}

void DeviceCommandsTest::lastTransferInStatusBar_data() {
  // What the module is made to do, the command, and panel 3 afterwards as a pattern: %1 stands
  // for the device that port 1 names, the time for any time of day.
  QTest::addColumn<QStringList>("simOptions");  // "absent": port 1 names a device that is not there
  QTest::addColumn<int>("language");
  QTest::addColumn<QString>("command");
  QTest::addColumn<QString>("panel");
  const QString time = QStringLiteral("\\d\\d:\\d\\d:\\d\\d");
  QTest::newRow("done") << QStringList{} << 0 << "cmdMeldDown"
                        << "Last transfer: Download messages at " + time + " \u2013 done";
  QTest::newRow("portNotThere") << QStringList{"absent"} << 0 << "cmdMeldDown"
                                << "Last transfer: Download messages at " + time +
                                       " \u2013 COM 1 = %1: cannot be opened \\(.+\\)";
  // The identity is read first: that is where a silent module is found out.
  QTest::newRow("noAnswerInGerman")
      << QStringList{"--silent-after", "0"} << 1 << "MenuConnUpAll"
      << QString::fromUtf8(
             "Letzte \u00DCbertragung: Alles Auslesen \\(Version Ger\u00E4tesoftware\\) um ") +
             time + " \u2013 COM 1 = %1: keine Antwort";
  QTest::newRow("refusedByTheModule")
      << QStringList{"--refuse", "M"} << 0 << "cmdMeldDown"
      << "Last transfer: Download messages at " + time + " \u2013 refused by the module";
}

void DeviceCommandsTest::lastTransferInStatusBar() {
  QFETCH(QStringList, simOptions);
  QFETCH(int, language);
  QFETCH(QString, command);
  QFETCH(QString, panel);
  const bool absent = simOptions == QStringList{"absent"};
  Rig rig(absent ? QStringList{} : simOptions, language, 300);
  QString device = rig.sim.link();
  if (absent) {
    device = rig.state.filePath("ttyUSB7");
    quillon::registerPort(1, device);
  }
  QCOMPARE(rig.h.window->panelText(StatusPanel::LastTransfer),
           language == 1 ? QString::fromUtf8("Noch keine \u00DCbertragung")
                         : QStringLiteral("No transfer yet"));
  // The details were open in an earlier transfer; a new one opens in the short form again.
  quillon::app::device::Term* term = &rig.commands->term();
  QVERIFY(term);
  term->showLongForm(true);
  bool openedShort = false;
  WhenShown watch([term]() -> QDialog* { return term->isVisible() ? term : nullptr; },
                  [&](QDialog*) { openedShort = !term->longForm(); });

  rig.run(command);

  const QRegularExpression expected("^" + panel.arg(QRegularExpression::escape(device)) + "$");
  const QString shown = rig.h.window->panelText(StatusPanel::LastTransfer);
  QVERIFY2(expected.match(shown).hasMatch(), qPrintable(shown + "\n" + expected.pattern()));
  QCOMPARE(watch.ran, !absent);
  if (watch.ran) QVERIFY(openedShort);
}

QTEST_MAIN(DeviceCommandsTest)
#include "device_commands_test.moc"
