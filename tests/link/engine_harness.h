#pragma once
// Drives a TransferEngine the way the serial driver does, with scripted bytes and times, and
// records what it writes and reports. Events are rendered as short texts so that a test can
// state the expected sequence by hand.

#include <optional>
#include <string>
#include <vector>

#include "link/transfer_engine.h"

namespace quillon::testing {

// Control bytes restated here on purpose: a test must not take them from the code it checks.
inline const std::string ACK = "\x06";
inline const std::string NAK = "\x15";
inline const std::string EOB = "\xFD";

// Non-printable bytes as <code>, so expectations stay readable.
std::string visible(const std::string& bytes);
std::string describe(const TransferEvent& event);

struct Step {
  enum class Kind { Start, Bytes, Deadline, Cancel, LinkLost };
  Kind kind;
  TimeOfDay at;
  std::string bytes;
};

Step startAt(TimeOfDay at);
Step bytesAt(TimeOfDay at, std::string bytes);
Step deadlineAt(TimeOfDay at);
Step cancelAt(TimeOfDay at);
Step linkLostAt(TimeOfDay at);

class Harness {
 public:
  explicit Harness(TransferJob job, EngineSettings settings = {})
      : m_engine(std::move(job), settings) {}

  void start(TimeOfDay now);
  void bytes(const std::string& received, TimeOfDay now);
  void deadline(TimeOfDay now);
  // Fires the timer at the engine's own deadline; returns that moment.
  TimeOfDay fire();
  void cancel(TimeOfDay now);
  void linkLost(TimeOfDay now);
  // Every Bytes step is handed over in pieces of `piece` bytes (0: whole).
  void run(const std::vector<Step>& steps, std::size_t piece = 0);

  // Starts and signs in at `at` with the module's ACK; afterwards `wire` holds only what went out
  // after the probe (the start identifier or the request letter) and `events` is empty.
  void signIn(TimeOfDay at = 0);
  // Answers every acknowledgement wait with ACK until the transfer ends.
  void ackAll(TimeOfDay from);
  void forget();

  TransferEngine& engine() { return m_engine; }
  [[nodiscard]] std::optional<TimeOfDay> due() const { return m_engine.deadline(); }

  std::string wire;                 // everything written, in order
  std::vector<std::string> events;  // every event, described
  std::vector<TransferEvent> raw;   // every event as it came

  // The described events of one kind prefix ("box", "title", "comment" ...), in order.
  [[nodiscard]] std::vector<std::string> only(const std::string& prefix) const;

 private:
  void collect();
  TransferEngine m_engine;
};

// A sending job as the downloads prepare it.
TransferJob sendJob(std::string text, std::string startIdentifier = "M0002",
                    std::string text2 = {});
// A reading job as the uploads prepare it.
TransferJob readJob(char letter, std::string contentLabel);

}  // namespace quillon::testing
