#pragma once
// What building an image has to tell the user: its warnings and the texts of the transfer panel,
// in the order they came up. The builders only collect them, so an image can be measured
// without a word to the user; whoever sends the image shows them.

#include <string>
#include <variant>
#include <vector>

#include "project/user_dialog.h"

namespace quillon {

// A text for the transfer panel of the status bar.
struct PanelText {
  std::string text;
  friend bool operator==(const PanelText&, const PanelText&) = default;
};

using ImageNote = std::variant<Box, PanelText>;
using ImageNotes = std::vector<ImageNote>;

// Shows the notes in their order: the boxes on `dialog`, the texts on the transfer panel.
void showImageNotes(const ImageNotes& notes, UserDialog& dialog, StatusDisplay& status);

}  // namespace quillon
