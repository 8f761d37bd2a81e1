// The device commands behind the main window, with telvane-sim on a pseudo-terminal registered
// as port 1: a download from the page button, "Download all" read back by "Read all", Cancel in
// the middle of a transfer, a wrong module, and the SMS-centre list.

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>
#include <functional>
#include <memory>

#include "app/device/module_commands.h"
#include "app/qt_text.h"
#include "app_harness.h"
#include "sim_module.h"
#include "text/umlaut_file.h"

using quillon::BoxAnswer;
using quillon::ModuleLimits;
using quillon::StatusPanel;
using quillon::app::Anfang;
using quillon::app::AnfangServices;
using quillon::app::device::ModuleCommands;
using quillon::app::device::ModuleCommandsOptions;

namespace {

// The module answers within milliseconds; this only bounds a test that has gone wrong.
constexpr quillon::TimeOfDay kReplyTimeout = 3000;

// One main window with the real device commands, its boxes and files scripted, talking to a
// simulated module that keeps its memory in a state file.
struct Rig {
  explicit Rig(const QStringList& simOptions = {})
      : settings(dir.filePath("Kestrix.conf"), QSettings::IniFormat),
        sim(QStringLiteral("telvane"),
            QStringList{"--register", "1", "--state", statePath()} + simOptions) {
    ModuleCommandsOptions options;
    options.files = &files;
    options.replyTimeout = kReplyTimeout;
    options.created = [this](ModuleCommands& created) { commands = &created; };
    AnfangServices services;
    services.settings = &settings;
    services.dialog = &dialog;
    services.files = &files;
    services.devices = quillon::app::device::moduleCommandsFactory(options);
    window = std::make_unique<Anfang>(services);
  }

  [[nodiscard]] QString statePath() const { return dir.filePath("module.state"); }
  [[nodiscard]] QString transferStatus() const { return window->panelText(StatusPanel::Transfer); }
  template <typename T>
  T* find(const char* name) const {
    return window->findChild<T*>(QString::fromLatin1(name));
  }
  void click(const char* button) const { find<QPushButton>(button)->click(); }
  void trigger(const char* action) const { find<QAction>(action)->trigger(); }
  [[nodiscard]] quillon::Project& project() const { return window->state().project; }

  // What the simulated module holds of one kind, from its state file.
  [[nodiscard]] std::string moduleImage(char kind) const {
    QFile file(statePath());
    if (!file.open(QIODevice::ReadOnly)) return "(no state file)";
    const std::string state = file.readAll().toStdString();
    const std::string head = std::string("\n") + kind + ' ';
    const std::size_t at = state.find(head);
    if (at == std::string::npos) return "(no record)";
    const std::size_t eol = state.find('\n', at + 1);
    const std::size_t length = std::stoul(state.substr(at + 3, eol - at - 3));
    return state.substr(eol + 1, length);
  }

  QTemporaryDir dir;
  QSettings settings;
  quillon::testing::SimModule sim;
  quillon::testing::ScriptedDialog dialog;
  quillon::app::testing::ScriptedFiles files;
  ModuleCommands* commands = nullptr;
  std::unique_ptr<Anfang> window;
};

// Runs `check` once, from the event loop, as soon as `ready` holds.
class WhenReady {
 public:
  WhenReady(std::function<bool()> ready, std::function<void()> check)
      : m_ready(std::move(ready)), m_check(std::move(check)) {
    QObject::connect(&m_timer, &QTimer::timeout, [this] {
      if (ran || !m_ready()) return;
      ran = true;
      m_timer.stop();
      m_check();
    });
    m_timer.start(5);
  }
  bool ran = false;

 private:
  std::function<bool()> m_ready;
  std::function<void()> m_check;
  QTimer m_timer;
};

QWidget* modalNamed(const char* name) {
  QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->objectName() == name && modal->isVisible() ? modal : nullptr;
}

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

}  // namespace

class DeviceCommandsTest : public QObject {
  Q_OBJECT

