#pragma once
// A complete set of what the transfer procedures need, with a scripted module behind a fake
// port: every TransferJob is recorded, every transfer returns the next scripted outcome.

#include <deque>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "link/sign_in.h"
#include "link/transfer_presenter.h"
#include "project/project.h"
#include "run_now.h"
#include "scripted_dialog.h"
#include "text/ui_texts.h"
#include "transfer/transfer_context.h"

namespace quillon::testing {

inline const std::string kP = "\xB6";  // pad and separator
inline const std::string kEnd = "\xFD";
// The identity of a module of device type 0: the wrong one.
inline const std::string kWrongModule = "0064000000003E\xFD";

class FakeLinkPort : public LinkPort {
 public:
  int openLinkPort() override { return openResult; }
  void closeLinkPort() override {}
  void startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) override {
    jobs.push_back(job);
    TransferOutcome outcome;
    if (!scripts.empty()) {
      outcome.status = statusTitled(scripts.front().first);
      outcome.received[0] = std::move(scripts.front().second);
      scripts.pop_front();
    }
    done(std::move(outcome));
  }
  [[nodiscard]] std::string portStatusText() const override { return "COM1 9600,N,8,1"; }
  // The transfer ends with the window titled `title` ("Cancel", "Timeout" ...); an empty title
  // stands for the job's own title: the transfer went well.
  void script(const std::string& title, std::string received = {}) {
    scripts.emplace_back(title, std::move(received));
  }

  int openResult = 0;
  std::deque<std::pair<std::string, std::string>> scripts;
  std::vector<TransferJob> jobs;

 private:
  static TransferStatus statusTitled(const std::string& title) {
    using enum TransferStatus;
    for (TransferStatus status : {Cancel, Timeout, NoConnection, NoResponse, VersionConflict})
      if (StatusTitle(status, TransferDirection::Upload) == title) return status;
    return Active;
  }
};

// Keeps the transfer panel's texts in order.
class RecordingStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel panel, const std::string& text) override {
    if (panel == StatusPanel::Transfer) transfer.push_back(text);
  }
  std::vector<std::string> transfer;
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
      identificationShown.push_back(status.transfer.empty() ? "" : status.transfer.back());
    };
    context.hooks.saveProjectAs = [this] { saveAsAtJob.push_back(port.jobs.size()); };
  }

  int run(Task<> (*procedure)(TransferContext&, int&)) {
    int result = 0;
    RunNow(procedure(context, result));
    return result;
  }
  // The kind letter of each job: upper case for a download, lower case for a request.
  [[nodiscard]] std::string jobKinds() const {
    std::string kinds;
    for (const auto& job : port.jobs)
      kinds += job.sending() ? job.startIdentifier.substr(0, 1) : std::string(1, job.requestLetter);
    return kinds;
  }
  [[nodiscard]] std::string lastStatus() const {
    return status.transfer.empty() ? "" : status.transfer.back();
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
  ImageEnv env = context.imageEnv();
  std::vector<std::string> identificationShown;  // panel 2 at the moment it was shown
  std::vector<std::size_t> saveAsAtJob;          // jobs already run when "Save as" ran
};

inline std::string repeat(const std::string& piece, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += piece;
  return out;
}

// The boxes (or box texts) a case expects: this one when `shown`, else none.
template <typename T>
std::vector<T> onlyIf(bool shown, T item) {
  return shown ? std::vector<T>{std::move(item)} : std::vector<T>{};
}

}  // namespace quillon::testing

namespace quillon {
// A failed comparison of boxes shows what they say.
inline void PrintTo(const Box& box, std::ostream* out) {
  *out << "{" << box.title << " | " << box.text << " | " << static_cast<int>(box.icon) << "}";
}
}  // namespace quillon
