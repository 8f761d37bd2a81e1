#pragma once
// What the main window hands to the commands that talk to the module, and the commands it
// calls. The main window only dispatches: each menu entry, toolbar button and
// page button calls one method here, and the implementation reaches the project, the boxes and
// the status bar through AppShell.

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "app/app_state.h"
#include "project/user_dialog.h"

namespace quillon::app {

class AppShell {
 public:
  virtual ~AppShell() = default;
  [[nodiscard]] virtual AppState& state() = 0;
  [[nodiscard]] virtual UserDialog& dialog() = 0;
  [[nodiscard]] virtual StatusDisplay& status() = 0;
  // The parent for the commands' own dialogs.
  [[nodiscard]] virtual QWidget* window() = 0;
  // The save prompt: when the project is changed, asks (slot 35) and on any answer but No runs
  // "Save as" and clears the changed flag.
  virtual void askChanged() = 0;
  // Re-reads every view (tables and their row counts, SMS centre, PIN, station, flag labels,
  // text-memory gauge) after a command changed the project or the limits behind their backs.
  virtual void projectReplaced() = 0;
};

class DeviceCommands {
 public:
  virtual ~DeviceCommands() = default;
  virtual void downloadAll() = 0;             // MenuConnDownAll, "tbDown"
  virtual void uploadAll() = 0;               // MenuConnUpAll, "tbUp"
  virtual void downloadMessages() = 0;        // cmdMeldDown
  virtual void uploadMessages() = 0;          // cmdMeldUp
  virtual void downloadPhones() = 0;          // cmdTelDown
  virtual void uploadPhones() = 0;            // cmdTelUp
  virtual void downloadConfiguration() = 0;   // cmdDown
  virtual void uploadConfiguration() = 0;     // cmdUp
  virtual void downloadFlags() = 0;           // cmdEasy800Down
  virtual void uploadFlags() = 0;             // cmdEasy800Up
  virtual void acknowledgementRequest() = 0;  // cmdQuittung
  virtual void portSettings() = 0;            // MenuConfigCom
  virtual void smsCentreList() = 0;           // MenuConfigSMSC, cmdSMSCList
  virtual void identifyDevice() = 0;          // mnuConfigVersion
  virtual void readLogger() = 0;              // MenuHelpMonitor
  virtual void substitutionTable() {}         // mnuConfigUmlaut
  // Status-bar panel 1 at start-up (Windows-1252).
  [[nodiscard]] virtual std::string portStatusText() const = 0;
  virtual void closePort() = 0;  // shut-down, after the close question
};

using DeviceCommandsFactory = std::function<std::unique_ptr<DeviceCommands>(AppShell&)>;

// Stands in until the device commands are built in: every command says that it is not
// available, and the port reads as closed at its default settings.
class UnavailableDeviceCommands : public DeviceCommands {
 public:
  explicit UnavailableDeviceCommands(AppShell& shell) : m_shell(shell) {}
  void downloadAll() override { unavailable(); }
  void uploadAll() override { unavailable(); }
  void downloadMessages() override { unavailable(); }
  void uploadMessages() override { unavailable(); }
  void downloadPhones() override { unavailable(); }
  void uploadPhones() override { unavailable(); }
  void downloadConfiguration() override { unavailable(); }
  void uploadConfiguration() override { unavailable(); }
  void downloadFlags() override { unavailable(); }
  void uploadFlags() override { unavailable(); }
  void acknowledgementRequest() override { unavailable(); }
  void portSettings() override { unavailable(); }
  void smsCentreList() override { unavailable(); }
  void identifyDevice() override { unavailable(); }
  void readLogger() override { unavailable(); }
  [[nodiscard]] std::string portStatusText() const override;
  void closePort() override {}

 private:
  void unavailable();
  AppShell& m_shell;
};

}  // namespace quillon::app
