#pragma once
// The port settings dialog `frmProperties`: port, line settings and handshaking, read back from
// the link when it opens, applied and saved on OK, and the port test.

#include <QDialog>

#include "app/app_state.h"
#include "link/qt/serial_link.h"

class QComboBox;
class QCheckBox;
class QLabel;

namespace quillon::app::device {

// What cboPort shows for port number n: the number, then the device it stands for on this
// system and what the system calls that device (a USB adapter's name), or that it is a link
// registered by a program such as the simulated module.
[[nodiscard]] QString portChoiceText(int number);

class PropertiesDialog : public QDialog {
  Q_OBJECT

 public:
  PropertiesDialog(AppState& state, SerialLink& link, UserDialog& dialog, StatusDisplay& status,
                   QWidget* parent = nullptr);

 private:
  void readBack();
  void accept() override;
  void testPorts();

  AppState& m_state;
  SerialLink& m_link;
  UserDialog& m_dialog;
  StatusDisplay& m_status;
  QComboBox* m_port = nullptr;
  QComboBox* m_speed = nullptr;
  QComboBox* m_dataBits = nullptr;
  QComboBox* m_parity = nullptr;
  QComboBox* m_stopBits = nullptr;
  QCheckBox* m_xonXoff = nullptr;
  QCheckBox* m_rtsCts = nullptr;
  QLabel* m_testing = nullptr;
};

}  // namespace quillon::app::device
