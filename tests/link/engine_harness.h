#pragma once
// Drives a TransferEngine the way the serial driver does, with scripted bytes and times, and
// records what it writes and reports. Events are rendered as short texts so that a test can
// state the expected sequence by hand.

#include <optional>
#include <string>
#include <vector>

#include "link/sign_in.h"
#include "link/transfer_engine.h"
#include "link/transfer_presenter.h"

namespace quillon::testing {

// Control bytes restated here on purpose: a test must not take them from the code it checks.
inline const std::string ACK = "\x06";
inline const std::string NAK = "\x15";
inline const std::string EOB = "\xFD";

using Lines = std::vector<std::string>;

// Non-printable bytes as <code>, so expectations stay readable.
inline std::string visible(const std::string& bytes) {
  std::string out;
  for (char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    out += code < 32 || code >= 127 ? "<" + std::to_string(code) + ">" : std::string(1, c);
  }
  return out;
}

inline std::string describe(const TransferEvent& e) {
  using K = TransferEvent::Kind;
  static const char* const names[] = {"comment",  "progress", "block",    "reply", "received",
                                      "count",    "title",    "box",      "log",   "busy",
                                      "finished", "status",   "blockread"};
  static const char* const icons[] = {"", " [i]", " [!]", " [stop]", " [?]"};
  std::string out = names[static_cast<int>(e.kind)] + std::string(" ");
  if (e.kind == K::Finished) return "finished";
  if (e.kind == K::Busy) return out + (e.value != 0 ? "on" : "off");
  if (e.kind == K::Box)
    return out + e.box.title + ": " + visible(e.box.text) + icons[static_cast<int>(e.box.icon)];
  if (e.kind == K::Progress || e.kind == K::Count) return out + std::to_string(e.value);
  if (e.kind == K::Received) out += std::to_string(e.value) + " ";
  if (e.kind == K::Log) out += e.text2;
  out += visible(e.text);
  if (e.kind == K::Block || e.kind == K::BlockRead) out += " | " + visible(e.text2);
  return out;
}

// One scripted moment: bytes arriving, or the start, the timer, Cancel or a lost link.
struct Step {
  enum Kind { Start, Bytes, Deadline, Cancel, LinkLost } kind;
  SteadyTime at;
  std::string bytes;
  std::optional<TimeOfDay> timeOfDay = {};  // Start: the time of day then, if not `at`
};
using Steps = std::vector<Step>;
inline Step startAt(SteadyTime at) { return {Step::Start, at, {}}; }
inline Step startAt(SteadyTime at, TimeOfDay timeOfDay) { return {Step::Start, at, {}, timeOfDay}; }
inline Step bytesAt(TimeOfDay at, std::string b) { return {Step::Bytes, at, std::move(b)}; }
inline Step deadlineAt(TimeOfDay at) { return {Step::Deadline, at, {}}; }
inline Step cancelAt(TimeOfDay at) { return {Step::Cancel, at, {}}; }
inline Step linkLostAt(TimeOfDay at) { return {Step::LinkLost, at, {}}; }

class Harness {
 public:
  explicit Harness(TransferJob job, EngineSettings settings = {})
      : m_job(job), m_engine(job, settings), m_presenter(job, settings.language) {}

  void bytes(const std::string& received, TimeOfDay now) { run({bytesAt(now, received)}); }

  // Every Bytes step is handed over in pieces of `piece` bytes (0: whole).
  void run(const Steps& steps, std::size_t piece = 0) {
    for (const Step& s : steps) {
      if (s.kind == Step::Start) m_engine.start(s.at, s.timeOfDay.value_or(s.at));
      if (s.kind == Step::Deadline) m_engine.onDeadline(s.at);
      if (s.kind == Step::Cancel) m_engine.cancel(s.at);
      if (s.kind == Step::LinkLost) m_engine.onLinkLost(s.at);
      const std::size_t n = piece == 0 ? s.bytes.size() : piece;
      for (std::size_t i = 0; i < s.bytes.size(); i += n) {
        m_engine.onBytes(s.bytes.substr(i, n), s.at);
        collect();
      }
      collect();
    }
  }

  // Starts and signs in at 0 with the module's ACK; afterwards `wire` holds only what went out
  // from 1100 on (the start identifier or the request letter) and `events` is empty.
  void signIn() {
    run({startAt(0), bytesAt(100, ACK)});
    wire.clear();
    run({deadlineAt(1100)});
    events.clear();
  }
  void forget() {
    wire.clear();
    events.clear();
  }

  TransferEngine& engine() { return m_engine; }
  TransferPresenter& presenter() { return m_presenter; }
  // The window's state line and title as the events left them.
  [[nodiscard]] const std::string& comment() const { return m_comment; }
  [[nodiscard]] std::string title() const {
    return StatusTitle(m_engine.outcome().status, m_job.direction);
  }
  [[nodiscard]] std::optional<TimeOfDay> due() const { return m_engine.deadline(); }
  [[nodiscard]] int result() const { return ResultOf(m_engine.outcome().status); }

  // The described events of the given kinds ("box", "title", "comment" ...), in order.
  template <class... Kinds>
  [[nodiscard]] Lines only(const Kinds&... kinds) const {
    Lines out;
    for (const auto& e : events)
      if (((e.rfind(std::string(kinds) + " ", 0) == 0) || ...)) out.push_back(e);
    return out;
  }

  std::string wire;  // everything written, in order
  Lines events;      // every event, described

 private:
  void collect() {
    wire += m_engine.takeOutgoing();
    for (const auto& e : m_presenter.present(m_engine.takeEvents())) {
      if (e.kind == TransferEvent::Kind::Comment) m_comment = e.text;
      events.push_back(describe(e));
    }
  }
  TransferJob m_job;
  TransferEngine m_engine;
  TransferPresenter m_presenter;
  std::string m_comment;
};

// A sending job as the downloads prepare it.
inline TransferJob sendJob(std::string text, std::string startIdentifier = "M0002",
                           std::string text2 = {}) {
  return {TransferDirection::Download, "Messages", std::move(text), std::move(text2),
          std::move(startIdentifier),  '\0'};
}
// A reading job as the uploads prepare it.
inline TransferJob readJob(char letter, std::string contentLabel) {
  return {TransferDirection::Upload, std::move(contentLabel), {}, {}, {}, letter};
}

}  // namespace quillon::testing
