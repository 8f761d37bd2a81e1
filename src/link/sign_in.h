#pragma once
// SignIn: the gate in front of every transfer. It opens the port, asks once per run whether the
// module is ready, reads the module's identity once per run, runs the transfer window and maps
// the status text it leaves to a TransferResult.

#include <string>

#include "link/identity.h"
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
  // Runs the transfer window modally until the transfer ends; returns what it left behind. Like
  // the window, it opens the port if it is closed and closes it when the transfer ends.
  [[nodiscard]] virtual TransferOutcome runTransfer(const TransferJob& job) = 0;
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

// Runs `job` through the transfer window; `outcome` receives what it left. Returns 0..7.
[[nodiscard]] int SignIn(LinkContext& context, const TransferJob& job, TransferOutcome& outcome);

// The identity query (the identification dialog's "Read version"): reads and decodes the
// module's identity into context.session.identity, raising conflicts as boxes. Returns the
// transfer status text it leaves: the title of the version transfer, or "Version conflict".
std::string ReadIdentity(LinkContext& context);

// The result that the transfer status text left by a transfer stands for: "Cancel" 3,
// "Timeout" 4, "No connection" 5, "No response" 6, anything else 0.
[[nodiscard]] int TransferResultForTitle(const std::string& title);

inline constexpr const char* kReadyQuestion = "Telvane ready ?";
// The content label of the identity query's transfer.
inline constexpr const char* kLabelVersion = "Version";

}  // namespace quillon
