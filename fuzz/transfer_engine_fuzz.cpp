// libFuzzer target of the transfer engine in both directions: a send job that gets fuzzed
// replies, or a read job that gets fuzzed blocks (raw, or framed with a right checksum so that
// long reads fill the receive boxes). The bytes arrive in pieces of fuzzer-chosen sizes at
// fuzzer-chosen moments from a fuzzer-chosen time of day, midnight included, mixed with
// time-outs, Cancel and a lost link. The presenter words every event, as the driver has it do.
// Once the input is used up, the driver's timer alone must end the transfer in a few steps.
//
// Written against the engine's entry points (start, onBytes, onDeadline, cancel, onLinkLost,
// deadline, takeEvents, outcome) and the presenter; everything that depends on them is in this
// one file.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz_support.h"
#include "link/reply_timer.h"
#include "link/transfer.h"
#include "link/transfer_engine.h"
#include "link/transfer_presenter.h"

namespace {

using quillon::SteadyTime;
using quillon::TimeOfDay;
using quillon::TransferEvent;
using quillon::fuzz::require;
using Kind = TransferEvent::Kind;

constexpr TimeOfDay kDay = quillon::kDayLength;
constexpr TimeOfDay kSignInPause = 1000;
constexpr int kStepsToEnd = 64;

// A block as the module frames it: the data, then the XOR of its codes as two upper-case
// hexadecimal digits.
std::string framed(std::string_view data) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < data.size(); ++i) {
    const auto code = static_cast<unsigned char>(data[i]);
    sum = i == 0 ? code : sum ^ code;
  }
  constexpr const char* kDigits = "0123456789ABCDEF";
  return std::string(data) + kDigits[sum >> 4 & 0xF] + kDigits[sum & 0xF];
}

std::string hex4(unsigned value) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text;
  for (int shift = 12; shift >= 0; shift -= 4) text += kDigits[value >> shift & 0xF];
  return text;
}

class Run {
 public:
  Run(quillon::TransferJob job, quillon::EngineSettings settings, TimeOfDay start)
      : m_job(job),
        m_settings(settings),
        m_engine(job, settings),
        m_presenter(job, settings.language),
        m_timeOfDay(start) {}

  void start() {
    m_engine.start(m_now, m_timeOfDay);
    check();
  }
  void bytes(std::string_view piece) {
    m_engine.onBytes(piece, m_now);
    check();
  }
  void deadline() {
    m_engine.onDeadline(m_now);
    check();
  }
  void cancel() {
    m_engine.cancel(m_now);
    check();
  }
  void linkLost() {
    m_engine.onLinkLost(m_now);
    check();
  }
  void pass(SteadyTime milliseconds) { m_now += milliseconds; }

  // What the driver does when its single-shot timer fires: it waits until the deadline and
  // tells the engine the time then.
  void waitForTimer() {
    const auto due = m_engine.deadline();
    if (!due) return;
    pass(std::max<SteadyTime>(*due - m_now, 0));
    deadline();
  }

  // No more input: only the timer moves the transfer on. A block whose checksum characters are
  // still missing waits for bytes without a time-out, so the module sends what is missing.
  void runOut() {
    for (int step = 0; step < kStepsToEnd && !m_engine.finished(); ++step) {
      if (m_engine.deadline())
        waitForTimer();
      else
        bytes("0");
    }
    require(m_engine.finished());
    checkOutcome();
  }

 private:
  void check() {
    (void)m_engine.takeOutgoing();
    for (const TransferEvent& event : m_presenter.present(m_engine.takeEvents())) {
      require(!m_finishedSeen);  // nothing after the window closed
      if (event.kind == Kind::Finished) m_finishedSeen = true;
      if (event.kind == Kind::Received) {
        require(event.value >= 0 && event.value < quillon::kReceiveBoxes);
        m_received[static_cast<std::size_t>(event.value)] += event.text;
      }
      if (event.kind == Kind::Block) m_blocks += event.text;
      if (event.kind == Kind::StatusText) m_done = true;
      if (event.kind == Kind::Progress) require(event.value >= 0 && event.value <= 100);
    }
    require(m_finishedSeen == m_engine.finished());
    if (m_engine.finished()) return;
    // A running transfer waits at most one reply time-out (counted in whole seconds), or two
    // when the wait runs into midnight and starts again there, or the sign-in pause from now,
    // and never for a moment already past.
    if (const auto due = m_engine.deadline()) {
      require(*due > m_now);
      require(*due - m_now <= std::max(2 * (m_settings.replyTimeout + 1000), kSignInPause));
    }
  }

