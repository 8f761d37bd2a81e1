#include "link/qt/serial_port_setup.h"

#include <QSettings>

#include "link/qt/port_names.h"
#include "link/qt/port_settings.h"

namespace quillon {
namespace {

QSerialPort::Parity parityFor(char letter) {
  switch (letter) {
    case 'E':
      return QSerialPort::EvenParity;
    case 'O':
      return QSerialPort::OddParity;
    case 'M':
      return QSerialPort::MarkParity;
    case 'S':
      return QSerialPort::SpaceParity;
    default:
      return QSerialPort::NoParity;
  }
}

QSerialPort::StopBits stopBitsFor(StopBits bits) {
  switch (bits) {
    case StopBits::OneAndHalf:
      return QSerialPort::OneAndHalfStop;
    case StopBits::Two:
      return QSerialPort::TwoStop;
    case StopBits::One:
      break;
  }
  return QSerialPort::OneStop;
}

QSerialPort::FlowControl flowFor(int handshaking) {
  switch (static_cast<Handshaking>(handshaking)) {
    case Handshaking::XonXoff:
      return QSerialPort::SoftwareControl;
    // The port offers no combination of both; the hardware lines are the safer half.
    case Handshaking::RtsCts:
    case Handshaking::XonRts:
      return QSerialPort::HardwareControl;
    case Handshaking::None:
      break;
  }
  return QSerialPort::NoFlowControl;
}

}  // namespace

bool ApplyLineSettings(QSerialPort& port, std::string_view settings, int handshaking) {
  const auto line = ParseSettingsString(settings);
  if (!line || line->dataBits < 5 || line->dataBits > 8) return false;
  return port.setBaudRate(line->speed) && port.setParity(parityFor(line->parity)) &&
         port.setDataBits(static_cast<QSerialPort::DataBits>(line->dataBits)) &&
         port.setStopBits(stopBitsFor(line->stopBits)) && port.setFlowControl(flowFor(handshaking));
}

void SaveSerialConfiguration(const std::string& settings, int portNumber, int handshaking) {
  QSettings store(kSettingsOrganisation, kSettingsApplication);
  store.beginGroup(QStringLiteral("Configuration"));
  store.setValue(QStringLiteral("Configuration"), QString::fromLatin1(settings.c_str()));
  store.setValue(QStringLiteral("ComNr"), portNumber);
  store.setValue(QStringLiteral("Handshaking"), handshaking);
  store.endGroup();
  store.sync();
}

}  // namespace quillon
