#pragma once
// A complete set of what the transfer procedures need, with a scripted module behind a fake
// port: every TransferJob is recorded, every transfer returns the next scripted outcome.

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "link/sign_in.h"
#include "project/project.h"
#include "scripted_dialog.h"
#include "text/ui_texts.h"
#include "transfer/transfer_context.h"

namespace quillon::testing {

inline constexpr const char* kPortText = "COM1 9600,N,8,1";

class FakeLinkPort : public LinkPort {
 public:
  int openLinkPort() override { return openResult; }
  void closeLinkPort() override {}
  TransferOutcome runTransfer(const TransferJob& job) override {
    jobs.push_back(job);
    if (outcomes.empty()) return TransferOutcome{job.title, {}};
    TransferOutcome next = std::move(outcomes.front());
    outcomes.pop_front();
    if (next.title.empty()) next.title = job.title;
    return next;
  }
  [[nodiscard]] std::string portStatusText() const override { return kPortText; }

  // An outcome with an empty title keeps the job's title, i.e. the transfer went well.
  void script(std::string title, std::string received = {}) {
    TransferOutcome outcome;
    outcome.title = std::move(title);
    outcome.received[0] = std::move(received);
    outcomes.push_back(std::move(outcome));
  }

  int openResult = 0;
  std::deque<TransferOutcome> outcomes;
  std::vector<TransferJob> jobs;
};

class RecordingStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel panel, const std::string& text) override {
    calls.emplace_back(panel, text);
  }
  [[nodiscard]] std::vector<std::string> panel(StatusPanel which) const {
    std::vector<std::string> out;
    for (const auto& [p, text] : calls) {
      if (p == which) out.push_back(text);
    }
    return out;
  }
  [[nodiscard]] std::string last(StatusPanel which) const {
    const auto texts = panel(which);
    return texts.empty() ? std::string{} : texts.back();
  }
  std::vector<std::pair<StatusPanel, std::string>> calls;
};

// One program run: texts of `language`, the module already confirmed ready and identified, so
// that SignIn goes straight to the transfer window.
struct Bench {
  explicit Bench(int lang = kGerman, ModuleLimits moduleLimits = {})
      : limits(moduleLimits), project(limits), language(lang) {
    texts.fill(lang);
    session.readyConfirmed = true;
    session.identityRead = true;
    context.hooks.showIdentification = [this] {
      identificationShown.push_back(status.last(StatusPanel::Transfer));
    };
    context.hooks.saveProjectAs = [this] { saveAsAtJob.push_back(port.jobs.size()); };
    context.hooks.processEvents = [this] { ++eventRuns; };
  }

  ImageEnv env() { return context.imageEnv(); }
  [[nodiscard]] std::string jobKinds() const {
    std::string kinds;
    for (const auto& job : port.jobs) {
      kinds += job.sending() ? job.startIdentifier.substr(0, 1) : std::string(1, job.requestLetter);
    }
    return kinds;
  }

  FakeLinkPort port;
  ScriptedDialog dialog;
  RecordingStatus status;
  ModuleLimits limits;
  LinkSession session;
  UiTexts texts;
  Project project;
  int language;
  LinkContext link{port, dialog, status, limits, session, language};
  TransferContext context{link, texts, project, {}};
  std::vector<std::string> identificationShown;  // panel 2 at the moment it was shown
  std::vector<std::size_t> saveAsAtJob;          // jobs already run when "Save as" ran
  int eventRuns = 0;
};

inline std::string repeat(const std::string& piece, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += piece;
  return out;
}

}  // namespace quillon::testing