  void checkOutcome() {
    const quillon::TransferOutcome& outcome = m_engine.outcome();
    // The events showed every received character, in its box.
    for (std::size_t box = 0; box < outcome.received.size(); ++box)
      require(outcome.received[box] == m_received[box]);
    // A box is filled until it reaches its capacity; the block that crosses it is kept whole.
    const int blockLength = m_settings.blockLength < 1 ? 64 : m_settings.blockLength;
    const auto longestBlock = static_cast<std::size_t>(blockLength) + 2;
    for (std::size_t box = 0; box < outcome.received.size(); ++box) {
      require(outcome.received[box].size() < quillon::kReceiveBoxCapacity + longestBlock);
      if (box > 0 && !outcome.received[box].empty())
        require(outcome.received[box - 1].size() >= quillon::kReceiveBoxCapacity);
    }
    const std::string all = outcome.receivedText();
    for (std::size_t i = 0; i < outcome.blockEnds.size(); ++i) {
      const std::size_t end = outcome.blockEnds[i];
      require(end < all.size() && all[end] == quillon::kEndOfBlock);
      if (i > 0) require(end > outcome.blockEnds[i - 1]);
    }
    if (m_job.sending()) {
      require(all.empty());
      // The blocks shown are the send texts from the start; a send that is done sent them all.
      const std::string text = m_job.sendText + m_job.sendText2;
      require(text.starts_with(m_blocks));
      if (m_done) require(m_blocks == text && !m_engine.cancelled());
    } else {
      require(m_blocks.empty());
    }
  }

  quillon::TransferJob m_job;
  quillon::EngineSettings m_settings;
  quillon::TransferEngine m_engine;
  quillon::TransferPresenter m_presenter;
  TimeOfDay m_timeOfDay;  // at the start
  SteadyTime m_now = 0;
  bool m_finishedSeen = false;
  bool m_done = false;
  std::array<std::string, quillon::kReceiveBoxes> m_received;
  std::string m_blocks;
};

std::string pattern(std::size_t length, char first) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i)
    text += static_cast<char>(first + static_cast<char>(i % 26));
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillon::fuzz::Input input(data, size);
  const std::uint8_t mode = input.byte();
  const bool sending = (mode & 1) != 0;

  quillon::EngineSettings settings;
  settings.language = (mode & 2) != 0 ? quillon::kGerman : quillon::kEnglish;
  switch (mode >> 2 & 3) {
    case 0:
    case 1:
      break;  // the module's 64-character blocks, with the final confirmation
    case 2:
      settings.blockLength = 16;
      break;
    default:
      settings.blockLength = input.byte() % 130;  // 0 falls back to 64
      break;
  }
  settings.replyTimeout = input.word() % 30001;
  const std::uint16_t startChoice = input.word();
  const TimeOfDay start =
      (mode & 16) != 0 ? kDay - 1 - startChoice % 4096 : TimeOfDay{startChoice} * 1319 % kDay;

  quillon::TransferJob job;
  if (sending) {
    job.direction = quillon::TransferDirection::Download;
    job.contentLabel = "Messages";
    job.sendText = pattern(input.word() % 700, 'a');
    job.sendText2 = pattern(input.byte(), 'A');
    job.startIdentifier =
        "M" + hex4(static_cast<unsigned>(job.sendText.size() + job.sendText2.size()));
  } else {
    job.direction = quillon::TransferDirection::Upload;
    job.contentLabel = "Messages";
    job.requestLetter = static_cast<char>(input.byte());
  }
  // The module answers a request with the letter in upper case.
  const char answerLetter = job.requestLetter >= 'a' && job.requestLetter <= 'z'
                                ? static_cast<char>(job.requestLetter - 'a' + 'A')
                                : job.requestLetter;

  Run run(job, settings, start);
  run.start();
  while (!input.empty()) {
    const std::uint8_t op = input.byte();
    switch (op % 16) {
      case 15:
        run.cancel();
        break;
      case 14:
        run.linkLost();
        break;
      case 13:
        run.waitForTimer();
        break;
      case 12:
        run.pass(SteadyTime{input.word()} * 16);
        run.deadline();
        break;
      case 11:
        // The count reply of a read: the request letter and four hexadecimal digits.
        run.pass(input.byte());
        run.bytes(std::string(1, answerLetter) + hex4(input.word()));
        break;
      case 10: {
        // Framed blocks of the pattern, several in one piece, as a long read sends them. A
        // piece stays about as large as a port's read buffer: the engine takes a piece apart
        // byte by byte, and much larger ones only slow the fuzzer down.
        const std::size_t count = input.byte() % 16 + 1U;
        const std::size_t length = input.byte() % 80;
        const bool endMark = (op & 16) != 0;
        std::string blocks;
        for (std::size_t i = 0; i < count; ++i)
          blocks += framed(pattern(length, '0') + (endMark ? "\xFD" : ""));
        run.pass(input.byte());
        run.bytes(blocks);
        break;
      }
      case 9: {
        // One framed block of fuzzer bytes.
        const std::string_view body = input.take(input.byte());
        run.pass(input.byte());
        run.bytes(framed(body));
        break;
      }
      default: {
        // Raw bytes in a piece of their own, after a pause of up to about a minute.
        const std::string_view piece = input.take(op % 9 + 1U);
        run.pass(SteadyTime{input.byte()} * (op >> 4) * 16);
        run.bytes(piece);
        break;
      }
    }
  }
  run.runOut();
  return 0;
}
