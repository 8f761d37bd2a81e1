#include "link/qt/port_names.h"

#include <QSerialPortInfo>
#include <QSettings>
#include <algorithm>

namespace quillon {
namespace {

QString portKey(int number) { return QStringLiteral("Ports/COM%1").arg(number); }

// A device path that a port number is registered for keeps that number, so the status bar can
// say "COM n" for it.
int registeredNumber(const QString& device) {
  QSettings settings(kSettingsOrganisation, kSettingsApplication);
  settings.beginGroup(QStringLiteral("Ports"));
  for (const QString& key : settings.childKeys()) {
    if (settings.value(key).toString() != device || !key.startsWith(QStringLiteral("COM")))
      continue;
    bool ok = false;
    const int number = key.mid(3).toInt(&ok);
    if (ok && number > 0) return number;
  }
  return 0;
}

void explain(QString* why, const QString& text) {
  if (why != nullptr) *why = text;
}

}  // namespace

bool isDeviceName(const QString& text) {
  if (text.trimmed().isEmpty()) return false;
  return std::none_of(text.begin(), text.end(),
                      [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; });
}

QString deviceForPortNumber(int number, QString* why) {
  if (number < 1) {
    explain(why, QStringLiteral("there is no port %1").arg(number));
    return {};
  }
#ifdef Q_OS_WIN
  return QStringLiteral("COM%1").arg(number);
#else
  const QSettings settings(kSettingsOrganisation, kSettingsApplication);
  if (settings.contains(portKey(number))) {
    const QVariant value = settings.value(portKey(number));
    const QString registered = value.toString();
    // Never fall back to another device: the user registered this number for one.
    if (value.typeId() != QMetaType::QString || !isDeviceName(registered)) {
      explain(why, QStringLiteral("the settings value %1 in %2 is not a device name")
                       .arg(portKey(number), settings.fileName()));
      return {};
    }
    return registered;
  }
  auto ports = QSerialPortInfo::availablePorts();
  std::sort(ports.begin(), ports.end(), [](const QSerialPortInfo& a, const QSerialPortInfo& b) {
    return a.portName() < b.portName();
  });
  if (number > ports.size()) {
    explain(why, QStringLiteral("the system lists %1 serial ports").arg(ports.size()));
    return {};
  }
  return ports[number - 1].systemLocation();
#endif
}

std::optional<PortId> resolvePort(const QString& text, QString* why) {
  QString digits = text.trimmed();
  if (digits.startsWith(QStringLiteral("COM"), Qt::CaseInsensitive)) digits = digits.mid(3);
  bool isNumber = false;
  const int number = digits.toInt(&isNumber);
  if (!isNumber) {
    if (!isDeviceName(text)) {
      explain(why, QStringLiteral("not a device name"));
      return std::nullopt;
    }
    return PortId{registeredNumber(text), text};
  }
  const QString device = deviceForPortNumber(number, why);
  if (device.isEmpty()) return std::nullopt;
  return PortId{number, device};
}

void registerPort(int number, const QString& device) {
  QSettings settings(kSettingsOrganisation, kSettingsApplication);
  settings.setValue(portKey(number), device);
  settings.sync();
}

void unregisterPort(int number, const QString& device) {
  QSettings settings(kSettingsOrganisation, kSettingsApplication);
  if (settings.value(portKey(number)).toString() == device) settings.remove(portKey(number));
  settings.sync();
}

}  // namespace quillon
