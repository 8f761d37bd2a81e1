#pragma once
// The acknowledgement request `frmQuittung`: the request put in front of an SMS and the pattern
// of the centre's answer. It is created once and only hidden, and every edit goes straight into
// the project, so Cancel undoes nothing and the next messages download sends what was typed.

#include <QDialog>
#include <string>

#include "app/app_state.h"
#include "project/user_dialog.h"

class QLabel;
class QLineEdit;

namespace quillon::app::device {

inline constexpr const char* kQuittungHelpTitle = "Quittungseinstellung";

// The help box of cmdInfo (German in every language; line breaks are single CRs).
[[nodiscard]] std::string quittungHelpText();

class QuittungDialog : public QDialog {
  Q_OBJECT

 public:
  QuittungDialog(AppState& state, UserDialog& dialog, QWidget* parent = nullptr);

  // Shows the pair the project holds now (an upload or a load may have changed it), modally.
  void showRequest();
  void applyCaptions();

 private:
  AppState& m_state;
  UserDialog& m_dialog;
  QLineEdit* m_request = nullptr;
  QLineEdit* m_pattern = nullptr;
  QLabel* m_requestCaption = nullptr;
  QLabel* m_patternCaption = nullptr;
  QLabel* m_done = nullptr;
};

}  // namespace quillon::app::device
