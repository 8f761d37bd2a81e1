#pragma once
// The logger monitor `frmMonitor`: reads the module's logger into txtMonitor and saves it.

#include <QDialog>
#include <functional>
#include <string>

#include "app/app_state.h"
#include "app/file_picker.h"
#include "project/user_dialog.h"

class QPlainTextEdit;

namespace quillon::app::device {

class MonitorDialog : public QDialog {
  Q_OBJECT

 public:
  // `readLogger` runs the read-out into the text it is given.
  MonitorDialog(const AppState& state, UserDialog& dialog, FilePicker& files,
                std::function<void(std::string& monitor)> readLogger, QWidget* parent = nullptr);

  [[nodiscard]] const std::string& monitorText() const { return m_monitor; }

 private:
  void upload();
  void save();

  UserDialog& m_dialog;
  FilePicker& m_files;
  std::function<void(std::string&)> m_readLogger;
  std::string m_monitor;  // as received, lines ended by CR LF
  QPlainTextEdit* m_text = nullptr;
};

}  // namespace quillon::app::device
