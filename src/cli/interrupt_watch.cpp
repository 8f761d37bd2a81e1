#include "cli/interrupt_watch.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

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

InterruptWatch::InterruptWatch(std::function<void()> onInterrupt)
    : m_onInterrupt(std::move(onInterrupt)) {
  if (g_interruptPipe[0] >= 0 || ::pipe2(g_interruptPipe, O_NONBLOCK | O_CLOEXEC) != 0) return;
  struct sigaction action {};
  action.sa_handler = quillon::cli::onInterrupt;
  sigemptyset(&action.sa_mask);
  action.sa_flags = static_cast<int>(static_cast<unsigned>(SA_RESTART) | SA_RESETHAND);
  // A Ctrl-C that the shell told this process to ignore (a background job) stays ignored.
  const bool ignored =
      ::sigaction(SIGINT, nullptr, &m_previous) == 0 && m_previous.sa_handler == SIG_IGN;
  if (ignored || ::sigaction(SIGINT, &action, &m_previous) != 0) {
    ::close(g_interruptPipe[0]);
    ::close(g_interruptPipe[1]);
    g_interruptPipe[0] = g_interruptPipe[1] = -1;
    return;
  }
  m_installed = true;
  m_notifier = std::make_unique<QSocketNotifier>(g_interruptPipe[0], QSocketNotifier::Read);
  QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] { drain(); });
}

InterruptWatch::~InterruptWatch() {
  if (!m_installed) return;
  ::sigaction(SIGINT, &m_previous, nullptr);
  m_notifier.reset();
  ::close(g_interruptPipe[0]);
  ::close(g_interruptPipe[1]);
  g_interruptPipe[0] = g_interruptPipe[1] = -1;
}

void InterruptWatch::drain() {
  char buffer[16];
  while (::read(g_interruptPipe[0], buffer, sizeof buffer) > 0) {
  }
  m_interrupted = true;
  if (m_onInterrupt) m_onInterrupt();
}

}  // namespace quillon::cli
