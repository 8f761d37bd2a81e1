#pragma once
// The serial port under the transfer engine. One driver feeds the engine what readyRead brings,
// writes what the engine asks to write, shows its events, and re-arms one single-shot timer from
// the engine's deadline after every engine call. Nothing blocks and nothing polls: startTransfer
// returns at once, and the outcome goes to its caller from the event loop once the engine has
// finished and the last bytes have left.

#include <QElapsedTimer>
#include <QObject>
#include <QSerialPort>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "link/engine_events.h"
#include "link/qt/port_names.h"
#include "link/qt/port_settings.h"
#include "link/sign_in.h"
#include "link/transfer.h"

namespace quillon {

class TrafficLog;
class TransferEngine;
class TransferObserver;
class TransferPresenter;

class SerialLink : public QObject, public LinkPort {
  Q_OBJECT

 public:
  explicit SerialLink(UserDialog& dialog, QObject* parent = nullptr);
  ~SerialLink() override;
  SerialLink(const SerialLink&) = delete;
  SerialLink& operator=(const SerialLink&) = delete;

  void setPort(PortId port);
  [[nodiscard]] const PortId& port() const { return m_portId; }
  void setSettingsString(std::string settings) { m_settings = std::move(settings); }
  [[nodiscard]] const std::string& settingsString() const { return m_settings; }
  void setHandshaking(int mode) { m_handshaking = mode; }
  [[nodiscard]] int handshaking() const { return m_handshaking; }
  void setEngineSettings(const EngineSettings& settings) { m_engineSettings = settings; }
  [[nodiscard]] const EngineSettings& engineSettings() const { return m_engineSettings; }
  void setObserver(TransferObserver* observer) { m_observer = observer; }
  // Traffic is logged while `log` is open; nullptr stops logging.
  void setTrafficLog(TrafficLog* log) { m_log = log; }
  // ConfigurePort writes the port status text into panel 1.
  void setStatusDisplay(StatusDisplay* status) { m_status = status; }
  // The time of day in ms since midnight, read once as a transfer starts to place the reply
  // time-out's whole seconds and midnights; QTime::currentTime() unless a test sets another.
  // Everything else is timed on a steady clock, which setting the wall clock does not move.
  void setTimeOfDay(std::function<TimeOfDay()> timeOfDay) { m_timeOfDay = std::move(timeOfDay); }

  // ConfigurePort: the literal settings, the status text, open and close again. 0 ok, 1 failure.
  [[nodiscard]] int configurePort();
  [[nodiscard]] int openLinkPort() override;
  void closeLinkPort() override;
  void clearPortBuffers();
  void startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) override;
  [[nodiscard]] std::string portStatusText() const override;
  [[nodiscard]] bool isOpen() const { return m_port.isOpen(); }
  [[nodiscard]] bool transferRunning() const { return m_engine != nullptr; }
  // The port layer's last error, as a box would show it.
  [[nodiscard]] std::string portErrorText() const { return m_portError; }

 public Q_SLOTS:
  // The transfer window's Cancel button.
  void cancel();

 private:
  enum class Phase { Idle, Running, Draining };

  void pump();
  void dispatch(const std::vector<EngineEvent>& events);
  void rearm();
  void finishTransfer();
  void endTransfer();
  void onTimer();
  void onError(QSerialPort::SerialPortError error);
  void raiseModemLines();
  [[nodiscard]] SteadyTime now() const;

  UserDialog& m_dialog;
  QSerialPort m_port;
  QTimer m_timer;
  PortId m_portId;
  std::string m_settings = kDefaultSettingsString;
  int m_handshaking = 0;
  EngineSettings m_engineSettings;
  TransferObserver* m_observer = nullptr;
  TrafficLog* m_log = nullptr;
  StatusDisplay* m_status = nullptr;
  std::function<TimeOfDay()> m_timeOfDay;
  QElapsedTimer m_steady;
  std::string m_portError;

  std::unique_ptr<TransferEngine> m_engine;
  std::unique_ptr<TransferPresenter> m_presenter;
  std::function<void(TransferOutcome)> m_done;
  Phase m_phase = Phase::Idle;
  SteadyTime m_lastNow = 0;  // the `now` of the last engine call
  bool m_pumping = false;
  bool m_pumpAgain = false;
  bool m_linkLost = false;  // the engine has yet to hear that the link is gone
  bool m_linkDown = false;  // nothing written any more will leave
  bool m_timerFired = false;
};

}  // namespace quillon
