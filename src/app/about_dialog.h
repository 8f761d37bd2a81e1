#pragma once
// The about box `frmAbout`: program title, version, what the program is for, the legal warning,
// and the system-information button.

#include <QDialog>

#include "app/app_state.h"
#include "project/user_dialog.h"

namespace quillon::app {

// "Version 1.0.0" for this build.
[[nodiscard]] QString versionText();

class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  AboutDialog(const AppState& state, UserDialog& dialog, QWidget* parent = nullptr);

 private:
  void systemInfo();
  UserDialog& m_dialog;
};

}  // namespace quillon::app