 private slots:
  void messagesDownloadFromTheButton();
  void readAllReturnsWhatDownloadAllSent();
  void cancelEndsTheTransferAtOnce();
  void wrongModuleOpensTheIdentification();
  void smsCentreList_data();
  void smsCentreList();
  void portSettingsAreSavedAndTheTransferWindowResetsThem();
  void substitutionEditorTurnsDigitsIntoACharacter();
  void acknowledgementRequestKeepsEditsOnCancel();
  void loggerIsReadAndSaved();
};

void DeviceCommandsTest::messagesDownloadFromTheButton() {
  Rig rig;
  QVERIFY(rig.sim.running());
  rig.project().messages.setCell(1, quillon::kAckColumn, "x");
  rig.project().messages.setCell(1, quillon::kMessageTextColumn, "Pumpe 1 gest\xF6rt");
  rig.window->projectReplaced();

  rig.click("cmdMeldDown");

  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.transferStatus(), QStringLiteral("Download successful"));
  QCOMPARE(rig.dialog.texts(), std::vector<std::string>{"Telvane ready ?"});
  QVERIFY(!rig.commands->term().isVisible());
  // Header, message 1 acknowledged with its umlaut in the GSM code, 99 empty messages, the
  // empty acknowledgement request, ten empty filters, the end mark.
  const std::string expected = std::string("A;\xB6") + "APumpe 1 gest|rt\xB6" +
                               repeated("@\xB6", 99) + "Q \xB6" + repeated("\xB6", 10) + "\xFD";
  QCOMPARE(rig.moduleImage('M'), expected);
}

void DeviceCommandsTest::readAllReturnsWhatDownloadAllSent() {
  Rig rig;
  quillon::Project& project = rig.project();
  project.messages.setCell(1, quillon::kCallBackColumn, "x");
  project.messages.setCell(1, quillon::kMessageTextColumn, "Druck zu hoch");
  project.messages.setCell(7, quillon::kMessageTextColumn,
                           "F\xFC"
                           "llstand niedrig");
  project.filters.setCell(2, quillon::kFilterTextColumn, "STOP");
  project.phones.setCell(1, quillon::kPhoneNumberColumn, "+491701234567");
  project.smsCentre = "+491710760000";
  project.pin = "4711";
  project.flags.entries[3] = "7;1";
  project.ack = {"*T#", "Vielen?xxxx?"};
  rig.window->projectReplaced();

  rig.trigger("MenuConnDownAll");
  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.transferStatus(), QStringLiteral("Download successful"));

  project.changed = false;
  rig.window->fileNew();
  project.ack = {};
  QCOMPARE(project.messages.cell(7, quillon::kMessageTextColumn), std::string());

  rig.trigger("MenuConnUpAll");
  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.dialog.texts(), std::vector<std::string>{"Telvane ready ?"});
  QCOMPARE(project.messages.cell(1, quillon::kCallBackColumn), std::string("x"));
  QCOMPARE(project.messages.cell(1, quillon::kAckColumn), std::string());
  QCOMPARE(project.messages.cell(1, quillon::kMessageTextColumn), std::string("Druck zu hoch"));
  QCOMPARE(project.messages.cell(7, quillon::kMessageTextColumn), std::string("F\xFC"
                                                                              "llstand niedrig"));
  QCOMPARE(project.filters.cell(2, quillon::kFilterTextColumn), std::string("STOP"));
  QCOMPARE(project.phones.cell(1, quillon::kPhoneNumberColumn), std::string("+491701234567"));
  QCOMPARE(project.pin, std::string("4711"));
  QCOMPARE(project.flags.entries[3], std::string("7;1"));
  QCOMPARE(project.ack.first, std::string("*T#"));
  QCOMPARE(project.ack.second, std::string("Vielen?xxxx?"));
  // The views show what was read.
  QCOMPARE(rig.find<QLineEdit>("txtSMSC")->text(), QStringLiteral("+491710760000"));
  const auto* messages = rig.window->model(quillon::TableKind::Messages);
  QCOMPARE(messages->data(messages->index(6, quillon::kMessageTextColumn - 1), Qt::DisplayRole)
               .toString(),
           QString::fromUtf8("Füllstand niedrig"));
}

