#include "link/qt/serial_link.h"

#include <QTime>
#include <algorithm>
#include <string_view>
#include <utility>

#include "link/qt/serial_port_setup.h"
#include "link/qt/transfer_observer.h"
#include "link/traffic_log.h"
#include "link/transfer_engine.h"
#include "link/transfer_presenter.h"
#include "text/code_page.h"

namespace quillon {
namespace {

// How long the last bytes of a transfer may take to leave before the port is closed anyway,
// beyond their time on the line.
constexpr qint64 kDrainAllowanceMs = 2000;

bool hardwareHandshake(int mode) {
  return mode == static_cast<int>(Handshaking::RtsCts) ||
         mode == static_cast<int>(Handshaking::XonRts);
}

}  // namespace

SerialLink::SerialLink(UserDialog& dialog, QObject* parent) : QObject(parent), m_dialog(dialog) {
  m_steady.start();
  m_timer.setSingleShot(true);
  m_timer.setTimerType(Qt::PreciseTimer);
  connect(&m_timer, &QTimer::timeout, this, &SerialLink::onTimer);
  connect(&m_port, &QSerialPort::readyRead, this, &SerialLink::pump);
  connect(&m_port, &QSerialPort::errorOccurred, this, &SerialLink::onError);
  connect(&m_port, &QSerialPort::bytesWritten, this, [this] {
    // Closed from the timer, never from inside the port's own signal.
    if (m_phase == Phase::Draining && m_port.bytesToWrite() == 0) m_timer.start(0);
  });
}

SerialLink::~SerialLink() {
  m_timer.stop();
  if (m_port.isOpen()) m_port.close();
}

void SerialLink::setPort(PortId port) {
  if (m_port.isOpen() && port.device != m_portId.device) m_port.close();
  m_portId = std::move(port);
}

SteadyTime SerialLink::now() const { return m_steady.elapsed(); }

int SerialLink::configurePort() {
  m_settings = kDefaultSettingsString;
  if (m_status) m_status->setStatus(StatusPanel::Port, portStatusText());
  const int status = openLinkPort();
  closeLinkPort();
  return status;
}

int SerialLink::openLinkPort() {
  if (!m_port.isOpen()) {
    if (m_portId.device.isEmpty()) {
      m_portError = "No port selected";
      return 1;
    }
    if (!isDeviceName(m_portId.device)) {
      m_portError = "Not a device name";
      return 1;
    }
    m_port.setPortName(m_portId.device);
    if (!ApplyLineSettings(m_port, m_settings, m_handshaking)) {
      m_portError = "Invalid port settings: " + m_settings;
      m_port.clearError();
      return 1;
    }
    if (!m_port.open(QIODevice::ReadWrite)) {
      m_portError = utf8ToCp1252(m_port.errorString().toStdString());
      m_port.clearError();
      return 1;
    }
    m_portError.clear();
    m_linkLost = false;
    m_linkDown = false;
    raiseModemLines();
  }
  clearPortBuffers();
  return 0;
}

void SerialLink::raiseModemLines() {
  // Pseudo-terminals and some USB adapters have no modem lines; that must not stop a transfer.
  if (!m_port.setDataTerminalReady(true)) m_port.clearError();
  if (!hardwareHandshake(m_handshaking) && !m_port.setRequestToSend(true)) m_port.clearError();
}

void SerialLink::closeLinkPort() {
  if (m_port.isOpen()) m_port.close();
}

void SerialLink::clearPortBuffers() {
  if (m_port.isOpen() && !m_port.clear(QSerialPort::AllDirections)) m_port.clearError();
}

std::string SerialLink::portStatusText() const {
  const std::string port = m_portId.number > 0 ? PortNumberText(m_portId.number)
                                               : " " + utf8ToCp1252(m_portId.device.toStdString());
  return PortStatusText(port, m_settings, m_handshaking, m_port.isOpen());
}

void SerialLink::startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) {
  if (m_engine) {
    // One transfer window at a time; a second one cannot reach the module.
    TransferOutcome refused;
    refused.status = TransferStatus::NoConnection;
    QTimer::singleShot(0, this, [done = std::move(done), refused] { done(refused); });
    return;
  }
  m_engine = std::make_unique<TransferEngine>(job, m_engineSettings);
  m_presenter = std::make_unique<TransferPresenter>(job, m_engineSettings.language);
  m_done = std::move(done);
  m_phase = Phase::Running;
  m_timerFired = false;
  if (m_observer) m_observer->transferStarted(job);

  const bool opened = openLinkPort() == 0;
  m_presenter->setPortErrorText(m_portError);
  m_lastNow = now();
  m_engine->start(m_lastNow,
                  m_timeOfDay ? m_timeOfDay() : QTime::currentTime().msecsSinceStartOfDay());
  if (!opened) {
    m_dialog.tell(kTerminalTitle, m_portError, BoxIcon::Exclamation);
    m_engine->onLinkLost(m_lastNow);
  }
  pump();
}

