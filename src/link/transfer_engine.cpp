#include "link/transfer_engine.h"

#include <utility>

#include "link/block_checksum.h"
#include "link/engine_events.h"
#include "link/hex_field.h"
#include "link/start_identifier.h"

namespace quillon {

namespace {

constexpr const char* kProbe = "??";
constexpr SteadyTime kSignInPause = 1000;
constexpr int kMaxFailures = 5;
// The final confirmation belongs to the module's 64-character block mode only.
constexpr int kConfirmedBlockLength = 64;

int percent(std::size_t done, std::size_t total) {
  if (total == 0 || done >= total) return 100;
  return static_cast<int>(done * 100 / total);
}

}  // namespace

TransferEngine::TransferEngine(TransferJob job, EngineSettings settings)
    : m_job(std::move(job)), m_settings(settings) {
  if (m_settings.blockLength < 1) m_settings.blockLength = kConfirmedBlockLength;
}

// ---- Entry points ------------------------------------------------------------------------------

void TransferEngine::start(SteadyTime now, TimeOfDay timeOfDay) {
  if (m_stage != Stage::Idle) return;
  m_dayOffset = ((timeOfDay % kDayLength + kDayLength) % kDayLength) - now;
  setState(WindowState::SigningIn);
  setProgress(0);
  writeProbe(now);
  pump(now);
}

void TransferEngine::onBytes(std::string_view bytes, SteadyTime now) {
  if (finished()) return;
  // A wait whose time has run out ends before anything that arrives at the same moment.
  advanceTime(now);
  if (finished()) return;
  // Every piece a wait returns is logged as it came; the checksum characters after an
  // end-of-block are read raw and appear only in the block's own line.
  if (m_stage != Stage::BlockTail) logRead(std::string(bytes));
  m_input.append(bytes);
  pump(now);
}

void TransferEngine::onDeadline(SteadyTime now) {
  if (finished()) return;
  advanceTime(now);
  pump(now);
}

void TransferEngine::cancel(SteadyTime /*now*/) {
  if (finished()) return;
  m_cancelled = true;
  m_outgoing.clear();
  setStatus(TransferStatus::Cancel);
  switch (m_stage) {
    case Stage::SignInReply:
    case Stage::SignInPause:
      // A cancelled sign-in is still a failed one: "Aborted", then "No connection".
      signInFailed(TransferFailure::Aborted);
      return;
    case Stage::StartReply:
    case Stage::StartRepeatReply:
    case Stage::BlockReply:
    case Stage::FinalReply:
      setState(WindowState::Cancel);
      break;
    default:
      break;
  }
  setBusy(false);
  finish();
}

void TransferEngine::onLinkLost(SteadyTime now) {
  if (finished()) return;
  switch (m_stage) {
    case Stage::Idle:
    case Stage::SignInReply:
    case Stage::SignInPause:
      // Before the module ever answered, a vanished port means the interface is not there.
      signInFailed(TransferFailure::InterfaceNotActive);
      return;
    default:
      timeOut(now);
  }
}

bool TransferEngine::waitsForReply() const {
  switch (m_stage) {
    case Stage::SignInReply:
    case Stage::StartReply:
    case Stage::StartRepeatReply:
    case Stage::BlockReply:
    case Stage::FinalReply:
    case Stage::CountReply:
    case Stage::BlockHead:
      return true;
    default:
      // The checksum characters after an end-of-block are awaited without a time-out.
      return false;
  }
}

std::optional<SteadyTime> TransferEngine::deadline() const {
  if (m_stage == Stage::SignInPause) return *m_pauseStart + kSignInPause;
  if (waitsForReply()) return m_replyTimer.deadline() - m_dayOffset;
  return std::nullopt;
}

std::string TransferEngine::takeOutgoing() {
  std::string out;
  out.swap(m_outgoing);
  return out;
}

std::vector<EngineEvent> TransferEngine::takeEvents() {
  std::vector<EngineEvent> out;
  out.swap(m_events);
  return out;
}

// ---- Waiting -----------------------------------------------------------------------------------

void TransferEngine::expect(Stage stage, SteadyTime now) {
  m_stage = stage;
  m_replyTimer.start(onDayAxis(now), m_settings.replyTimeout);
}

void TransferEngine::advanceTime(SteadyTime now) {
  if (m_stage == Stage::SignInPause) {
    if (now - *m_pauseStart >= kSignInPause) judgeSignIn(now);
  } else if (waitsForReply() && m_replyTimer.expired(onDayAxis(now))) {
    timeOut(now);
  }
}

// Takes from the input whatever the current stage can use. A wait for an acknowledgement or a
// count takes everything that has arrived, as one read of the port does; the block reader takes
// one byte at a time, so a block gives the same result however the port cuts it into pieces.
void TransferEngine::pump(SteadyTime now) {
  while (!m_input.empty()) {
    switch (m_stage) {
      case Stage::SignInReply:
        // Any answer ends the wait; the pause that follows lets the rest of it arrive.
        m_stage = Stage::SignInPause;
        m_pauseStart = now;
        return;
      case Stage::StartReply:
      case Stage::StartRepeatReply:
        onStartReply(takeAcknowledge(), now);
        break;
      case Stage::BlockReply:
        onBlockReply(takeAcknowledge(), now);
        break;
      case Stage::FinalReply:
        onFinalReply(takeAcknowledge());
        break;
      case Stage::CountReply:
        onCountReply(takeAll(), now);
        break;
      case Stage::BlockHead: {
        const char byte = takeByte();
        m_collected += byte;
        m_replyTimer.start(onDayAxis(now), m_settings.replyTimeout);
        if (byte == kEndOfBlock) {
          m_headLength = m_collected.size();
          m_stage = Stage::BlockTail;
        } else if (m_collected.size() > static_cast<std::size_t>(m_settings.blockLength) + 1) {
          finishBlock(now);
        }
        break;
      }
      case Stage::BlockTail:
        m_collected += takeByte();
        if (m_collected.size() == m_headLength + 2) finishBlock(now);
        break;
      default:
        return;
    }
  }
}

char TransferEngine::takeByte() {
  const char byte = m_input.front();
  m_input.erase(0, 1);
  return byte;
}

std::string TransferEngine::takeAll() { return std::exchange(m_input, {}); }

// ReadAcknowledge: one read answers one block, and its last character decides. Noise in front of
// an ACK is therefore an ACK, and a NAK that follows an ACK in the same read is a NAK.
TransferEngine::Acknowledge TransferEngine::takeAcknowledge() {
  const char byte = takeAll().back();
  emit(engine_event::Reply{byte});
  if (byte == kAck) return Acknowledge::Ack;
  if (byte == kNak) return Acknowledge::Nak;
  return Acknowledge::Other;
}

void TransferEngine::timeOut(SteadyTime now) {
  emit(engine_event::Failure{TransferFailure::WaitTimedOut});
  setStatus(TransferStatus::NoResponse);
  switch (m_stage) {
    case Stage::SignInReply:
      signInFailed(TransferFailure::NotReady);
      return;
    case Stage::StartReply:
    case Stage::BlockReply:
      // The title stays "No response": the module went quiet, nobody cancelled.
      stopSending();
      return;
    case Stage::StartRepeatReply:
      // The one repeat of the start identifier is followed by the blocks, whatever came back.
      onStartReply(Acknowledge::None, now);
      return;
    case Stage::FinalReply:
      onFinalReply(Acknowledge::None);
      return;
    case Stage::CountReply:
      countDone(0, now);
      return;
    case Stage::BlockHead:
    case Stage::BlockTail:
      setStatus(TransferStatus::Timeout);
      setBusy(false);
      finish();
      return;
    default:
      finish();
      return;
  }
}

// ---- Sign-in -----------------------------------------------------------------------------------

void TransferEngine::writeProbe(SteadyTime now) {
  ++m_signInRound;
  write(kProbe);
  expect(Stage::SignInReply, now);
}

void TransferEngine::judgeSignIn(SteadyTime now) {
  std::string reply;
  reply.swap(m_input);
  m_pauseStart.reset();
  if (reply.find(kAck) != std::string::npos) {
    if (m_job.sending()) {
      beginSending(now);
    } else {
      beginReading(now);
    }
  } else if (m_signInRound < 2) {
    writeProbe(now);
  } else {
    signInFailed(TransferFailure::PortError);
  }
}

void TransferEngine::signInFailed(TransferFailure failure) {
  emit(engine_event::Failure{failure});
  setState(WindowState::NoConnection);
  setStatus(TransferStatus::NoConnection);
  finish();
}

// ---- Sending -----------------------------------------------------------------------------------

void TransferEngine::beginSending(SteadyTime now) {
  setState(WindowState::PortOpen);
  setBusy(true);
  m_input.clear();
  setState(WindowState::StartIdentifier);
  write(m_job.startIdentifier);
  expect(Stage::StartReply, now);
}

void TransferEngine::onStartReply(Acknowledge reply, SteadyTime now) {
  if (m_stage == Stage::StartRepeatReply || reply == Acknowledge::Ack) {
    // After the one repeat the blocks follow whatever the module answered.
    beginDataString(1, now);
  } else if (reply == Acknowledge::Nak) {
    setState(WindowState::Denied);
    m_outcome.refused = true;
    emit(engine_event::Failure{TransferFailure::SendRefused});
    setBusy(false);
    finish();
  } else {
    write(m_job.startIdentifier);
    expect(Stage::StartRepeatReply, now);
  }
}

void TransferEngine::beginDataString(int which, SteadyTime now) {
  const std::string& text = which == 1 ? m_job.sendText : m_job.sendText2;
  if (which == 1 && text.empty()) {
    emit(engine_event::Failure{TransferFailure::NoData});
    setBusy(false);
    finish();
    return;
  }
  if (which == 2 && text.empty()) {
    afterDataStrings(now);
    return;
  }
  m_dataString = which;
  setState(WindowState::SendingBlocks);
  m_rest = text;
  m_dataLength = text.size();
  m_sent = 0;
  m_failures = 0;
  sendNextBlock(now);
}

void TransferEngine::sendNextBlock(SteadyTime now) {
  if (m_rest.empty()) {
    if (m_dataString == 1) {
      beginDataString(2, now);
    } else {
      afterDataStrings(now);
    }
    return;
  }
  const auto length = static_cast<std::size_t>(m_settings.blockLength);
  std::string data = m_rest.substr(0, length);
  m_rest.erase(0, length);
  emit(engine_event::BlockSent{data, BlockChecksumValue(data)});
  m_block = data + BlockChecksum(data);
  write(m_block);
  m_sent += length;
  setProgress(percent(m_sent, m_dataLength));
  expect(Stage::BlockReply, now);
}

void TransferEngine::onBlockReply(Acknowledge reply, SteadyTime now) {
  if (reply == Acknowledge::Ack) {
    sendNextBlock(now);
    return;
  }
  // Failures count over the whole data string, not per block.
  if (++m_failures >= kMaxFailures) {
    emit(engine_event::Failure{TransferFailure::FiveTrials});
    cancelSending();
    return;
  }
  write(m_block);
  expect(Stage::BlockReply, now);
}

void TransferEngine::afterDataStrings(SteadyTime now) {
  if (m_settings.blockLength == kConfirmedBlockLength) {
    expect(Stage::FinalReply, now);
  } else {
    finishSending();
  }
}

void TransferEngine::onFinalReply(Acknowledge reply) {
  if (reply != Acknowledge::Ack) {
    emit(engine_event::Failure{TransferFailure::NoFinalConfirmation});
    // Every block was acknowledged, so a missing confirmation does not make the transfer fail.
    setStatus(TransferStatus::Active);
  }
  finishSending();
}

void TransferEngine::finishSending() {
  emit(engine_event::Completed{});
  setState(WindowState::Done);
  setBusy(false);
  finish();
}

// Five failed attempts end the send as a cancelled one: the caller must not report success.
void TransferEngine::cancelSending() {
  setStatus(TransferStatus::Cancel);
  stopSending();
}

void TransferEngine::stopSending() {
  m_cancelled = true;
  setState(WindowState::Cancel);
  setBusy(false);
  finish();
}

// ---- Reading -----------------------------------------------------------------------------------

void TransferEngine::beginReading(SteadyTime now) {
  setState(WindowState::ReadingData);
  setBusy(true);
  write(std::string(1, upperLetter(m_job.requestLetter)));
  m_collected.clear();
  expect(Stage::CountReply, now);
}

void TransferEngine::onCountReply(const std::string& piece, SteadyTime now) {
  m_collected += piece;
  if (m_collected.find(kNak) != std::string::npos) {
    countDone(0, now);
    return;
  }
  const auto at = m_collected.find(upperLetter(m_job.requestLetter));
  if (at != std::string::npos && m_collected.size() >= at + 5) {
    countDone(hexPrefixValue(std::string_view(m_collected).substr(at + 1, 4)), now);
    return;
  }
  // Each piece ends one wait; the next wait for the rest starts now.
  m_replyTimer.start(onDayAxis(now), m_settings.replyTimeout);
}

void TransferEngine::countDone(unsigned count, SteadyTime now) {
  write(std::string(1, kAck));
  if (count == 0) {
    setState(WindowState::Denied);
    m_outcome.refused = true;
    emit(engine_event::Failure{TransferFailure::RequestRefused});
    setBusy(false);
    finish();
    return;
  }
  m_count = count;
  emit(engine_event::Count{count});
  beginBlock(now);
}

void TransferEngine::beginBlock(SteadyTime now) {
  setState(WindowState::ReadingBlocks);
  m_collected.clear();
  m_headLength = 0;
  expect(Stage::BlockHead, now);
}

void TransferEngine::finishBlock(SteadyTime now) {
  emit(engine_event::Traffic{TrafficKind::Block, m_collected});
  const std::string data = m_collected.substr(0, m_collected.size() - 2);
  const std::string sum = m_collected.substr(m_collected.size() - 2);
  emit(engine_event::BlockRead{data, sum});
  // The digits are compared as text: lower-case digits count as wrong.
  if (BlockChecksum(data) == sum) {
    write(std::string(1, kAck), TrafficKind::BlockAnswer);
    deliverBlock(data, now);
  } else {
    write(std::string(1, kNak), TrafficKind::BlockAnswer);
    beginBlock(now);
  }
}

void TransferEngine::deliverBlock(const std::string& data, SteadyTime now) {
  auto& boxes = m_outcome.received;
  if (boxes[static_cast<std::size_t>(m_box)].size() >= kReceiveBoxCapacity &&
      m_box + 1 < kReceiveBoxes) {
    ++m_box;
  }
  auto& box = boxes[static_cast<std::size_t>(m_box)];
  // There is no box after the fifth: what does not fit is not kept.
  if (box.size() < kReceiveBoxCapacity) {
    box += data;
    emit(engine_event::Received{m_box, data});
    m_received += data.size();
    if (!data.empty() && data.back() == kEndOfBlock) m_outcome.blockEnds.push_back(m_received - 1);
  }
  setProgress(percent(m_received, m_count));
  if (m_received >= m_count) {
    setBusy(false);
    emit(engine_event::Completed{});
    setState(WindowState::Done);
    finish();
    return;
  }
  beginBlock(now);
}

// ---- Events ------------------------------------------------------------------------------------

void TransferEngine::write(const std::string& bytes, TrafficKind kind) {
  if (bytes.empty()) return;
  m_outgoing += bytes;
  emit(engine_event::Traffic{kind, bytes});
}

void TransferEngine::logRead(const std::string& bytes) {
  if (!bytes.empty()) emit(engine_event::Traffic{TrafficKind::Read, bytes});
}

void TransferEngine::setState(WindowState state) {
  if (m_state == state) return;
  m_state = state;
  emit(engine_event::StateChanged{state});
}

void TransferEngine::setStatus(TransferStatus status) {
  if (status == m_outcome.status) return;
  m_outcome.status = status;
  emit(engine_event::StatusChanged{status});
}

void TransferEngine::setProgress(int value) {
  if (value == m_progress) return;
  m_progress = value;
  emit(engine_event::Progress{value});
}

void TransferEngine::setBusy(bool busy) {
  if (busy == m_busy) return;
  m_busy = busy;
  emit(engine_event::Busy{busy});
}

void TransferEngine::finish() {
  m_stage = Stage::Finished;
  m_pauseStart.reset();
  emit(engine_event::Finished{});
}

}  // namespace quillon
