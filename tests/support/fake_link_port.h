#pragma once
// A port with a scripted module behind it: every TransferJob is recorded, every transfer ends
// with the next scripted outcome (an empty one when none is left).

#include <deque>
#include <string>
#include <vector>

#include "link/sign_in.h"

namespace quillon::testing {

class FakeLinkPort : public LinkPort {
 public:
  int openLinkPort() override { return openResult; }
  void closeLinkPort() override { ++closes; }
  void startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) override {
    jobs.push_back(job);
    TransferOutcome outcome;
    if (!outcomes.empty()) {
      outcome = std::move(outcomes.front());
      outcomes.pop_front();
    }
    done(std::move(outcome));
  }
  [[nodiscard]] std::string portStatusText() const override { return "COM 1,9600, N ,8 ,1 active"; }

  int openResult = 0;
  int closes = 0;
  std::deque<TransferOutcome> outcomes;
  std::vector<TransferJob> jobs;
};

}  // namespace quillon::testing
