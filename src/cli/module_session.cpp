#include "cli/module_session.h"

#include <QDateTime>
#include <optional>

#include "cli/command.h"
#include "cli/command_log.h"
#include "link/qt/identify.h"
#include "text/code_page.h"

namespace quillon::cli {

namespace {

// The driver runs on an event loop, which needs an application object; the command line has
// none.
std::unique_ptr<QCoreApplication> applicationIfNone() {
  static int argc = 1;
  static char name[] = "quillon-cli";
  static char* argv[] = {name, nullptr};
  if (QCoreApplication::instance() != nullptr) return nullptr;
  return std::make_unique<QCoreApplication>(argc, argv);
}

}  // namespace

ModuleSession::ModuleSession(const LinkOptions& options, DialogAnswers answers, int language,
                             Console& console)
    : m_options(options),
      m_console(console),
      m_identificationOutput(&console.err),
      m_application(applicationIfNone()),
      m_progress(console.err, console.progress),
      m_dialog(console, m_progress, answers),
      m_link(m_dialog),
      m_linkContext{m_link, m_dialog, m_progress, m_limits, m_session, language},
      m_interrupt([this] { cancelTransfer(); }) {
  EngineSettings settings;
  settings.replyTimeout = options.replyTimeout;
  settings.language = language;
  m_link.setEngineSettings(settings);
  m_link.setObserver(this);
  if (options.maxTime) {
    m_maxTimeDeadline.setRemainingTime(static_cast<qint64>(*options.maxTime));
    m_maxTimeTimer.setSingleShot(true);
    m_maxTimeTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_maxTimeTimer, &QTimer::timeout, [this] { maxTimeReached(); });
    m_maxTimeTimer.start(static_cast<int>(*options.maxTime));
  }
}

ModuleSession::~ModuleSession() {
  m_progress.endLine();
  m_link.setObserver(nullptr);
}

int ModuleSession::open() {
  QString why;
  const auto port = resolvePort(QString::fromStdString(m_options.port), &why);
  if (!port) {
    m_console.err << "No device for port '" << EscapeForLog(m_options.port)
                  << "': " << why.toStdString() << "\n";
    return kResultPortNotOpened;
  }
  m_link.setPort(*port);
  if (!m_options.log) return kResultOk;

  const auto log =
      OpenCommandLog(m_log, m_options.logFile, QDateTime::currentDateTime(), m_console.err);
  if (log) {
    m_dialog.tell("", TrafficLogOpenedText(log->fileName, utf8ToCp1252(log->directory)));
    m_link.setTrafficLog(&m_log);
  }
  return kResultOk;
}

int ModuleSession::run(Task<int> task) {
  std::optional<int> result;
  StartTask(std::move(task), [&result](int ended) {
    result = ended;
    QCoreApplication::exit(0);
  });
  // A task that never had to wait for the module has ended already.
  if (!result) QCoreApplication::exec();
  return result.value_or(kResultCancelled);
}

Task<int> ModuleSession::identify() {
  const int result = co_await IdentifyModule(m_linkContext);
  m_progress.endLine();
  if (result == kResultPortNotOpened) {
    m_console.err << "Cannot open " << m_options.port << ": "
                  << cp1252ToUtf8(m_link.portErrorText()) << "\n";
  }
  if (result == kResultVersionConflict) printIdentification();
  co_return result;
}

Task<int> ModuleSession::identifyBeforeTransfers() {
  const int result = co_await identify();
  co_return result == kResultNoResponse ? kResultOk : result;
}

bool ModuleSession::maxTimePassed() {
  if (m_maxTimeDeadline.hasExpired()) maxTimeReached();
  return m_maxTimePassed;
}

int ModuleSession::exitStatus(int result) {
  if (maxTimePassed()) return kResultTimeout;
  if (result == kResultOk && m_refused) return kExitRefused;
  return result;
}

TransferContext ModuleSession::transferContext(Project& project, const UiTexts& texts) {
  TransferHooks hooks;
  hooks.showIdentification = [this] { printIdentification(); };
  return TransferContext{m_linkContext, texts, project, std::move(hooks)};
}

void ModuleSession::printIdentification() {
  m_progress.breakLine();
  for (const auto& [label, value] : IdentityFields(m_session.identity)) {
    const std::string shown = label == "Reply" ? EscapeForLog(value) : value;
    *m_identificationOutput << label << ": " << cp1252ToUtf8(shown) << "\n";
  }
}

void ModuleSession::transferStarted(const TransferJob& job) {
  m_cancelSent = false;
  m_readingIdentity = job.contentLabel == kLabelVersion;
  ++m_transfersStarted;
  m_progress.transferStarted(job);
}

void ModuleSession::transferEvent(const TransferEvent& event) {
  m_progress.transferEvent(event);
  // Ctrl-C and --max-time stop the command: a transfer that starts after either is cancelled at
  // its first step.
  if (event.kind == TransferEvent::Kind::Finished) return;
  if (m_maxTimeDeadline.hasExpired()) maxTimeReached();
  if (m_interrupt.interrupted() || m_maxTimePassed) cancelTransfer();
}

void ModuleSession::transferFinished(const TransferOutcome& outcome) {
  // A refused version request is the identity's business: it reads as the wrong device.
  if (outcome.refused && !m_readingIdentity) m_refused = true;
}

void ModuleSession::maxTimeReached() {
  if (m_maxTimePassed) return;
  m_maxTimePassed = true;
  m_progress.breakLine();
  m_console.err << "quillon-cli: --max-time has passed; no output file is written\n";
  cancelTransfer();
}

void ModuleSession::cancelTransfer() {
  if (m_cancelSent || !m_link.transferRunning()) return;
  m_cancelSent = true;
  m_link.cancel();
}

}  // namespace quillon::cli
