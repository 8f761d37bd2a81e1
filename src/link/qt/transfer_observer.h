#pragma once
// Who watches a transfer while it runs: the GUI's transfer window and the CLI's progress line.

#include "link/transfer.h"

namespace quillon {

class TransferObserver {
 public:
  virtual ~TransferObserver() = default;
  // The transfer window opens for `job`; events follow.
  virtual void transferStarted(const TransferJob& job) { (void)job; }
  // Every event of the transfer in order, up to and including Finished. A Box event is seen here
  // before the box is shown through the UserDialog.
  virtual void transferEvent(const TransferEvent& event) = 0;
  // The window has closed with the port; `outcome` is what the caller reads back.
  virtual void transferFinished(const TransferOutcome& outcome) { (void)outcome; }
};

}  // namespace quillon
