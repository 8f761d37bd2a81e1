#pragma once
// How much of the module's text memory the current messages, acknowledgement request and filter
// texts take: the length of the messages image a download would build.

#include "project/project.h"
#include "text/ui_texts.h"

namespace quillon::app {

[[nodiscard]] int messagesImageLength(const Project& project, const UiTexts& texts);

}  // namespace quillon::app
