#include "link/transfer_engine.h"

#include <utility>

#include "link/block_checksum.h"
#include "link/hex_field.h"
#include "link/start_identifier.h"

namespace quillon {

namespace {

constexpr const char* kProbe = "??";
constexpr TimeOfDay kSignInPause = 1000;
constexpr int kMaxFailures = 5;
// The final confirmation belongs to the module's 64-character block mode only.
constexpr int kConfirmedBlockLength = 64;

constexpr const char* kLogWrite = "WRITE: ";
constexpr const char* kLogRead = "READ: ";
constexpr const char* kLogBlock = "LESEN: ";
constexpr const char* kLogBlockAnswer = "SCHREIBEN: ";

// Sign-in failure statuses, as the wait that failed reports them.
constexpr int kSignInRefused = 0;
constexpr int kSignInTimedOut = 1;
constexpr int kSignInCancelled = 2;
constexpr int kSignInInterfaceGone = 9;

// ReadAcknowledge codes.
constexpr int kAckCode = 0;
constexpr int kNoReplyCode = 1;
constexpr int kOtherCode = 2;
constexpr int kNakCode = 21;

using Kind = TransferEvent::Kind;

TransferEvent event(Kind kind, std::string text = {}, std::string text2 = {}, int value = 0) {
  TransferEvent e{kind, std::move(text), std::move(text2), value, Box{}};
  return e;
}

TransferEvent valueEvent(Kind kind, int value) { return event(kind, {}, {}, value); }

// The checksum display of the window shows only the first two characters of the unpadded
// hexadecimal digits followed by "0": 0xA shows as "A0", 0xAB as "AB".
std::string checksumDisplay(std::uint8_t sum) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string hex;
  if (sum >= 16) hex += kDigits[sum >> 4];
  hex += kDigits[sum & 0x0F];
  return (hex + "0").substr(0, 2);
}

int percent(std::size_t done, std::size_t total) {
  if (total == 0 || done >= total) return 100;
  return static_cast<int>(done * 100 / total);
}

}  // namespace

TransferEngine::TransferEngine(TransferJob job, EngineSettings settings)
    : m_job(std::move(job)), m_settings(settings), m_messages(settings.language) {
  if (m_settings.blockLength < 1) m_settings.blockLength = kConfirmedBlockLength;
  m_outcome.title = m_job.title;
}

// ---- Entry points ------------------------------------------------------------------------------

void TransferEngine::start(TimeOfDay now) {
  if (m_stage != Stage::Idle) return;
  setComment("Sign in ...");
  setProgress(0);
  writeProbe(now);
  pump(now);
}

