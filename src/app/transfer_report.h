#pragma once
// Status-bar panel 3: what the last transfer was, when it ended, how it ended and, when the line
// is to blame, which device was tried. Kept as a record so that a language switch can word it
// again; all texts are Windows-1252.

#include <string>

#include "text/ui_texts.h"

namespace quillon::app {

// The results 0..7 of SignIn, and one more for the panel: the module refused the data or the
// request, which SignIn reports as 0.
inline constexpr int kResultRefusedByModule = 8;

struct TransferReport {
  int commandSlot = -1;   // the caption of the command the user gave; -1 before the first one
  int stepSlot = -1;      // the kind of data it failed at, when that says more than the command
  std::string time;       // "hh:mm:ss" when it ended
  int result = 0;         // 0..8
  std::string port;       // "COM 1 = /dev/ttyS0", or the device alone, or "COM 3" for no device
  std::string portError;  // why the port could not be opened, as the port layer said it
};

// "Last transfer: Download all (Phone N°s) at 14:03:22 – COM 1 = /dev/ttyS0: no answer" or its
// German wording.
[[nodiscard]] std::string LastTransferText(const TransferReport& report, const UiTexts& texts);

// "COM 1 = /dev/ttyS0" for a numbered port with a device, "COM 3" for a number without one, the
// device alone for a path given without a number.
[[nodiscard]] std::string PortDescription(int number, const std::string& device);

}  // namespace quillon::app
