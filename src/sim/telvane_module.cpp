#include "sim/telvane_module.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "link/block_checksum.h"

namespace quillon::sim {
namespace {

constexpr std::size_t kChecksumDigits = 2;
constexpr std::size_t kCountDigits = 4;
// Letters the module understands as requests; V and L are never followed by a length.
constexpr std::string_view kRequestLetters = "VMTPYL";

std::string hexDigits(unsigned value, std::size_t width) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string out(width, '0');
  for (std::size_t i = width; i-- > 0; value >>= 4) out[i] = kDigits[value & 0xFU];
  return out;
}

bool isHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }

char upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

unsigned hexValue(std::string_view digits) {
  unsigned value = 0;
  for (char c : digits) {
    const int d = std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : upper(c) - 'A' + 10;
    value = value * 16 + static_cast<unsigned>(d);
  }
  return value;
}

std::string wrongChecksum(std::string_view block) {
  const std::string right = BlockChecksum(block);
  return hexDigits((hexValue(right) + 1) & 0xFFU, kChecksumDigits);
}

}  // namespace

std::string versionReply(const ModuleConfig& config) {
  const auto field = [](int value, std::size_t width) {
    return hexDigits(static_cast<unsigned>(value), width);
  };
  return field(config.firmware, 4) + field(config.bus, 2) + field(config.deviceType, 2) +
         field(config.messages == 400 ? 1 : 0, 2) + field(config.function, 2) +
         field(config.phones + 2, 2);
}

std::vector<std::string> uploadBlocks(std::string_view data, bool endEveryBlock) {
  std::string rest(data);
  if (endEveryBlock) {
    // The image's own end mark becomes the last block's.
    if (!rest.empty() && rest.back() == kEndOfBlock) rest.pop_back();
  } else if (rest.empty() || rest.back() != kEndOfBlock) {
    rest += kEndOfBlock;
  }
  std::vector<std::string> blocks;
  std::size_t at = 0;
  do {
    std::string block = rest.substr(at, kBlockData);
    if (endEveryBlock) block += kEndOfBlock;
    block += BlockChecksum(block);
    blocks.push_back(std::move(block));
    at += kBlockData;
  } while (at < rest.size());
  return blocks;
}

std::string lineNoise(int count) {
  static constexpr char kNoise[] = {'\x00', '\xFF', '~', '\x7F'};
  std::string noise;
  for (int i = 0; i < count; ++i) noise += kNoise[static_cast<std::size_t>(i) % sizeof kNoise];
  return noise;
}

TelvaneModule::TelvaneModule(ModuleConfig config, ModuleMemory& memory, std::string logger)
    : m_config(std::move(config)), m_memory(memory), m_logger(std::move(logger)) {
  if (m_config.silentAfter == 0) m_state = State::Silent;
}

void TelvaneModule::onBytes(std::string_view bytes, SimTime now) {
  if (m_state == State::Silent || bytes.empty()) return;
  m_input += bytes;
  m_lastActivity = std::max(m_lastActivity, now);
  // One chunk of input may finish one phase and start the next, so keep going while the state
  // moves on.
  for (;;) {
    const State before = m_state;
    const std::size_t pending = m_input.size();
    switch (m_state) {
      case State::Idle:
        parseCommands(now);
        break;
      case State::Receiving:
        receiveBlocks(now);
        break;
      case State::CountSent:
      case State::Sending:
        awaitAcknowledge(now);
        break;
      case State::FinalPending:
        return;  // the PC is waiting for the final confirmation and sends nothing
      case State::Silent:
        m_input.clear();
        return;
    }
    if (m_input.empty() || (m_state == before && m_input.size() == pending)) return;
  }
}

