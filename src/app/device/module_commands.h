#pragma once
// The commands that talk to the module, as the main window dispatches them: every download and
// upload through the transfer procedures and the transfer window, the port settings, the
// identification, the logger, the acknowledgement request, the SMS-centre list and the
// substitution editor. One SerialLink lives as long as the window.

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "app/device/term_dialog.h"
#include "app/device/term_link.h"
#include "app/device_commands.h"
#include "app/file_picker.h"
#include "link/qt/serial_link.h"
#include "link/qt/transfer_observer.h"
#include "transfer/transfer_context.h"

namespace quillon::app::device {

class QuittungDialog;
class ModuleCommands;

inline constexpr TimeOfDay kReplyTimeout = 20000;  // ms

struct ModuleCommandsOptions {
  // A device path or a port number from the command line; empty: the port number the settings
  // chose, mapped to a device by the port-number rule.
  QString port;
  FilePicker* files = nullptr;  // frmMonitor's save dialog; the Qt dialog when empty
  TimeOfDay replyTimeout = kReplyTimeout;
  // Hears the commands once they exist (tests reach the transfer window through it).
  std::function<void(ModuleCommands&)> created;
};

[[nodiscard]] DeviceCommandsFactory moduleCommandsFactory(ModuleCommandsOptions options = {});

class ModuleCommands : public QObject, public DeviceCommands, private TransferObserver {
  Q_OBJECT

 public:
  ModuleCommands(AppShell& shell, ModuleCommandsOptions options);
  ~ModuleCommands() override;

  void downloadAll() override;
  void uploadAll() override;
  void downloadMessages() override;
  void uploadMessages() override;
  void downloadPhones() override;
  void uploadPhones() override;
  void downloadConfiguration() override;
  void uploadConfiguration() override;
  void downloadFlags() override;
  void uploadFlags() override;
  void acknowledgementRequest() override;
  void portSettings() override;
  void smsCentreList() override;
  void identifyDevice() override;
  void readLogger() override;
  void substitutionTable() override;
  [[nodiscard]] std::string portStatusText() const override;
  void closePort() override;

  [[nodiscard]] Term& term() { return *m_term; }
  // The result 0..7 of the last download or upload command.
  [[nodiscard]] int lastResult() const { return m_lastResult; }
  // A command that talks to the module is under way.
  [[nodiscard]] bool busy() const { return m_busy || m_serial.transferRunning(); }

 Q_SIGNALS:
  // A download, upload, identity query or logger read-out has ended and been reported.
  void commandFinished();

 private:
  // The transfer window watches every transfer; the commands listen in for status-bar panel 3.
  void transferStarted(const TransferJob& job) override;
  void transferEvent(const TransferEvent& event) override;
  void transferFinished(const TransferOutcome& outcome) override;

  using Procedure = Task<> (*)(TransferContext&, int&);
  // Starts one command given by its caption's text slot; it runs on from the event loop.
  void transfer(int commandSlot, Procedure procedure);
  [[nodiscard]] Task<> runCommand(int commandSlot, Procedure procedure);
  [[nodiscard]] Task<> runIdentity();
  [[nodiscard]] Task<std::string> runLogger(std::string monitor);
  void beginReport();
  void report(int commandSlot, int result);
  [[nodiscard]] PortId currentPort() const;
  // The transfer window loads: the port follows the settings again and the engine the language.
  void prepareLink();
  void showIdentification();
  void readIdentity(std::function<void()> ended);
  void saveProjectAs();
  [[nodiscard]] LinkContext linkContext();
  [[nodiscard]] TransferHooks hooks();

  AppShell& m_shell;
  ModuleCommandsOptions m_options;
  std::unique_ptr<FilePicker> m_ownFiles;
  FilePicker* m_files = nullptr;
  SerialLink m_serial;
  TermLink m_link;
  QPointer<Term> m_term;
  QPointer<QuittungDialog> m_quittung;
  bool m_busy = false;
  int m_lastResult = 0;
  // Of the command that runs: the content label of its last transfer and of a refused one.
  std::string m_lastLabel;
  std::string m_refusedLabel;
};

}  // namespace quillon::app::device
