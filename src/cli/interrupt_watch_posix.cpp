#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>

#include "cli/interrupt_watch.h"

namespace quillon::cli {

namespace {

// The handler can reach nothing but this: one watch at a time.
int g_interruptPipe[2] = {-1, -1};

extern "C" void onInterrupt(int) {
  const int saved = errno;
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(g_interruptPipe[1], &byte, 1);
  errno = saved;
}

}  // namespace

struct InterruptWatch::System {
  struct sigaction previous {};
  std::unique_ptr<QSocketNotifier> notifier;

  ~System() {
    ::sigaction(SIGINT, &previous, nullptr);
    notifier.reset();
    ::close(g_interruptPipe[0]);
    ::close(g_interruptPipe[1]);
    g_interruptPipe[0] = g_interruptPipe[1] = -1;
  }
};

InterruptWatch::InterruptWatch(std::function<void()> onInterrupt)
    : m_onInterrupt(std::move(onInterrupt)) {
  if (g_interruptPipe[0] >= 0 || ::pipe2(g_interruptPipe, O_NONBLOCK | O_CLOEXEC) != 0) return;
  struct sigaction action {};
  action.sa_handler = quillon::cli::onInterrupt;
  sigemptyset(&action.sa_mask);
  // The handler resets itself: a second Ctrl-C takes the default way out.
  action.sa_flags = static_cast<int>(static_cast<unsigned>(SA_RESTART) | SA_RESETHAND);
  struct sigaction previous {};
  // A Ctrl-C that the shell told this process to ignore (a background job) stays ignored.
  const bool ignored =
      ::sigaction(SIGINT, nullptr, &previous) == 0 && previous.sa_handler == SIG_IGN;
  if (ignored || ::sigaction(SIGINT, &action, &previous) != 0) {
    ::close(g_interruptPipe[0]);
    ::close(g_interruptPipe[1]);
    g_interruptPipe[0] = g_interruptPipe[1] = -1;
    return;
  }
  m_system = std::make_unique<System>();
  m_system->previous = previous;
  m_system->notifier = std::make_unique<QSocketNotifier>(g_interruptPipe[0], QSocketNotifier::Read);
  QObject::connect(m_system->notifier.get(), &QSocketNotifier::activated, [this] {
    char buffer[16];
    while (::read(g_interruptPipe[0], buffer, sizeof buffer) > 0) {
    }
    deliver();
  });
}

InterruptWatch::~InterruptWatch() = default;

}  // namespace quillon::cli