void DeviceCommandsTest::cancelEndsTheTransferAtOnce() {
  // At 1200 baud each block takes half a second on the line, so the transfer is still running
  // when Cancel is pressed.
  Rig rig({"--baud", "1200"});
  for (int row = 1; row <= 20; ++row)
    rig.project().messages.setCell(row, quillon::kMessageTextColumn, std::string(150, 'a'));

  QElapsedTimer sincePressed;
  bool modalWhilePressed = false;
  auto* term = &rig.commands->term();
  WhenReady press(
      [term] {
        const auto* comment = term->findChild<QLabel*>("Kommentar");
        return term->isVisible() && comment->text() == "Sending data block by block...";
      },
      [&] {
        modalWhilePressed = QApplication::activeModalWidget() == term;
        sincePressed.start();
        QTest::mouseClick(term->findChild<QPushButton*>("cmdAbbruch"), Qt::LeftButton);
      });
  rig.click("cmdMeldDown");
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
  bool blinking = false;
  int interval = 0;
  WhenReady version(
      [] {
        const QWidget* modal = QApplication::activeModalWidget();
        return modal && modal->objectName() == "frmVersion";
      },
      [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        unit = dialog->findChild<QLabel*>("lblUnit")->text();
        noticeShown = dialog->findChild<QLabel*>("lblEinstellung")->isVisible();
        const auto* timer = dialog->findChild<QTimer*>("Timer1");
        blinking = timer->isActive();
        interval = timer->interval();
        dialog->findChild<QPushButton*>("cmdOK")->click();
      });

  rig.click("cmdMeldDown");

  QVERIFY(version.ran);
  QCOMPARE(unit, QStringLiteral(" Ombra"));
  QVERIFY(noticeShown);
  QVERIFY(blinking);
  QCOMPARE(interval, 500);
  QCOMPARE(rig.commands->lastResult(), 7);
  QCOMPARE(rig.transferStatus(), QStringLiteral("Error occurred  while downloading"));
  const std::vector<quillon::Box> expected = {
      {"Kestrix", "Telvane ready ?", quillon::BoxIcon::Question, quillon::BoxButtons::OkCancel,
       BoxAnswer::Ok},
      {"Version", "Kestrix ist auf falsches Ger\xE4t eingestellt"},
      {"Versionsanzeige", "Wirklich Versions-Daten l\xF6schen ?", quillon::BoxIcon::Question,
       quillon::BoxButtons::YesNo, BoxAnswer::Yes},
  };
  QCOMPARE(rig.dialog.boxes.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) QVERIFY(rig.dialog.boxes[i] == expected[i]);
  // The module never got the messages.
  QCOMPARE(rig.moduleImage('M'), std::string("(no state file)"));
}

void DeviceCommandsTest::smsCentreList_data() {
  QTest::addColumn<int>("row");  // 0: closed with cmdEnde
  QTest::addColumn<QString>("clipboard");
  QTest::addColumn<QString>("smsCentre");
  QTest::newRow("germanD1KeepsItsTrailingBlanks") << 12 << "+491710760000;D1, Deutschland    "
                                                  << "+491710760000";
  QTest::newRow("lastEntryWithInternationalPrefix00")
      << 55 << "001410258953;Washington PCS, USA     "
      << "001410258953";
  QTest::newRow("closedWithoutAChoice") << 0 << "untouched"
                                        << "+4930123";
}

void DeviceCommandsTest::smsCentreList() {
  QFETCH(int, row);
  QFETCH(QString, clipboard);
  QFETCH(QString, smsCentre);
  Rig rig;
  rig.project().smsCentre = "+4930123";
  rig.window->projectReplaced();
  QGuiApplication::clipboard()->setText(QStringLiteral("untouched"));

  WhenReady choose(
      [] {
        const QWidget* modal = QApplication::activeModalWidget();
        return modal && modal->objectName() == "SMSC_Liste" && modal->isVisible();
      },
      [row] {
        QWidget* list = QApplication::activeModalWidget();
        if (row == 0) {
          list->findChild<QPushButton*>("cmdEnde")->click();
          return;
        }
        auto* table = list->findChild<QTableWidget*>("tabSMSC");
        const QModelIndex cell = table->model()->index(row - 1, 0);
        table->scrollTo(cell);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(cell).center());
      });
  rig.click("cmdSMSCList");

  QVERIFY(choose.ran);
  QCOMPARE(QGuiApplication::clipboard()->text(), clipboard);
  QCOMPARE(rig.find<QLineEdit>("txtSMSC")->text(), smsCentre);
  QCOMPARE(quillon::app::toQString(rig.project().smsCentre), smsCentre);
}