void TelvaneModule::parseCommands(SimTime now) {
  m_commandDeadline.reset();
  while (m_state == State::Idle && !m_input.empty()) {
    const char c = m_input.front();
    if (c == '?') {
      if (m_input.size() < 2) break;
      if (m_input[1] == '?') {
        m_input.erase(0, 2);
        answer(std::string(1, kAck));
      } else {
        m_input.erase(0, 1);
      }
      continue;
    }
    const char letter = upper(c);
    if (!std::isalpha(static_cast<unsigned char>(c))) {
      m_input.erase(0, 1);  // line noise, a stray ACK or NAK
      continue;
    }
    if (letter == 'V' || letter == 'L') {
      m_input.erase(0, 1);
      if (letter != 'V' || !m_config.ignoreVersion) startUpload(letter);
      continue;
    }
    if (!ModuleMemory::holdsKind(letter)) {
      m_input.erase(0, 1);
      answer(std::string(1, kNak));
      continue;
    }
    std::size_t digits = 0;
    while (digits < kCountDigits && 1 + digits < m_input.size() && isHexDigit(m_input[1 + digits]))
      ++digits;
    if (digits == kCountDigits) {
      const std::size_t length = hexValue(std::string_view(m_input).substr(1, kCountDigits));
      m_input.erase(0, 1 + kCountDigits);
      startDownload(letter, length, now);
    } else if (1 + digits < m_input.size()) {
      // Something other than a digit follows: a bare letter is a request, a letter with a
      // partial length is garbage.
      m_input.erase(0, 1 + digits);
      if (digits == 0)
        startUpload(letter);
      else
        answer(std::string(1, kNak));
    } else {
      break;  // more may be on its way
    }
  }
  if (m_state == State::Idle && !m_input.empty()) m_commandDeadline = now + kCommandGap;
}

void TelvaneModule::expireCommand() {
  m_commandDeadline.reset();
  const char letter = m_input.empty() ? '\0' : upper(m_input.front());
  const bool bareLetter = m_input.size() == 1 && ModuleMemory::holdsKind(letter);
  const bool partialIdentifier = m_input.size() > 1 && ModuleMemory::holdsKind(letter);
  m_input.clear();
  if (bareLetter)
    startUpload(letter);
  else if (partialIdentifier)
    answer(std::string(1, kNak));
}

bool TelvaneModule::refuses(char letter) const {
  return m_config.refuse.find(letter) != std::string::npos;
}

void TelvaneModule::startDownload(char kind, std::size_t length, SimTime now) {
  if (refuses(kind)) {
    answer(std::string(1, kNak));
    return;
  }
  if (m_config.oddStartReply && !m_oddAnswered) {
    // Not understood: the PC says it once more.
    m_oddAnswered = true;
    reply("X");
    return;
  }
  const bool repeat = std::exchange(m_oddAnswered, false);
  if (!(repeat && m_config.muteStartRepeat)) answer(std::string(1, kAck));
  if (length == 0) return;  // the PC has nothing to send after all
  m_kind = kind;
  m_expected = length;
  m_received.clear();
  m_state = State::Receiving;
  m_lastActivity = std::max(m_lastActivity, now);
}

void TelvaneModule::receiveBlocks(SimTime now) {
  while (m_state == State::Receiving) {
    const std::size_t dataLength = std::min(kBlockData, m_expected - m_received.size());
    if (m_input.size() < dataLength + kChecksumDigits) return;
    const std::string data = m_input.substr(0, dataLength);
    const std::string checksum = m_input.substr(dataLength, kChecksumDigits);
    m_input.erase(0, dataLength + kChecksumDigits);
    if (!countBlock()) return;
    ++m_blocksIn;
    const bool forcedNak = m_config.nakEvery > 0 && m_blocksIn % m_config.nakEvery == 0;
    if (forcedNak || checksum != BlockChecksum(data)) {
      answer(std::string(1, kNak));
      continue;
    }
    m_received += data;
    if (m_received.size() == m_expected && m_config.mergedFinalAck) {
      answer(std::string(2, kAck));
      m_input.clear();
      finishDownload();
      return;
    }
    answer(std::string(1, kAck));
    if (m_received.size() == m_expected) {
      m_state = State::FinalPending;
      m_finalDeadline = now + m_config.finalAckDelay;
      m_input.clear();
    }
  }
}

