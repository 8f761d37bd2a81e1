#pragma once
// The words of the transfer window: turns what the engine reports into the texts, titles and
// boxes the user sees, in the user's language. The GUI's window and the command line's progress
// lines both show what this presenter makes, so they say the same.

#include <string>
#include <vector>

#include "link/engine_events.h"
#include "link/transfer.h"
#include "link/transfer_messages.h"

namespace quillon {

// The window title that a transfer status stands for; the one mapping from outcomes to titles.
[[nodiscard]] std::string StatusTitle(TransferStatus status, TransferDirection direction);

// The window's state line.
[[nodiscard]] std::string StateText(WindowState state);

class TransferPresenter {
 public:
  TransferPresenter(TransferJob job, int language);

  // The port layer's error text, for the box of a sign-in the module did not acknowledge.
  void setPortErrorText(std::string text) { m_portErrorText = std::move(text); }

  [[nodiscard]] TransferEvent present(const EngineEvent& event) const;
  [[nodiscard]] std::vector<TransferEvent> present(const std::vector<EngineEvent>& events) const;
  [[nodiscard]] Box failureBox(TransferFailure failure) const;

 private:
  TransferJob m_job;
  TransferMessages m_messages;
  std::string m_portErrorText;
};

}  // namespace quillon