void DeviceCommandsTest::portSettingsAreSavedAndTheTransferWindowResetsThem() {
  Rig rig;
  WhenReady choose([] { return modalNamed("frmProperties") != nullptr; },
                   [] {
                     QWidget* properties = modalNamed("frmProperties");
                     properties->findChild<QComboBox*>("cboSpeed")->setCurrentText("19200");
                     properties->findChild<QComboBox*>("cboParity")->setCurrentText("Even");
                     properties->findChild<QComboBox*>("cboStopBits")->setCurrentText("2");
                     properties->findChild<QPushButton*>("cmdOK")->click();
                   });
  rig.trigger("MenuConfigCom");

  QVERIFY(choose.ran);
  QCOMPARE(rig.dialog.boxes.size(), std::size_t{0});
  QCOMPARE(rig.window->panelText(StatusPanel::Port), QStringLiteral("COM 1,19200,E,8,2 active"));
  const QSettings saved(QStringLiteral("Kestrix"), QStringLiteral("Kestrix"));
  QCOMPARE(saved.value("Configuration/Configuration").toString(), QStringLiteral("19200,E,8,2"));
  QCOMPARE(saved.value("Configuration/ComNr").toString(), QStringLiteral("1"));
  QCOMPARE(saved.value("Configuration/Handshaking").toString(), QStringLiteral("0"));

  // The transfer window sets the module's own line settings again when it loads.
  rig.click("cmdMeldDown");
  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.window->panelText(StatusPanel::Port),
           QStringLiteral("COM 1,9600, N ,8 ,1 not active"));
}

void DeviceCommandsTest::substitutionEditorTurnsDigitsIntoACharacter() {
  Rig rig;
  const QString file = QString::fromStdU16String(quillon::defaultUmlautPath().u16string());
  QFile::remove(file);
  WhenReady edit([] { return modalNamed("frmUmlaut") != nullptr; },
                 [] {
                   QWidget* editor = modalNamed("frmUmlaut");
                   auto* grid = editor->findChild<QTableWidget*>("grdUmlaute");
                   grid->setItem(0, 0, new QTableWidgetItem(QString::fromUtf8("ç")));
                   // The substitute of c-cedilla is GSM code 9, typed as three digits.
                   grid->setItem(0, 1, new QTableWidgetItem);
                   grid->editItem(grid->item(0, 1));
                   auto* line = grid->findChild<QLineEdit*>("txtSubstitute");
                   QTest::keyClicks(line, QStringLiteral("009"));
                   QTest::keyClick(line, Qt::Key_Return);
                   // The grid takes the edited text from the event loop.
                   QCoreApplication::processEvents();
                   editor->findChild<QPushButton*>("cmdSave")->click();
                   editor->findChild<QPushButton*>("cmdClose")->click();
                 });
  rig.trigger("mnuConfigUmlaut");

  QVERIFY(edit.ran);
  QFile saved(file);
  QVERIFY(saved.open(QIODevice::ReadOnly));
  QCOMPARE(saved.readAll(), QByteArray("U\xE7;\x09\r\n"));
}

