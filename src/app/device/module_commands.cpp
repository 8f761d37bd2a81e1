#include "app/device/module_commands.h"

#include <QAction>
#include <QTime>

#include "app/device/monitor_dialog.h"
#include "app/device/properties_dialog.h"
#include "app/device/quittung_dialog.h"
#include "app/device/smsc_list_dialog.h"
#include "app/device/umlaut_dialog.h"
#include "app/device/version_dialog.h"
#include "link/qt/port_names.h"
#include "link/qt/port_settings.h"
#include "text/code_page.h"
#include "transfer/download.h"
#include "transfer/logger.h"
#include "transfer/upload.h"

namespace quillon::app::device {

DeviceCommandsFactory moduleCommandsFactory(ModuleCommandsOptions options) {
  return [options](AppShell& shell) -> std::unique_ptr<DeviceCommands> {
    auto commands = std::make_unique<ModuleCommands>(shell, options);
    if (options.created) options.created(*commands);
    return commands;
  };
}

ModuleCommands::ModuleCommands(AppShell& shell, ModuleCommandsOptions options)
    : m_shell(shell),
      m_options(std::move(options)),
      m_serial(shell.dialog()),
      m_link(m_serial, shell.dialog(), [this] { prepareLink(); }) {
  m_files = m_options.files;
  if (!m_files) {
    m_ownFiles = std::make_unique<QtFilePicker>(shell.window());
    m_files = m_ownFiles.get();
  }
  m_term = new Term(shell.status(), shell.window());
  m_serial.setObserver(this);
  m_serial.setTrafficLog(&shell.state().trafficLog);
  m_serial.setStatusDisplay(&shell.status());
  connect(m_term, &Term::cancelRequested, &m_serial, &SerialLink::cancel);
}

ModuleCommands::~ModuleCommands() {
  m_serial.setObserver(nullptr);
  delete m_term;
  delete m_quittung;
}

PortId ModuleCommands::currentPort() const {
  if (!m_options.port.isEmpty()) {
    if (auto port = resolvePort(m_options.port)) return *port;
    // A number that names no device yet: it may be registered before the next transfer.
    QString digits = m_options.port;
    if (digits.startsWith(QStringLiteral("COM"), Qt::CaseInsensitive)) digits = digits.mid(3);
    return PortId{digits.toInt(), {}};
  }
  const int number = m_shell.state().portNumber;
  return PortId{number, deviceForPortNumber(number)};
}

std::string ModuleCommands::portStatusText() const {
  const PortId port = currentPort();
  const std::string name =
      port.number > 0 ? PortNumberText(port.number) : " " + utf8ToCp1252(port.device.toStdString());
  return PortStatusText(name, m_serial.settingsString(), m_serial.handshaking(), m_serial.isOpen());
}

void ModuleCommands::prepareLink() {
  const AppState& state = m_shell.state();
  const PortId port = currentPort();
  if (port.device != m_serial.port().device || port.number != m_serial.port().number)
    m_serial.setPort(port);
  EngineSettings settings = m_serial.engineSettings();
  settings.blockLength = state.limits.blockLength;
  settings.replyTimeout = m_options.replyTimeout;
  settings.language = state.language;
  m_serial.setEngineSettings(settings);
  m_link.setLanguage(state.language);
  m_term->setCancelCaption(state.text(slot::kCancelTransfer));
}

LinkContext ModuleCommands::linkContext() {
  AppState& state = m_shell.state();
  return LinkContext{m_link,       m_shell.dialog(), m_shell.status(),
                     state.limits, state.session,    state.language};
}

TransferHooks ModuleCommands::hooks() {
  TransferHooks hooks;
  hooks.showIdentification = [this] { showIdentification(); };
  hooks.saveProjectAs = [this] { saveProjectAs(); };
  return hooks;
}

void ModuleCommands::transferStarted(const TransferJob& job) {
  m_lastLabel = job.contentLabel;
  if (Term* term = m_term.data()) term->transferStarted(job);
}

void ModuleCommands::transferEvent(const TransferEvent& event) {
  if (Term* term = m_term.data()) term->transferEvent(event);
}

void ModuleCommands::transferFinished(const TransferOutcome& outcome) {
  // A refused version request is the identity's business: it reads as the wrong module.
  if (outcome.refused && m_lastLabel != kLabelVersion && m_refusedLabel.empty())
    m_refusedLabel = m_lastLabel;
  if (Term* term = m_term.data()) term->transferFinished(outcome);
}

void ModuleCommands::beginReport() {
  m_lastLabel.clear();
  m_refusedLabel.clear();
}

namespace {

// The page or menu caption that names a kind of data, by the transfer window's content label.
int stepSlot(const std::string& label) {
  if (label == kLabelMessages) return slot::kMessages;
  if (label == kLabelPhoneNumbers) return slot::kPhoneNumbers;
  if (label == kLabelConfiguration) return slot::kConfigurationPage;
  if (label == kLabelControllerData) return slot::kMarkerSetting;
  if (label == kLabelVersion) return slot::kFirmwareVersion;
  return -1;
}

}  // namespace

void ModuleCommands::report(int commandSlot, int result) {
  TransferReport report;
  report.commandSlot = commandSlot;
  report.time = QTime::currentTime().toString(QStringLiteral("hh:mm:ss")).toStdString();
  report.result = result;
  std::string step = m_lastLabel;
  if (result == kResultOk && !m_refusedLabel.empty()) {
    report.result = kResultRefusedByModule;
    step = m_refusedLabel;
  }
  // The kind of data a command failed at is worth naming when the command covers several kinds,
  // and when the identity read in front of the command is what failed.
  const bool several = commandSlot == slot::kDownloadAll || commandSlot == slot::kReadAll;
  if (report.result != kResultOk && (several || step == kLabelVersion) &&
      commandSlot != slot::kFirmwareVersion)
    report.stepSlot = stepSlot(step);

  const PortId port = currentPort();
  report.port = PortDescription(port.number, utf8ToCp1252(port.device.toStdString()));
  if (report.result == kResultPortNotOpened) {
    QString why;
    if (port.device.isEmpty() && port.number > 0) (void)deviceForPortNumber(port.number, &why);
    report.portError = why.isEmpty() ? m_serial.portErrorText() : utf8ToCp1252(why.toStdString());
  }
  AppState& state = m_shell.state();
  state.lastTransfer = report;
  m_shell.status().setStatus(StatusPanel::LastTransfer, LastTransferText(report, state.texts));
}

void ModuleCommands::transfer(int commandSlot, Procedure procedure) {
  // One command at a time: the transfer window is modal, but a click can come between two
  // transfers of one command.
  if (busy()) return;
  m_busy = true;
  StartTask(runCommand(commandSlot, procedure), [this] {
    m_busy = false;
    // Uploads fill the tables, downloads write back normalised numbers, the identity may have
    // raised the message limit.
    m_shell.projectReplaced();
    Q_EMIT commandFinished();
  });
}

Task<> ModuleCommands::runCommand(int commandSlot, Procedure procedure) {
  beginReport();
  AppState& state = m_shell.state();
  LinkContext link = linkContext();
  TransferContext context{link, state.texts, state.project, hooks()};
  int result = kResultOk;
  co_await procedure(context, result);
  m_lastResult = result;
  report(commandSlot, result);
}

void ModuleCommands::downloadAll() { transfer(slot::kDownloadAll, DownloadAll); }
void ModuleCommands::uploadAll() { transfer(slot::kReadAll, ReadAll); }
void ModuleCommands::downloadMessages() {
  transfer(slot::kDownloadMessagesButton, DownloadMessages);
}
void ModuleCommands::uploadMessages() { transfer(slot::kUploadMessagesButton, UploadMessages); }
void ModuleCommands::downloadPhones() { transfer(slot::kDownloadPhones, WriteT); }
void ModuleCommands::uploadPhones() { transfer(slot::kReadPhonesButton, UploadPhoneNumbers); }
void ModuleCommands::downloadConfiguration() { transfer(slot::kDownloadPin, WriteP); }
void ModuleCommands::uploadConfiguration() { transfer(slot::kReadPin, ReadP); }
void ModuleCommands::downloadFlags() { transfer(slot::kDownloadFlagsButton, WriteEasy800); }
void ModuleCommands::uploadFlags() { transfer(slot::kUploadFlagsButton, ReadEasy800); }

void ModuleCommands::saveProjectAs() {
  // The main window's own "Save as", with its file dialog and overwrite question.
  if (auto* action = m_shell.window()->findChild<QAction*>("MenuFileSaveAs")) action->trigger();
}

void ModuleCommands::readIdentity(std::function<void()> ended) {
  // The dialog may be open over a command that waits for it; only the port must be free.
  if (m_serial.transferRunning()) return ended();
  StartTask(runIdentity(), [this, ended = std::move(ended)] {
    m_shell.projectReplaced();
    ended();
    Q_EMIT commandFinished();
  });
}

Task<> ModuleCommands::runIdentity() {
  beginReport();
  LinkContext link = linkContext();
  const TransferStatus left = co_await ReadIdentity(link);
  report(slot::kFirmwareVersion, ResultOf(left));
}

void ModuleCommands::showIdentification() {
  VersionDialog version(
      m_shell.state().session.identity, m_shell.dialog(),
      [this](std::function<void()> ended) { readIdentity(std::move(ended)); }, m_shell.window());
  (void)version.exec();
}

void ModuleCommands::identifyDevice() {
  if (m_busy) return;
  m_busy = true;
  showIdentification();
  m_busy = false;
}

void ModuleCommands::readLogger() {
  if (m_busy) return;
  m_busy = true;
  MonitorDialog monitor(
      m_shell.state(), m_shell.dialog(), *m_files,
      [this](std::string text, std::function<void(std::string)> ended) {
        if (m_serial.transferRunning()) return ended(std::move(text));
        StartTask(runLogger(std::move(text)), [this, ended = std::move(ended)](std::string shown) {
          m_shell.projectReplaced();
          ended(std::move(shown));
          Q_EMIT commandFinished();
        });
      },
      m_shell.window());
  (void)monitor.exec();
  m_busy = false;
}

Task<std::string> ModuleCommands::runLogger(std::string monitor) {
  beginReport();
  AppState& state = m_shell.state();
  LinkContext link = linkContext();
  TransferContext context{link, state.texts, state.project, hooks()};
  int result = kResultOk;
  co_await ReadLogger(context, monitor, result);
  m_lastResult = result;
  report(slot::kReadLogger, result);
  co_return monitor;
}

void ModuleCommands::acknowledgementRequest() {
  if (m_busy) return;
  if (!m_quittung)
    m_quittung = new QuittungDialog(m_shell.state(), m_shell.dialog(), m_shell.window());
  m_busy = true;
  m_quittung->showRequest();
  m_busy = false;
}

void ModuleCommands::portSettings() {
  if (m_busy) return;
  m_busy = true;
  m_serial.setPort(currentPort());
  PropertiesDialog properties(m_shell.state(), m_serial, m_shell.dialog(), m_shell.status(),
                              m_shell.window());
  // A number chosen in the dialog replaces a port named on the command line.
  if (properties.exec() == QDialog::Accepted && m_serial.port().number > 0) m_options.port.clear();
  m_busy = false;
}

void ModuleCommands::smsCentreList() {
  if (m_busy) return;
  m_busy = true;
  SmscListDialog list(m_shell.state(), m_shell.window());
  if (list.exec() == QDialog::Accepted) m_shell.projectReplaced();
  m_busy = false;
}

void ModuleCommands::substitutionTable() {
  if (m_busy) return;
  m_busy = true;
  UmlautDialog editor(m_shell.state(), m_shell.dialog(), userUmlautFile(), m_shell.window());
  (void)editor.exec();
  m_busy = false;
}

void ModuleCommands::closePort() { m_serial.closeLinkPort(); }

}  // namespace quillon::app::device
