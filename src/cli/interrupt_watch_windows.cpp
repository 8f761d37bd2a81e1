#include <windows.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <atomic>

#include "cli/interrupt_watch.h"

namespace quillon::cli {

namespace {

// The console calls its handler on a thread of its own; it can reach nothing but this.
std::atomic<InterruptWatch*> g_watch{nullptr};
std::atomic<bool> g_pressed{false};
std::function<void(InterruptWatch*)> g_deliver;

BOOL WINAPI onConsoleControl(DWORD event) {
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
  // A second Ctrl-C takes the default way out, as on other systems.
  if (g_pressed.exchange(true)) return FALSE;
  InterruptWatch* watch = g_watch.load();
  QCoreApplication* application = QCoreApplication::instance();
  if (watch == nullptr || application == nullptr) return FALSE;
  QMetaObject::invokeMethod(
      application,
      [watch] {
        if (g_watch.load() == watch) g_deliver(watch);
      },
      Qt::QueuedConnection);
  return TRUE;
}

}  // namespace

struct InterruptWatch::System {
  ~System() {
    SetConsoleCtrlHandler(onConsoleControl, FALSE);
    g_watch = nullptr;
  }
};

InterruptWatch::InterruptWatch(std::function<void()> onInterrupt)
    : m_onInterrupt(std::move(onInterrupt)) {
  InterruptWatch* none = nullptr;
  if (!g_watch.compare_exchange_strong(none, this)) return;
  g_deliver = [](InterruptWatch* watch) { watch->deliver(); };
  if (!SetConsoleCtrlHandler(onConsoleControl, TRUE)) {
    g_watch = nullptr;
    return;
  }
  m_system = std::make_unique<System>();
}

InterruptWatch::~InterruptWatch() = default;

}  // namespace quillon::cli