void TransferEngine::onBytes(std::string_view bytes, TimeOfDay now) {
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

void TransferEngine::onDeadline(TimeOfDay now) {
  if (finished()) return;
  advanceTime(now);
  pump(now);
}

void TransferEngine::cancel(TimeOfDay /*now*/) {
  if (finished()) return;
  m_cancelled = true;
  m_outgoing.clear();
  setTitle(kStatusCancel);
  switch (m_stage) {
    case Stage::SignInReply:
    case Stage::SignInPause:
      // A cancelled sign-in is still a failed one: "Aborted", then "No connection".
      signInFailed(kSignInCancelled);
      return;
    case Stage::StartReply:
    case Stage::StartRepeatReply:
    case Stage::BlockReply:
    case Stage::FinalReply:
      setComment(kStatusCancel);
      break;
    default:
      break;
  }
  setBusy(false);
  finish();
}

void TransferEngine::onLinkLost(TimeOfDay now) {
  if (finished()) return;
  switch (m_stage) {
    case Stage::Idle:
    case Stage::SignInReply:
    case Stage::SignInPause:
      // Before the module ever answered, a vanished port means the interface is not there.
      signInFailed(kSignInInterfaceGone);
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

std::optional<TimeOfDay> TransferEngine::deadline() const {
  if (m_stage == Stage::SignInPause) return *m_pauseStart + kSignInPause;
  if (waitsForReply()) return m_replyTimer.deadline();
  return std::nullopt;
}

std::string TransferEngine::takeOutgoing() {
  std::string out;
  out.swap(m_outgoing);
  return out;
}

std::vector<TransferEvent> TransferEngine::takeEvents() {
  std::vector<TransferEvent> out;
  out.swap(m_events);
  return out;
}

// ---- Waiting -----------------------------------------------------------------------------------

void TransferEngine::expect(Stage stage, TimeOfDay now) {
  m_stage = stage;
  m_replyTimer.start(now, m_settings.replyTimeout);
}

void TransferEngine::advanceTime(TimeOfDay now) {
  if (m_stage == Stage::SignInPause) {
    // Past midnight the start moves onto the new day's axis, where deadline() is read: left
    // on the old one, the pause's deadline would lie a day ahead.
    if (now < *m_pauseStart) *m_pauseStart -= kDayLength;
    if (now - *m_pauseStart >= kSignInPause) judgeSignIn(now);
  } else if (waitsForReply() && m_replyTimer.expired(now)) {
    timeOut(now);
  }
}

// Takes from the input whatever the current stage can use. A wait for an acknowledgement or a
// count takes everything that has arrived, as one read of the port does; the block reader takes
// one byte at a time, so a block gives the same result however the port cuts it into pieces.
void TransferEngine::pump(TimeOfDay now) {
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
        m_replyTimer.start(now, m_settings.replyTimeout);
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
int TransferEngine::takeAcknowledge() {
  const char byte = takeAll().back();
  if (byte == kAck) {
    emit(event(Kind::Reply, "[ACK]"));
    return kAckCode;
  }
  if (byte == kNak) {
    emit(event(Kind::Reply, "[nak]"));
    return kNakCode;
  }
  emit(event(Kind::Reply, "[" + std::string(1, byte) + "]"));
  return kOtherCode;
}

void TransferEngine::timeOut(TimeOfDay now) {
  // The wait's own box carries no title of the window; the front end puts its application name.
  TransferEvent box = event(Kind::Box);
  box.box = Box{"", "Timeout"};
  emit(std::move(box));
  setTitle(kStatusNoResponse);
  switch (m_stage) {
    case Stage::SignInReply:
      signInFailed(kSignInTimedOut);
      return;
    case Stage::StartReply:
    case Stage::BlockReply:
      // The title stays "No response": the module went quiet, nobody cancelled.
      stopSending();
      return;
    case Stage::StartRepeatReply:
      // The one repeat of the start identifier is followed by the blocks, whatever came back.
      onStartReply(kNoReplyCode, now);
      return;
    case Stage::FinalReply:
      onFinalReply(kNoReplyCode);
      return;
    case Stage::CountReply:
      countDone(0, now);
      return;
    case Stage::BlockHead:
    case Stage::BlockTail:
      setTitle(kStatusTimeout);
      setBusy(false);
      finish();
      return;
    default:
      finish();
      return;
  }
}

// ---- Sign-in -----------------------------------------------------------------------------------

void TransferEngine::writeProbe(TimeOfDay now) {
  ++m_signInRound;
  write(kProbe, kLogWrite);
  expect(Stage::SignInReply, now);
}

void TransferEngine::judgeSignIn(TimeOfDay now) {
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
    signInFailed(kSignInRefused);
  }
}

void TransferEngine::signInFailed(int status) {
  switch (status) {
    case kSignInTimedOut:
      showBox(m_messages[kMsgNotReady]);
      break;
    case kSignInCancelled:
      showBox(m_messages[kMsgAborted]);
      break;
    case kSignInInterfaceGone:
      showBox(m_messages[kMsgInterfaceNotActive]);
      break;
    default:
      showBox("Error " + m_portErrorText);
      break;
  }
  setComment(kStatusNoConnection);
  setTitle(kStatusNoConnection);
  finish();
}

// ---- Sending -----------------------------------------------------------------------------------

void TransferEngine::beginSending(TimeOfDay now) {
  setComment("Com open");
  setBusy(true);
  m_input.clear();
  setComment("Start identifier ...");
  write(m_job.startIdentifier, kLogWrite);
  expect(Stage::StartReply, now);
}

void TransferEngine::onStartReply(int code, TimeOfDay now) {
  if (m_stage == Stage::StartRepeatReply || code == kAckCode) {
    // After the one repeat the blocks follow whatever the module answered.
    beginDataString(1, now);
  } else if (code == kNakCode) {
    setComment("Denied");
    m_outcome.refused = true;
    showBox("Option <" + m_job.contentLabel + m_messages[kMsgNotImplemented]);
    setBusy(false);
    finish();
  } else {
    write(m_job.startIdentifier, kLogWrite);
    expect(Stage::StartRepeatReply, now);
  }
}

void TransferEngine::beginDataString(int which, TimeOfDay now) {
  const std::string& text = which == 1 ? m_job.sendText : m_job.sendText2;
  if (which == 1 && text.empty()) {
    showBox(m_messages[kMsgNoData]);
    setBusy(false);
    finish();
    return;
  }
  if (which == 2 && text.empty()) {
    afterDataStrings(now);
    return;
  }
  m_dataString = which;
  setComment("Sending data block by block...");
  m_rest = text;
  m_dataLength = text.size();
  m_sent = 0;
  m_failures = 0;
  sendNextBlock(now);
}

void TransferEngine::sendNextBlock(TimeOfDay now) {
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
  emit(event(Kind::Block, data, checksumDisplay(BlockChecksumValue(data))));
  m_block = data + BlockChecksum(data);
  write(m_block, kLogWrite);
  m_sent += length;
  setProgress(percent(m_sent, m_dataLength));
  expect(Stage::BlockReply, now);
}

void TransferEngine::onBlockReply(int code, TimeOfDay now) {
  if (code == kAckCode) {
    sendNextBlock(now);
    return;
  }
  // Failures count over the whole data string, not per block.
  if (++m_failures >= kMaxFailures) {
    showBox(m_messages[kMsgFiveTrials], BoxIcon::Critical);
    cancelSending();
    return;
  }
  write(m_block, kLogWrite);
  expect(Stage::BlockReply, now);
}

void TransferEngine::afterDataStrings(TimeOfDay now) {
  if (m_settings.blockLength == kConfirmedBlockLength) {
    expect(Stage::FinalReply, now);
  } else {
    finishSending();
  }
}

void TransferEngine::onFinalReply(int code) {
  if (code != kAckCode) {
    showBox(m_messages[kMsgNoFinalConfirmation], BoxIcon::Exclamation);
    // Every block was acknowledged, so a missing confirmation does not make the transfer fail.
    setTitle(m_job.title);
  }
  finishSending();
}

void TransferEngine::finishSending() {
  emit(event(Kind::StatusText, m_messages[kMsgDownloadDone]));
  setComment("done");
  setBusy(false);
  finish();
}

// Five failed attempts end the send as a cancelled one: the caller must not report success.
void TransferEngine::cancelSending() {
  setTitle(kStatusCancel);
  stopSending();
}

void TransferEngine::stopSending() {
  m_cancelled = true;
  setComment(kStatusCancel);
  setBusy(false);
  finish();
}

// ---- Reading -----------------------------------------------------------------------------------

void TransferEngine::beginReading(TimeOfDay now) {
  setComment(" Reading Data ...");
  setBusy(true);
  write(std::string(1, upperLetter(m_job.requestLetter)), kLogWrite);
  m_collected.clear();
  expect(Stage::CountReply, now);
}

void TransferEngine::onCountReply(const std::string& piece, TimeOfDay now) {
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
  m_replyTimer.start(now, m_settings.replyTimeout);
}

void TransferEngine::countDone(unsigned count, TimeOfDay now) {
  write(std::string(1, kAck), kLogWrite);
  if (count == 0) {
    setComment("Denied");
    m_outcome.refused = true;
    // This text is German in every language.
    showBox("Option <" + m_job.contentLabel + "> ist nicht implementiert");
    setBusy(false);
    finish();
    return;
  }
  m_count = count;
  emit(valueEvent(Kind::Count, static_cast<int>(count)));
  beginBlock(now);
}

void TransferEngine::beginBlock(TimeOfDay now) {
  setComment("Reading data block by block...");
  m_collected.clear();
  m_headLength = 0;
  expect(Stage::BlockHead, now);
}

void TransferEngine::finishBlock(TimeOfDay now) {
  emit(event(Kind::Log, m_collected, kLogBlock));
  const std::string data = m_collected.substr(0, m_collected.size() - 2);
  const std::string sum = m_collected.substr(m_collected.size() - 2);
  emit(event(Kind::BlockRead, data, sum));
  // The digits are compared as text: lower-case digits count as wrong.
  if (BlockChecksum(data) == sum) {
    write(std::string(1, kAck), kLogBlockAnswer);
    deliverBlock(data, now);
  } else {
    write(std::string(1, kNak), kLogBlockAnswer);
    beginBlock(now);
  }
}

void TransferEngine::deliverBlock(const std::string& data, TimeOfDay now) {
  auto& boxes = m_outcome.received;
  if (boxes[static_cast<std::size_t>(m_box)].size() >= kReceiveBoxCapacity &&
      m_box + 1 < kReceiveBoxes) {
    ++m_box;
  }
  auto& box = boxes[static_cast<std::size_t>(m_box)];
  // There is no box after the fifth: what does not fit is not kept.
  if (box.size() < kReceiveBoxCapacity) {
    box += data;
    emit(event(Kind::Received, data, {}, m_box));
    m_received += data.size();
    if (!data.empty() && data.back() == kEndOfBlock) m_outcome.blockEnds.push_back(m_received - 1);
  }
  setProgress(percent(m_received, m_count));
  if (m_received >= m_count) {
    setBusy(false);
    emit(event(Kind::StatusText, m_messages[kMsgDownloadDone]));
    setComment("done");
    finish();
    return;
  }
  beginBlock(now);
}

// ---- Events ------------------------------------------------------------------------------------

void TransferEngine::write(const std::string& bytes, const char* logPrefix) {
  if (bytes.empty()) return;
  m_outgoing += bytes;
  emit(event(Kind::Log, bytes, logPrefix));
}

void TransferEngine::logRead(const std::string& bytes) {
  if (!bytes.empty()) emit(event(Kind::Log, bytes, kLogRead));
}

void TransferEngine::setComment(const std::string& text) {
  if (text == m_comment) return;
  m_comment = text;
  emit(event(Kind::Comment, text));
}

void TransferEngine::setTitle(const std::string& text) {
  if (text == m_outcome.title) return;
  m_outcome.title = text;
  emit(event(Kind::Title, text));
}

void TransferEngine::setProgress(int value) {
  if (value == m_progress) return;
  m_progress = value;
  emit(valueEvent(Kind::Progress, value));
}

void TransferEngine::setBusy(bool busy) {
  if (busy == m_busy) return;
  m_busy = busy;
  emit(valueEvent(Kind::Busy, busy ? 1 : 0));
}

void TransferEngine::showBox(std::string text, BoxIcon icon) {
  TransferEvent box = event(Kind::Box);
  box.box = Box{kTerminalTitle, std::move(text), icon};
  emit(std::move(box));
}

void TransferEngine::finish() {
  m_stage = Stage::Finished;
  m_pauseStart.reset();
  emit(event(Kind::Finished));
}

}  // namespace quillon
