#pragma once
// The block transfer with the module as a state machine without I/O and without a clock: the
// driver feeds it received bytes and the time of a steady clock, writes what it asks to write,
// re-arms one timer from deadline(), and shows the events. The engine never waits for anything
// itself.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/user_dialog.h"

namespace quillon {

// Time of day in milliseconds since midnight (0 .. 86'399'999), as the driver reads it; also used
// for lengths of time.
using TimeOfDay = std::int64_t;
// Milliseconds on a clock that never jumps (the driver's steady clock): the engine's `now`.
using SteadyTime = std::int64_t;

inline constexpr char kAck = '\x06';
inline constexpr char kNak = '\x15';
inline constexpr char kEndOfBlock = '\xFD';  // 253

// Results of SignIn and of every download and upload.
enum TransferResult : int {
  kResultOk = 0,
  kResultPortNotOpened = 1,
  kResultDeclined = 2,
  kResultCancelled = 3,
  kResultTimeout = 4,
  kResultNoConnection = 5,
  kResultNoResponse = 6,
  kResultVersionConflict = 7,
};

// The state of a transfer as the window's title tells it; once the transfer is over, how it
// ended. The title doubles as the window's status channel.
enum class TransferStatus {
  Active,  // "Download active" or "Upload active": running, or ended well
  Cancel,
  Timeout,
  NoConnection,
  NoResponse,
  VersionConflict,  // left by the identity query, never by a transfer itself
};

enum class TransferDirection { Download, Upload };

// What a caller hands to the transfer window.
struct TransferJob {
  TransferDirection direction = TransferDirection::Download;
  std::string contentLabel;     // lblInhalt: "Messages", "Version", "Reading Logger" ...
  std::string sendText;         // Sendetext
  std::string sendText2;        // Sendetext2
  std::string startIdentifier;  // lblStartKSend, e.g. "M0A3C"
  char requestLetter = '\0';    // lblStartKEmpf, sent in upper case

  [[nodiscard]] bool sending() const { return direction == TransferDirection::Download; }
};

inline constexpr int kReceiveBoxes = 5;
inline constexpr std::size_t kReceiveBoxCapacity = 16000;

// What the caller reads back after the window has closed.
struct TransferOutcome {
  TransferStatus status = TransferStatus::Active;   // what the title says at the end
  std::array<std::string, kReceiveBoxes> received;  // Empfang .. Empfang5
  // The module refused the start identifier or the request ("Denied"): an outcome of its own,
  // which the title does not tell. SignIn reports such a transfer as 0, as the window leaves it.
  bool refused = false;
  // Where in receivedText() an end-of-block character closed a block. A module may close every
  // block so, not only the last one.
  std::vector<std::size_t> blockEnds = {};

  [[nodiscard]] std::string receivedText() const {
    std::string all;
    for (const auto& r : received) all += r;
    return all;
  }
};

// The receive boxes without the end marks that closed any block but the last: what the module
// holds, as one image, however it framed its blocks.
[[nodiscard]] std::array<std::string, kReceiveBoxes> receivedData(const TransferOutcome& outcome);
[[nodiscard]] std::string receivedDataText(const TransferOutcome& outcome);

struct EngineSettings {
  int blockLength = 64;
  TimeOfDay replyTimeout = 20000;  // a wait times out once more than this has passed
  int language = 0;                // 0 English, 1 German: the presenter's texts
  int identifierDigits = 4;        // lblLang
};

// One change of the transfer window as the presenter words it for the front ends.
struct TransferEvent {
  enum class Kind {
    Comment,     // Kommentar: text
    Progress,    // Laufzeit: value 0..100
    Block,       // Bez2 = text, Bez3 = text2
    Reply,       // reply display: "[ACK]", "[nak]", "[x]"
    Received,    // text appended to receive box `value` (0..4)
    Count,       // the announced count of a read: value
    Title,       // the window title (transfer status text) became text
    Box,         // a box to show, modally, before anything else happens
    Log,         // traffic to log: prefix = text2, bytes = text
    Busy,        // value 1: busy pointer on, 0: off
    Finished,    // the transfer is over; the window closes
    StatusText,  // text for the main window's status panel 2 ("Download done")
    BlockRead,   // a block from the module: lblBlockLes = text, lblBlockChk = text2
  };
  Kind kind;
  std::string text;
  std::string text2;
  int value = 0;
  quillon::Box box;

  friend bool operator==(const TransferEvent&, const TransferEvent&) = default;
};

}  // namespace quillon