void SerialLink::cancel() {
  if (!m_engine || m_phase != Phase::Running) return;
  m_engine->cancel(now());
  pump();
}

void SerialLink::onTimer() {
  if (m_phase == Phase::Running) {
    m_timerFired = true;
    pump();
  } else if (m_phase == Phase::Draining) {
    endTransfer();
  }
}

void SerialLink::onError(QSerialPort::SerialPortError error) {
  if (error != QSerialPort::ReadError && error != QSerialPort::WriteError &&
      error != QSerialPort::ResourceError) {
    return;  // unsupported modem-line calls and the like leave the link as it is
  }
  m_portError = utf8ToCp1252(m_port.errorString().toStdString());
  m_port.clearError();
  m_linkDown = true;
  if (m_phase == Phase::Running) {
    m_linkLost = true;
    pump();
  } else if (m_phase == Phase::Draining) {
    m_timer.start(0);  // nothing more will leave; close now
  } else {
    QTimer::singleShot(0, this, [this] { closeLinkPort(); });
  }
}

void SerialLink::pump() {
  if (!m_engine || m_phase != Phase::Running) return;
  if (m_pumping) {
    // Called again from inside a box's event loop: the outer call goes round once more.
    m_pumpAgain = true;
    return;
  }
  m_pumping = true;
  do {
    m_pumpAgain = false;
    if (!m_engine->finished()) {
      m_lastNow = now();
      if (m_linkLost) {
        m_linkLost = false;
        m_engine->onLinkLost(m_lastNow);
      }
      if (m_port.isOpen() && m_port.bytesAvailable() > 0) {
        const QByteArray bytes = m_port.readAll();
        m_engine->onBytes(
            std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())), m_lastNow);
      }
      const auto due = m_engine->deadline();
      if (m_timerFired || (due && *due <= m_lastNow)) {
        m_timerFired = false;
        m_engine->onDeadline(m_lastNow);
      }
    }
    const std::string out = m_engine->takeOutgoing();
    if (!out.empty() && m_port.isOpen()) m_port.write(out.data(), static_cast<qint64>(out.size()));
    dispatch(m_engine->takeEvents());
  } while (m_pumpAgain);
  m_pumping = false;
  if (m_engine->finished())
    finishTransfer();
  else
    rearm();
}

void SerialLink::dispatch(const std::vector<EngineEvent>& engineEvents) {
  for (const TransferEvent& event : m_presenter->present(engineEvents)) {
    if (m_observer) m_observer->transferEvent(event);
    if (event.kind == TransferEvent::Kind::Log && m_log) m_log->logTraffic(event.text, event.text2);
    if (event.kind == TransferEvent::Kind::Box) (void)m_dialog.ask(event.box);
  }
}

void SerialLink::rearm() {
  const auto due = m_engine->deadline();
  if (!due) {
    m_timer.stop();
    return;
  }
  m_timer.start(static_cast<int>(std::max<SteadyTime>(*due - m_lastNow, 0)));
}

void SerialLink::finishTransfer() {
  m_phase = Phase::Draining;
  if (!m_linkDown && m_port.isOpen() && m_port.bytesToWrite() > 0) {
    // The last ACK of a read must reach the module before the port closes.
    const qint32 speed = std::max<qint32>(m_port.baudRate(), 1);
    m_timer.start(static_cast<int>(m_port.bytesToWrite() * 10'000 / speed + kDrainAllowanceMs));
  } else {
    m_timer.start(0);
  }
}

void SerialLink::endTransfer() {
  m_timer.stop();
  closeLinkPort();
  m_phase = Phase::Idle;
  TransferOutcome outcome = m_engine->outcome();
  m_engine.reset();
  m_presenter.reset();
  if (m_observer) m_observer->transferFinished(outcome);
  // The caller goes on from the event loop, not from inside this driver: its next step may
  // start the next transfer, or end the program.
  if (auto done = std::exchange(m_done, {})) {
    QTimer::singleShot(0, this,
                       [done = std::move(done), outcome = std::move(outcome)] { done(outcome); });
  }
}

}  // namespace quillon
