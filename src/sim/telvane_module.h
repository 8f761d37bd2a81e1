#pragma once
// The module's side of the block protocol as a state machine without I/O and without a clock:
// the host feeds it the bytes the PC sent and the time, writes out what it asks to write and
// calls back at its deadline. Written from the module's point of view, apart from the PC's
// engine, so that one misreading of the protocol cannot hide in both.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/module_config.h"
#include "sim/module_memory.h"

namespace quillon::sim {

inline constexpr char kAck = '\x06';
inline constexpr char kNak = '\x15';
inline constexpr char kEndOfBlock = '\xFD';
inline constexpr std::size_t kBlockData = 64;

// A command letter alone is a request; the same letter followed by four hex digits is a start
// identifier. The module tells them apart by waiting this long for more characters.
inline constexpr SimTime kCommandGap = 30;
// A transfer that hears nothing from the PC for this long was abandoned (the PC cancelled or
// gave up); the module goes back to waiting for a sign-in.
inline constexpr SimTime kStallReset = 5000;

// The version reply: firmware (4 hex), bus, device type, message table size, function and
// phone places + 2 (2 hex each).
[[nodiscard]] std::string versionReply(const ModuleConfig& config);

// The blocks an upload goes out as. The data end with the end-of-block character (an image
// already does; anything else gets one), and travel 64 characters at a time, each followed by
// the checksum over its characters. So every block but the last is 64 characters and two
// digits, which the PC recognises by its length, and only the last one holds the 253. The PC's
// receive boxes then hold exactly the image, which the upload parsers take apart by position.
// With `endEveryBlock` every block carries up to 64 data characters and then its own 253,
// which the PC also recognises.
[[nodiscard]] std::vector<std::string> uploadBlocks(std::string_view data,
                                                    bool endEveryBlock = false);

// The noise a bad line puts in front of a reply: `count` bytes that are neither ACK, NAK, the
// end-of-block character nor a letter or digit.
[[nodiscard]] std::string lineNoise(int count);

class TelvaneModule {
 public:
  enum class State {
    Idle,          // waiting for "??", a start identifier or a request letter
    Receiving,     // a download: collecting blocks
    FinalPending,  // all blocks in; the final confirmation is due at the deadline
    CountSent,     // the count of an upload was sent; waiting for the PC's ACK
    Sending,       // an upload block was sent; waiting for ACK or NAK
    Silent,        // --silent-after reached: answers nothing any more
  };

  TelvaneModule(ModuleConfig config, ModuleMemory& memory, std::string logger);

  void onBytes(std::string_view bytes, SimTime now);
  void onDeadline(SimTime now);
  [[nodiscard]] std::optional<SimTime> deadline() const;
  [[nodiscard]] std::string takeOutgoing();
  // True once after a download has been stored, so the host can save the state file.
  [[nodiscard]] bool takeMemoryChanged();
  [[nodiscard]] State state() const { return m_state; }

 private:
  void parseCommands(SimTime now);
  void expireCommand();
  void startDownload(char kind, std::size_t length, SimTime now);
  void startUpload(char letter);
  void receiveBlocks(SimTime now);
  void awaitAcknowledge(SimTime now);
  void sendBlock();
  // Counts a block in either direction; false when the module has just fallen silent.
  [[nodiscard]] bool countBlock();
  void reply(std::string_view bytes);
  // An ACK, NAK or count: a reply that the line may garble with noise in front.
  void answer(std::string_view bytes);
  void finishDownload();
  void resetToIdle();
  [[nodiscard]] bool refuses(char letter) const;
  [[nodiscard]] SimTime byteTimeMs(std::size_t bytes) const;

  ModuleConfig m_config;
  ModuleMemory& m_memory;
  std::string m_logger;
  State m_state = State::Idle;
  std::string m_input;
  std::string m_output;

  // Download in progress.
  char m_kind = '\0';
  std::size_t m_expected = 0;
  std::string m_received;

  // Upload in progress.
  std::vector<std::string> m_blocks;
  std::size_t m_next = 0;

  int m_blocksTotal = 0;  // both directions, for --silent-after
  int m_blocksIn = 0;     // for --nak-every
  int m_blocksOut = 0;    // for --corrupt-every
  bool m_memoryChanged = false;
  bool m_oddAnswered = false;  // the current start identifier got its odd answer already

  std::optional<SimTime> m_commandDeadline;
  std::optional<SimTime> m_finalDeadline;
  SimTime m_lastActivity = 0;  // the later of the last byte heard and the end of the last reply
};

}  // namespace quillon::sim
