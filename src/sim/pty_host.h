#pragma once
// Runs a TelvaneModule on a pseudo-terminal: the module's memory, the paced line in both
// directions, the link name and port registration, the trace, and the end of the run (a signal
// or the end of standard input). All waiting is done by the event loop: notifiers on the file
// descriptors and one timer re-armed from the nearest deadline.

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "sim/module_memory.h"
#include "sim/paced_line.h"
#include "sim/sim_options.h"
#include "sim/telvane_module.h"
#include "sim/write_splitter.h"

namespace quillon::sim {

class PtyHost : public QObject {
  Q_OBJECT

 public:
  PtyHost(const SimOptions& options, ModuleMemory& memory, TelvaneModule& module);
  ~PtyHost() override;
  PtyHost(const PtyHost&) = delete;
  PtyHost& operator=(const PtyHost&) = delete;

  // Opens the pseudo-terminal, makes the link and registers the port; false with a reason.
  [[nodiscard]] bool open(std::string& error);
  [[nodiscard]] const std::string& ptyPath() const { return m_ptyPath; }

 private:
  void readMaster();
  void writeMaster();
  void readStdin();
  void readSignal();
  void pump();
  void trace(const char* direction, const std::string& bytes) const;
  void send(const std::string& bytes);
  void saveState();
  void cleanUp();
  [[nodiscard]] SimTime now() const { return m_clock.elapsed(); }

  SimOptions m_options;
  ModuleMemory& m_memory;
  TelvaneModule& m_module;
  PacedLine m_inbound;
  PacedLine m_outbound;
  std::optional<WriteSplitter> m_splitter;
  std::string m_unwritten;

  int m_master = -1;
  int m_slave = -1;  // held open so the master never sees a hang-up between PC sessions
  std::string m_ptyPath;
  bool m_linked = false;
  bool m_registered = false;

  QElapsedTimer m_clock;
  QTimer m_timer;
  std::unique_ptr<QSocketNotifier> m_readNotifier;
  std::unique_ptr<QSocketNotifier> m_writeNotifier;
  std::unique_ptr<QSocketNotifier> m_stdinNotifier;
  std::unique_ptr<QSocketNotifier> m_signalNotifier;
};

}  // namespace quillon::sim
