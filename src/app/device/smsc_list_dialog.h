#pragma once
// The SMS-centre list `SMSC_Liste`: a click on a row puts "number;label" on the clipboard and the
// number into the project's SMS-centre field, and closes the list.

#include <QDialog>

#include "app/app_state.h"

class QTableWidget;

namespace quillon::app::device {

class SmscListDialog : public QDialog {
  Q_OBJECT

 public:
  explicit SmscListDialog(AppState& state, QWidget* parent = nullptr);

 private:
  void choose(int row);

  AppState& m_state;
  QTableWidget* m_table = nullptr;
};

}  // namespace quillon::app::device
