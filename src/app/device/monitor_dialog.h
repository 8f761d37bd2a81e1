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
  // `readLogger` starts the read-out from the text shown now and calls `ended` with the text to
  // show once it is over.
  using ReadLogger =
      std::function<void(std::string monitor, std::function<void(std::string)> ended)>;
  MonitorDialog(const AppState& state, UserDialog& dialog, FilePicker& files, ReadLogger readLogger,
                QWidget* parent = nullptr);

  [[nodiscard]] const std::string& monitorText() const { return m_monitor; }

 private:
  void upload();
  void showMonitor(std::string monitor);
  void save();

  UserDialog& m_dialog;
  FilePicker& m_files;
  ReadLogger m_readLogger;
  std::string m_monitor;  // as received, lines ended by CR LF
  QPlainTextEdit* m_text = nullptr;
};

}  // namespace quillon::app::device