void TelvaneModule::startUpload(char letter) {
  if (refuses(letter) || kRequestLetters.find(letter) == std::string_view::npos) {
    answer(std::string(1, kNak));
    return;
  }
  std::string payload;
  if (letter == 'V') {
    payload = versionReply(m_config);
  } else if (letter == 'L') {
    payload = m_logger;
  } else {
    payload = m_memory.image(letter);
  }
  m_blocks = uploadBlocks(payload, m_config.endEveryBlock);
  m_next = 0;
  // The count is every character the module sends but the checksums, end marks included.
  std::size_t count = 0;
  for (const auto& block : m_blocks) count += block.size() - kChecksumDigits;
  answer(std::string(1, letter) + hexDigits(static_cast<unsigned>(count), kCountDigits));
  m_state = State::CountSent;
}

void TelvaneModule::awaitAcknowledge(SimTime now) {
  while ((m_state == State::CountSent || m_state == State::Sending) && !m_input.empty()) {
    const char c = m_input.front();
    if (c == '?') {
      // Only a new sign-in starts with '?': the PC has given up on this upload.
      resetToIdle();
      parseCommands(now);
      return;
    }
    m_input.erase(0, 1);
    if (c == kAck) {
      if (m_state == State::CountSent) {
        m_state = State::Sending;
      } else if (++m_next == m_blocks.size()) {
        resetToIdle();
        return;
      }
      sendBlock();
    } else if (c == kNak && m_state == State::Sending) {
      sendBlock();
    }
  }
}

void TelvaneModule::sendBlock() {
  if (!countBlock()) return;
  ++m_blocksOut;
  std::string block = m_blocks[m_next];
  if (m_config.corruptEvery > 0 && m_blocksOut % m_config.corruptEvery == 0) {
    const std::string_view body = std::string_view(block).substr(0, block.size() - kChecksumDigits);
    block.replace(block.size() - kChecksumDigits, kChecksumDigits, wrongChecksum(body));
  }
  reply(block);
}

bool TelvaneModule::countBlock() {
  ++m_blocksTotal;
  if (m_config.silentAfter >= 0 && m_blocksTotal > m_config.silentAfter) {
    resetToIdle();
    m_state = State::Silent;
    return false;
  }
  return true;
}

void TelvaneModule::finishDownload() {
  m_memory.store(m_kind, std::move(m_received));
  m_memoryChanged = true;
  resetToIdle();
}

void TelvaneModule::onDeadline(SimTime now) {
  if (m_finalDeadline && now >= *m_finalDeadline) {
    m_finalDeadline.reset();
    answer(std::string(1, kAck));
    finishDownload();
    // The PC may have written its next sign-in already.
    parseCommands(now);
    return;
  }
  if (m_commandDeadline && now >= *m_commandDeadline) {
    expireCommand();
    return;
  }
  const bool inTransfer =
      m_state == State::Receiving || m_state == State::CountSent || m_state == State::Sending;
  if (inTransfer && now >= m_lastActivity + kStallReset) resetToIdle();
}

std::optional<SimTime> TelvaneModule::deadline() const {
  switch (m_state) {
    case State::Idle:
      return m_commandDeadline;
    case State::FinalPending:
      return m_finalDeadline;
    case State::Receiving:
    case State::CountSent:
    case State::Sending:
      return m_lastActivity + kStallReset;
    case State::Silent:
      break;
  }
  return std::nullopt;
}

void TelvaneModule::answer(std::string_view bytes) {
  reply(lineNoise(m_config.replyNoise) + std::string(bytes));
}

void TelvaneModule::reply(std::string_view bytes) {
  m_output += bytes;
  m_lastActivity += byteTimeMs(bytes.size());
}

SimTime TelvaneModule::byteTimeMs(std::size_t bytes) const {
  if (m_config.baud <= 0) return 0;
  // 8N1: ten bits on the line for every byte.
  return static_cast<SimTime>(bytes) * 10'000 / m_config.baud + 1;
}

// What the PC has sent already stays: a sign-in may follow the last ACK in the same read.
void TelvaneModule::resetToIdle() {
  m_state = State::Idle;
  m_received.clear();
  m_blocks.clear();
  m_next = 0;
  m_kind = '\0';
  m_commandDeadline.reset();
  m_finalDeadline.reset();
}

std::string TelvaneModule::takeOutgoing() { return std::exchange(m_output, {}); }

bool TelvaneModule::takeMemoryChanged() { return std::exchange(m_memoryChanged, false); }

}  // namespace quillon::sim
