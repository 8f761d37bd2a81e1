#pragma once
// Ctrl-C while a command talks to the module. The signal handler only writes a byte into a
// pipe; the event loop that runs the transfer sees the pipe through a socket notifier and calls
// back, so the transfer is cancelled by the same path as the Cancel button. The handler resets
// itself, so that a second Ctrl-C ends a program that is not in an event loop (a question on the
// terminal, for instance) at once.

#include <signal.h>

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace quillon::cli {

class InterruptWatch {
 public:
  explicit InterruptWatch(std::function<void()> onInterrupt);
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  // Ctrl-C was pressed at least once.
  [[nodiscard]] bool interrupted() const { return m_interrupted; }

 private:
  void drain();

  std::function<void()> m_onInterrupt;
  std::unique_ptr<QSocketNotifier> m_notifier;
  struct sigaction m_previous {};
  bool m_installed = false;
  bool m_interrupted = false;
};

}  // namespace quillon::cli
