#pragma once
// One run of a command that talks to the module: the serial driver on the chosen port, the
// terminal's dialog and progress lines, the traffic log, Ctrl-C, and the link state that the
// program keeps for its run (module limits, "Telvane ready ?" answered, identity read).

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <memory>
#include <ostream>

#include "cli/console.h"
#include "cli/console_dialog.h"
#include "cli/interrupt_watch.h"
#include "cli/link_options.h"
#include "cli/progress_lines.h"
#include "link/qt/serial_link.h"
#include "link/qt/transfer_observer.h"
#include "link/sign_in.h"
#include "link/traffic_log.h"
#include "transfer/transfer_context.h"

namespace quillon::cli {

class ModuleSession : private TransferObserver {
 public:
  ModuleSession(const LinkOptions& options, DialogAnswers answers, int language, Console& console);
  ~ModuleSession() override;
  ModuleSession(const ModuleSession&) = delete;
  ModuleSession& operator=(const ModuleSession&) = delete;

  // Finds the port and opens the traffic log. 0, or 1 when the port names no device.
  [[nodiscard]] int open();
  // Runs `task`, the part of a command that talks to the module, on the program's one event
  // loop and gives its result once it has ended.
  [[nodiscard]] int run(Task<int> task);
  // The module's identity, read once for the run as the first transfer would: sets the module
  // limits. 0..7; a failure is explained on the error output (7 with the identification).
  [[nodiscard]] Task<int> identify();
  // The identity read in front of a transfer command: only what would stop SignIn's own
  // identity query stops the command. A module that does not answer the version request
  // (6) is asked again by the first transfer, which then goes on.
  [[nodiscard]] Task<int> identifyBeforeTransfers();

  // The exit status of a command whose transfers ended with `result`: a refusal by the module
  // and the end of --max-time are not the 0 and 3 that the procedures report for them.
  [[nodiscard]] int exitStatus(int result);
  // --max-time has passed: the command writes nothing and ends with exitStatus().
  [[nodiscard]] bool maxTimePassed();
  // The module answered a start identifier or a request with a refusal ("Denied").
  [[nodiscard]] bool refused() const { return m_refused; }

  // What the transfer procedures work on, for `project`.
  [[nodiscard]] TransferContext transferContext(Project& project, const UiTexts& texts);

  [[nodiscard]] ModuleLimits& limits() { return m_limits; }
  [[nodiscard]] UserDialog& dialog() { return m_dialog; }
  // How many transfers have started in this run, the identity query included.
  [[nodiscard]] int transfersStarted() const { return m_transfersStarted; }
  // Opens the progress line of one kind of data.
  void beginKind(const std::string& label) { m_progress.beginLine(label); }
  // Ends the progress line, before the command prints its own lines.
  void endProgress() { m_progress.endLine(); }
  // The identification as "label: value" lines: on the error output, or on the stream of a
  // command that prints it as its result. identify() prints it on a version conflict.
  void printIdentification();
  void setIdentificationOutput(std::ostream& stream) { m_identificationOutput = &stream; }

 private:
  void transferStarted(const TransferJob& job) override;
  void transferEvent(const TransferEvent& event) override;
  void transferFinished(const TransferOutcome& outcome) override;
  void cancelTransfer();
  void maxTimeReached();

  LinkOptions m_options;
  Console& m_console;
  std::ostream* m_identificationOutput;
  std::unique_ptr<QCoreApplication> m_application;
  ProgressLines m_progress;
  ConsoleDialog m_dialog;
  SerialLink m_link;
  TrafficLog m_log;
  ModuleLimits m_limits;
  LinkSession m_session;
  LinkContext m_linkContext;
  InterruptWatch m_interrupt;
  bool m_cancelSent = false;  // for the transfer that runs
  int m_transfersStarted = 0;
  bool m_readingIdentity = false;
  bool m_refused = false;
  QDeadlineTimer m_maxTimeDeadline{QDeadlineTimer::Forever};
  QTimer m_maxTimeTimer;
  bool m_maxTimePassed = false;
};

}  // namespace quillon::cli
