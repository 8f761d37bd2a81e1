#pragma once
// SignIn: the gate in front of every transfer. It opens the port, asks once per run whether the
// module is ready, reads the module's identity once per run, runs the transfer window and maps
// the status it leaves to a TransferResult. The steps that wait for the module are coroutines:
// they return at once and go on when the transfer window has closed.

#include <functional>
#include <string>

#include "link/identity.h"
#include "link/task.h"
#include "link/transfer.h"
#include "project/project.h"
#include "project/user_dialog.h"

namespace quillon {

// What SignIn needs from the outside world: the port and the modal transfer window.
class LinkPort {
 public:
  virtual ~LinkPort() = default;
  // 0 ok, 1 the port could not be opened.
  [[nodiscard]] virtual int openLinkPort() = 0;
  virtual void closeLinkPort() = 0;
  // Opens the transfer window, modal for the user, and returns at once; `done` runs once with
  // what the window left when the transfer has ended (a port without a line may run it before
  // returning). Like the window, it opens the port if it is closed and closes it at the end.
  virtual void startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) = 0;
  [[nodiscard]] virtual std::string portStatusText() const = 0;
};

// Link state that lives for the program's run (owned by the main window's state object).
struct LinkSession {
  bool readyConfirmed = false;  // "Telvane ready ?" answered OK in this run
  bool identityRead = false;    // the identity query completed in this run
  int expectedPhoneCount = 60;
  DeviceIdentity identity;  // what the identification dialog shows
};

struct LinkContext {
  LinkPort& port;
  UserDialog& dialog;
  StatusDisplay& status;
  ModuleLimits& limits;
  LinkSession& session;
  int language = 0;  // 0 English, 1 German
};

// The first two steps of every sign-in: opens the port (1 when it cannot be opened) and asks
// "Telvane ready ?" once per run (2 when declined, the port closed again); 0 to go on.
[[nodiscard]] int OpenAndConfirmReady(LinkContext& context);

// One run of the transfer window, to be awaited: gives what the window left.
class TransferAwaiter {
 public:
  TransferAwaiter(LinkPort& port, TransferJob job) : m_port(port), m_job(std::move(job)) {}
  [[nodiscard]] bool await_ready() const noexcept { return false; }
  bool await_suspend(std::coroutine_handle<> waiting);
  TransferOutcome await_resume() { return std::move(m_outcome); }

 private:
  LinkPort& m_port;
  TransferJob m_job;
  TransferOutcome m_outcome;
  std::coroutine_handle<> m_waiting;
  bool m_starting = false;
  bool m_ended = false;
};

[[nodiscard]] inline TransferAwaiter RunTransfer(LinkPort& port, TransferJob job) {
  return TransferAwaiter(port, std::move(job));
}

// Runs `job` through the transfer window; `outcome` receives what it left. Gives 0..7.
[[nodiscard]] Task<int> SignIn(LinkContext& context, TransferJob job, TransferOutcome& outcome);

// The identity query (the identification dialog's "Read version"): reads and decodes the
// module's identity into context.session.identity, raising conflicts as boxes. Gives the status
// it leaves: that of the version transfer, or VersionConflict.
[[nodiscard]] Task<TransferStatus> ReadIdentity(LinkContext& context);

// The result a transfer status stands for: Cancel 3, Timeout 4, No connection 5, No response 6,
// Version conflict 7, a transfer that ran (refused or not) 0.
[[nodiscard]] int ResultOf(TransferStatus status);

inline constexpr const char* kReadyQuestion = "Telvane ready ?";
// The content label of the identity query's transfer.
inline constexpr const char* kLabelVersion = "Version";

}  // namespace quillon