void DeviceCommandsTest::acknowledgementRequestKeepsEditsOnCancel() {
  Rig rig;
  QString done;
  WhenReady edit([] { return modalNamed("frmQuittung") != nullptr; },
                 [&done] {
                   QWidget* request = modalNamed("frmQuittung");
                   QTest::keyClicks(request->findChild<QLineEdit*>("txtAnforderung"), "*T#");
                   request->findChild<QPushButton*>("cmdInfo")->click();
                   done = request->findChild<QLabel*>("lblQuittung")->text();
                   request->findChild<QPushButton*>("CancelButton")->click();
                 });
  rig.click("cmdQuittung");

  QVERIFY(edit.ran);
  QCOMPARE(done, QString());
  // Cancel hides the dialog; what was typed is what the next messages download sends.
  QCOMPARE(rig.project().ack.first, std::string("*T#"));
  QCOMPARE(rig.dialog.boxes.size(), std::size_t{1});
  const quillon::Box& help = rig.dialog.boxes.front();
  QCOMPARE(help.title, std::string("Quittungseinstellung"));
  QCOMPARE(help.icon, quillon::BoxIcon::Information);
  QCOMPARE(help.text,
           std::string("Um vom SMSC eine Quittung f\xFC"
                       "r eine abgegangene SMS zu erhalten, muss eine Quittungsanforderung vor "
                       "den SMS-Text gestellt werden. (Bei T-Online z.B. '*T#'). Der "
                       "Netzbetreiber antwortet dann mit einem Standardtext. (Vielen Dank! ??? "
                       "xxxxxxxx ???? angekommen).\r\rDiese Quittierung sind unterschiedlich "
                       "und werden oft ge\xE4"
                       "ndert. In diesem Fall kann es zu Problemen bei der passiven Quittierung "
                       "kommen. \rMit diesem Tool kann man nun jede beliebige Anforderung "
                       "eingeben. Kestrix setzt die entsprechenden Daten zusammen. Dabei wird "
                       "nur eine 5-Ziffern Kennung der Telefon-Nummer verglichen. Der empfangene "
                       "Text wird dann auf eine entsprechende \xDC"
                       "bereinstimmung mit dem vorgegebenen Text gepr\xFC"
                       "ft. \rDabei sind zwei Merkmale wichtig: Am Anfang und Ende muss eine 1-1 "
                       "\xDC"
                       "bereinstimmung mit einem Text vorhanden sein und in der Mitte muss die "
                       "Zeitstempel-Information der quittierten SMS angegeben sein.\rEin ? "
                       "erlaubt beliebigen Text. Bei einem x wird der Zeitstempel erwartet. Die "
                       "Anzahl der ?/x ist ohne Bedeutung."));
}

void DeviceCommandsTest::loggerIsReadAndSaved() {
  Rig rig;
  const QString path = rig.dir.filePath("monitor.txt");
  rig.files.paths.push_back(path);
  QString shown;
  WhenReady read([] { return modalNamed("frmMonitor") != nullptr; },
                 [&shown] {
                   QWidget* monitor = modalNamed("frmMonitor");
                   monitor->findChild<QPushButton*>("cmdUpload")->click();
                   shown = monitor->findChild<QPlainTextEdit*>("txtMonitor")->toPlainText();
                   monitor->findChild<QPushButton*>("cmdSave")->click();
                   monitor->findChild<QPushButton*>("cmdEsc")->click();
                 });
  rig.trigger("MenuHelpMonitor");

  QVERIFY(read.ran);
  QCOMPARE(rig.commands->lastResult(), 0);
  QCOMPARE(rig.files.titles, QStringList{"Monitordaten speichern"});
  // The module's lines as it sent them, without the end mark of its last block.
  const char* lines[] = {"01.03.24 07:58:12 Modul gestartet",
                         "01.03.24 07:58:40 GSM Netz eingebucht",
                         "01.03.24 09:14:05 Merker 3: SMS 12 an Telefon 5 gesendet",
                         "01.03.24 09:20:31 SMS empfangen, Merker 32 gesetzt"};
  QCOMPARE(shown, QString::fromLatin1(lines[0]) + '\n' + lines[1] + '\n' + lines[2] + '\n' +
                      lines[3] + '\n');
  QFile saved(path);
  QVERIFY(saved.open(QIODevice::ReadOnly));
  QCOMPARE(saved.readAll(), QByteArray(lines[0]) + "\r\n" + lines[1] + "\r\n" + lines[2] + "\r\n" +
                                lines[3] + "\r\n\r\n");
}

QTEST_MAIN(DeviceCommandsTest)
#include "device_commands_test.moc"
