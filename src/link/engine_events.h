#pragma once
// What the transfer engine reports: what happened, in the protocol's terms. The words and boxes
// for it are the presenter's business (transfer_presenter.h), in the user's language.

#include <cstdint>
#include <string>
#include <variant>

#include "link/transfer.h"

namespace quillon {

// The window's state line (Kommentar).
enum class WindowState {
  SigningIn,
  PortOpen,
  StartIdentifier,
  SendingBlocks,
  Cancel,
  NoConnection,
  Denied,
  Done,
  ReadingData,
  ReadingBlocks,
};

// Why the engine stops for a box.
enum class TransferFailure {
  NotReady,            // the sign-in's wait timed out
  Aborted,             // the sign-in was cancelled
  InterfaceNotActive,  // the port went away before the module ever answered
  PortError,           // the module answered the sign-in with anything but an ACK
  SendRefused,         // the start identifier was refused
  NoData,              // there is nothing to send
  NoFinalConfirmation,
  FiveTrials,      // five failed attempts at the blocks of one data string
  RequestRefused,  // a request was answered with a count of 0
  WaitTimedOut,    // any wait for the module timed out
};

enum class TrafficKind {
  Write,        // what the PC writes
  Read,         // a piece as a wait returned it
  Block,        // a whole block read from the module, checksum included
  BlockAnswer,  // the PC's ACK or NAK for a block
};

namespace engine_event {

struct StateChanged {
  WindowState state;
};
struct Progress {
  int percent;  // 0..100
};
struct BlockSent {
  std::string data;       // without the checksum characters
  std::uint8_t checksum;  // its value
};
// A reply to a start identifier, a block or the last block, judged by its last character.
struct Reply {
  char last;
};
struct Received {
  int box;  // 0..4
  std::string data;
};
struct Count {
  unsigned count;
};
struct StatusChanged {
  TransferStatus status;
};
struct Failure {
  TransferFailure failure;
};
struct Traffic {
  TrafficKind kind;
  std::string bytes;
};
struct Busy {
  bool on;
};
struct Finished {};
// A send or read ran to its end.
struct Completed {};
struct BlockRead {
  std::string data;      // the block as read, up to the checksum characters
  std::string checksum;  // the two characters that followed
};

}  // namespace engine_event

using EngineEvent =
    std::variant<engine_event::StateChanged, engine_event::Progress, engine_event::BlockSent,
                 engine_event::Reply, engine_event::Received, engine_event::Count,
                 engine_event::StatusChanged, engine_event::Failure, engine_event::Traffic,
                 engine_event::Busy, engine_event::Finished, engine_event::Completed,
                 engine_event::BlockRead>;

}  // namespace quillon
