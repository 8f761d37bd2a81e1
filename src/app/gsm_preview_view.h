#pragma once
// The part of the text entry box that shows what the phone will display.

#include <QString>
#include <string>

#include "text/ui_texts.h"

namespace quillon::app {

// Rich text for the preview label of MInput: the text as the phone will show it, characters that
// will not arrive as typed marked with their position. Empty when there is nothing to show.
[[nodiscard]] QString gsmPreviewHtml(const std::string& text, const UiTexts& texts);

}  // namespace quillon::app
