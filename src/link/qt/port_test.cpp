#include "link/qt/port_test.h"

#include <QSerialPort>

#include "link/qt/port_names.h"
#include "link/qt/port_settings.h"
#include "link/qt/serial_port_setup.h"

namespace quillon {

std::string PortTestText(const std::vector<int>& available) {
  if (available.empty()) return "No com-interface available";
  std::string text;
  for (int number : available) text += " COM " + std::to_string(number) + " verf\xFCgbar!\r";
  return text;
}

Box PortTestBox(const std::vector<int>& available) {
  return Box{kPortTestTitle, PortTestText(available), BoxIcon::Information, BoxButtons::Ok,
             BoxAnswer::Ok};
}

std::vector<int> ScanPorts(const std::function<bool(int)>& canOpen,
                           const std::function<void(int)>& testing) {
  std::vector<int> available;
  for (int number = kPortTestFirst; number <= kPortTestLast; ++number) {
    if (testing) testing(number);
    if (canOpen(number)) available.push_back(number);
  }
  return available;
}

bool CanOpenPort(int number) {
  const QString device = deviceForPortNumber(number);
  if (device.isEmpty()) return false;
  QSerialPort port;
  port.setPortName(device);
  if (!ApplyLineSettings(port, kDefaultSettingsString, 0) || !port.open(QIODevice::ReadWrite))
    return false;
  port.close();
  return true;
}

std::string RunPortTest(const std::function<void(int)>& testing) {
  return PortTestText(ScanPorts(CanOpenPort, testing));
}

}  // namespace quillon
