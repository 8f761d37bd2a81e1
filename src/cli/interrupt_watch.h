#pragma once
// Ctrl-C while a command talks to the module. The system's handler only hands the news to the
// event loop that runs the transfer, which calls back, so the transfer is cancelled by the same
// path as the Cancel button. A second Ctrl-C ends a program that is not in an event loop (a
// question on the terminal, for instance) at once. One implementation per system:
// interrupt_watch_posix.cpp (a signal handler and a pipe) and interrupt_watch_windows.cpp (a
// console control handler).

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
  struct System;  // what the system's own mechanism needs while the watch lasts

  // On the event loop's thread, once per Ctrl-C.
  void deliver() {
    m_interrupted = true;
    if (m_onInterrupt) m_onInterrupt();
  }

  std::function<void()> m_onInterrupt;
  std::unique_ptr<System> m_system;
  bool m_interrupted = false;
};

}  // namespace quillon::cli
