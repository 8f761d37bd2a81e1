#pragma once
// What the simulated module is and how it misbehaves, as chosen on the command line.

#include <cstdint>
#include <string>

namespace quillon::sim {

// Monotonic milliseconds; the module logic never reads a clock itself.
using SimTime = std::int64_t;

struct ModuleConfig {
  int firmware = 123;  // shown by the PC as 1.23
  int bus = 9;         // Millenium M3
  int deviceType = 3;  // Telvane
  int messages = 100;  // 100 or 400
  int function = 0;    // alarming
  int phones = 60;

  int baud = 0;  // 0: the line is not paced

  // Faults, 0 meaning off.
  int nakEvery = 0;      // NAK every Nth block received, whatever its checksum
  int corruptEvery = 0;  // every Nth block sent carries a wrong checksum
  int silentAfter = -1;  // after this many blocks (both ways) nothing is answered; -1 never
  std::string refuse;    // start identifiers and request letters answered with NAK (upper case)

  // The final confirmation of a download follows the last block's ACK after this pause, so the
  // PC reads the two as separate replies.
  SimTime finalAckDelay = 50;

  // What a real line and a real module may do that the PC must survive.
  int replyNoise = 0;            // noise bytes in front of every ACK, NAK and count, same write
  bool mergedFinalAck = false;   // the last block's ACK and the final confirmation in one write
  bool oddStartReply = false;    // a start identifier is first answered by neither ACK nor NAK
  bool muteStartRepeat = false;  // ... and its repeat is taken without an answer
  bool endEveryBlock = false;    // every block sent ends with the end-of-block character
  bool ignoreVersion = false;    // the version request goes unanswered
  unsigned splitSeed = 0;        // writes cut at random points from this seed; 0 whole
};

}  // namespace quillon::sim
