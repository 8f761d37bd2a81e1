#include "app/device/properties_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSerialPortInfo>
#include <QVBoxLayout>

#include "app/qt_text.h"
#include "link/qt/port_names.h"
#include "link/qt/port_settings.h"
#include "link/qt/port_test.h"
#include "link/qt/serial_port_setup.h"

namespace quillon::app::device {
namespace {

constexpr int kXonXoffBit = 1;
constexpr int kRtsCtsBit = 2;

template <std::size_t N>
QComboBox* list(QWidget* parent, const char* name, const std::array<const char*, N>& entries) {
  auto* box = new QComboBox(parent);
  box->setObjectName(name);
  for (const char* entry : entries) box->addItem(QString::fromLatin1(entry));
  return box;
}

}  // namespace

QString portChoiceText(int number) {
  QString text = QString::number(number);
  const QString device = deviceForPortNumber(number);
  if (device.isEmpty()) return text;
  text += QStringLiteral("  ") + device;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    if (info.systemLocation() != device && info.portName() != device) continue;
    const QString description =
        !info.description().isEmpty() ? info.description() : info.manufacturer();
    if (!description.isEmpty()) text += QStringLiteral(" - ") + description;
    return text;
  }
  // Not a port of the system: a link that a program registered for this number.
  return text + QStringLiteral(" - registered link");
}

PropertiesDialog::PropertiesDialog(AppState& state, SerialLink& link, UserDialog& dialog,
                                   StatusDisplay& status, QWidget* parent)
    : QDialog(parent), m_state(state), m_link(link), m_dialog(dialog), m_status(status) {
  setObjectName("frmProperties");
  setWindowTitle(state.text(slot::kSettings));

  m_port = new QComboBox(this);
  m_port->setObjectName("cboPort");
  for (int number = kPortTestFirst; number <= kPortTestLast; ++number)
    m_port->addItem(portChoiceText(number), number);
  m_speed = list(this, "cboSpeed", kSpeedEntries);
  m_dataBits = list(this, "cboDataBits", kDataBitsEntries);
  m_parity = list(this, "cboParity", kParityEntries);
  m_stopBits = list(this, "cboStopBits", kStopBitsEntries);
  m_xonXoff = new QCheckBox(QStringLiteral("XON/XOFF"), this);
  m_xonXoff->setObjectName("optEcho");
  m_rtsCts = new QCheckBox(QStringLiteral("RTS/CTS"), this);
  m_rtsCts->setObjectName("optFlow");

  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Port (COM):"), m_port);
  form->addRow(QStringLiteral("Baud:"), m_speed);
  form->addRow(QStringLiteral("Data bits:"), m_dataBits);
  form->addRow(QStringLiteral("Parity:"), m_parity);
  form->addRow(QStringLiteral("Stop bits:"), m_stopBits);
  auto* handshake = new QHBoxLayout;
  handshake->addWidget(m_xonXoff);
  handshake->addWidget(m_rtsCts);
  handshake->addStretch(1);
  form->addRow(QStringLiteral("Handshake:"), handshake);

  m_testing = new QLabel(this);
  m_testing->setObjectName("lblComNr");
  auto* test = new QPushButton(state.text(slot::kTestConnection), this);
  test->setObjectName("cmdTest");
  test->setAutoDefault(false);
  auto* ok = new QPushButton(state.text(slot::kOk), this);
  ok->setObjectName("cmdOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton(state.text(slot::kCancel), this);
  cancel->setObjectName("cmdCancel");
  cancel->setAutoDefault(false);
  connect(test, &QPushButton::clicked, this, &PropertiesDialog::testPorts);
  connect(ok, &QPushButton::clicked, this, &PropertiesDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &PropertiesDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(test);
  buttons->addWidget(m_testing);
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addLayout(buttons);
  readBack();
}

void PropertiesDialog::readBack() {
  const PortId& port = m_link.port();
  if (port.number == 0 && !port.device.isEmpty()) {
    // A device named on the command line has no number; it stays the choice until another.
    m_port->insertItem(0, port.device, 0);
    m_port->setCurrentIndex(0);
  } else {
    m_port->setCurrentIndex(m_port->findData(port.number > 0 ? port.number : m_state.portNumber));
  }
  const SettingsSelection selection = SelectionForSettings(m_link.settingsString());
  m_speed->setCurrentIndex(selection.speed);
  m_parity->setCurrentIndex(selection.parity);
  m_dataBits->setCurrentIndex(selection.dataBits);
  m_stopBits->setCurrentIndex(selection.stopBits);
  m_xonXoff->setChecked((m_link.handshaking() & kXonXoffBit) != 0);
  m_rtsCts->setChecked((m_link.handshaking() & kRtsCtsBit) != 0);
}

void PropertiesDialog::accept() {
  m_link.closeLinkPort();
  const int number = m_port->currentData().toInt();
  if (number > 0) {
    m_state.portNumber = number;
    m_link.setPort(PortId{number, deviceForPortNumber(number)});
  }
  const std::string settings = BuildSettingsString(
      fromQString(m_speed->currentText()), fromQString(m_parity->currentText()),
      fromQString(m_dataBits->currentText()), fromQString(m_stopBits->currentText()));
  const int handshaking =
      (m_xonXoff->isChecked() ? kXonXoffBit : 0) | (m_rtsCts->isChecked() ? kRtsCtsBit : 0);
  m_link.setSettingsString(settings);
  m_link.setHandshaking(handshaking);
  if (m_link.openLinkPort() != 0)
    m_dialog.tell(kMainTitle, m_link.portErrorText(), BoxIcon::Exclamation);
  SaveSerialConfiguration(settings, number > 0 ? number : m_state.portNumber, handshaking);
  m_status.setStatus(StatusPanel::Port, m_link.portStatusText());
  QDialog::accept();
}

void PropertiesDialog::testPorts() {
  m_link.closeLinkPort();
  m_link.setSettingsString(kDefaultSettingsString);
  const std::vector<int> available = ScanPorts(CanOpenPort, [this](int number) {
    m_testing->setText(QString::number(number));
    // The number under test is painted before its port is tried.
    m_testing->repaint();
  });
  (void)m_dialog.ask(PortTestBox(available));
  m_status.setStatus(StatusPanel::Port, m_link.portStatusText());
}

}  // namespace quillon::app::device
