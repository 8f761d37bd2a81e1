#pragma once
// The transfer window's exchange with the module as a state machine. It does no I/O and reads no
// clock: every entry point takes the time of a steady clock, and the driver
//   - opens the port, then calls start(now, timeOfDay) with the one reading of the time of day
//     that places the whole seconds and the midnights of the reply time-out;
//   - hands every received piece to onBytes(bytes, now) as it arrives (pieces may split or merge
//     replies in any way: the engine parses from its own buffer);
//   - after every call writes takeOutgoing() to the port, hands takeEvents() in order to the
//     presenter (which words them and raises the boxes, modally) and re-arms one single-shot timer
//     from deadline(), calling onDeadline(now) when it fires (a deadline at or before now means "at
//     once"; no deadline means "wait for bytes");
//   - calls cancel(now) for the Cancel button and onLinkLost(now) when the port reports that the
//     link is gone;
//   - closes the port once finished() is true and reads outcome().
//
// Deadlines are on the steady clock; a driver computes its timer interval as deadline - now.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/engine_events.h"
#include "link/reply_timer.h"
#include "link/transfer.h"

namespace quillon {

class TransferEngine {
 public:
  TransferEngine(TransferJob job, EngineSettings settings);

  // The window has opened with the port open: "Sign in ..." and the first "??". `timeOfDay` is
  // the time of day at `now`; without it the steady clock counts from a midnight.
  void start(SteadyTime now, TimeOfDay timeOfDay);
  void start(SteadyTime now) { start(now, now % kDayLength); }
  void onBytes(std::string_view bytes, SteadyTime now);
  void onDeadline(SteadyTime now);
  // cmdAbbruch: the cancel flag and the status text "Cancel"; the transfer ends at once.
  void cancel(SteadyTime now);
  // The port reported a read, write or resource error: the current wait ends at once as if it
  // had timed out (during sign-in the box says that the interface is not active).
  void onLinkLost(SteadyTime now);

  [[nodiscard]] std::optional<SteadyTime> deadline() const;
  [[nodiscard]] std::string takeOutgoing();
  [[nodiscard]] std::vector<EngineEvent> takeEvents();
  [[nodiscard]] bool finished() const { return m_stage == Stage::Finished; }
  [[nodiscard]] const TransferOutcome& outcome() const { return m_outcome; }
  // The window's cancel flag: set by Cancel and by a send that could not go on.
  [[nodiscard]] bool cancelled() const { return m_cancelled; }

 private:
  enum class Stage {
    Idle,
    SignInReply,       // "??" written, waiting for any answer
    SignInPause,       // the one-second pause before the answer is judged
    StartReply,        // the start identifier's acknowledgement
    StartRepeatReply,  // the acknowledgement of the one repeat of the start identifier
    BlockReply,        // a block's acknowledgement
    FinalReply,        // the final confirmation after the last block
    CountReply,        // the request letter's "letter + 4 hex digits" answer
    BlockHead,         // a module block up to its end-of-block character or full length
    BlockTail,         // the two checksum characters after the end-of-block character
    Finished,
  };

  // ReadAcknowledge: how the last character of one read answers.
  enum class Acknowledge { Ack, None, Other, Nak };

  // A stage that waits for the module under the reply time-out.
  [[nodiscard]] bool waitsForReply() const;
  void pump(SteadyTime now);
  void advanceTime(SteadyTime now);
  void timeOut(SteadyTime now);
  void expect(Stage stage, SteadyTime now);
  [[nodiscard]] char takeByte();
  [[nodiscard]] std::string takeAll();
  [[nodiscard]] Acknowledge takeAcknowledge();

  // Sign-in.
  void writeProbe(SteadyTime now);
  void judgeSignIn(SteadyTime now);
  void signInFailed(TransferFailure failure);
  // Sending.
  void beginSending(SteadyTime now);
  void onStartReply(Acknowledge reply, SteadyTime now);
  void beginDataString(int which, SteadyTime now);
  void sendNextBlock(SteadyTime now);
  void onBlockReply(Acknowledge reply, SteadyTime now);
  void afterDataStrings(SteadyTime now);
  void onFinalReply(Acknowledge reply);
  void finishSending();
  void cancelSending();
  void stopSending();
  // Reading.
  void beginReading(SteadyTime now);
  void onCountReply(const std::string& piece, SteadyTime now);
  void countDone(unsigned count, SteadyTime now);
  void beginBlock(SteadyTime now);
  void finishBlock(SteadyTime now);
  void deliverBlock(const std::string& data, SteadyTime now);

  void write(const std::string& bytes, TrafficKind kind = TrafficKind::Write);
  void logRead(const std::string& bytes);
  void setState(WindowState state);
  void setStatus(TransferStatus status);
  void setProgress(int value);
  void setBusy(bool busy);
  void emit(EngineEvent event) { m_events.push_back(std::move(event)); }
  void finish();

  TransferJob m_job;
  EngineSettings m_settings;

  Stage m_stage = Stage::Idle;
  ReplyTimer m_replyTimer;
  // The day axis of the reply timer: the steady clock plus this.
  [[nodiscard]] DayTime onDayAxis(SteadyTime now) const { return now + m_dayOffset; }

  std::optional<SteadyTime> m_pauseStart;
  DayTime m_dayOffset = 0;
  bool m_cancelled = false;
  bool m_busy = false;
  int m_progress = -1;
  std::optional<WindowState> m_state;

  std::string m_input;     // received, not yet taken by the protocol
  std::string m_outgoing;  // to be written
  std::vector<EngineEvent> m_events;

  int m_signInRound = 0;
  // Sending.
  int m_dataString = 0;  // 1 Sendetext, 2 Sendetext2
  std::string m_rest;    // what is still to be sent of the current data string
  std::string m_block;   // the last block sent, checksum included, for a repeat
  std::size_t m_dataLength = 0;
  std::size_t m_sent = 0;
  int m_failures = 0;
  // Reading.
  std::string m_collected;       // the count reply, or the block being read
  std::size_t m_headLength = 0;  // where the checksum characters of a block begin
  unsigned m_count = 0;
  std::size_t m_received = 0;
  int m_box = 0;

  TransferOutcome m_outcome;
};

}  // namespace quillon
