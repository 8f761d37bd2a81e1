#include <string>

#include "project/number_text.h"
#include "text/substitution.h"
#include "text/ui_text_slots.h"
#include "transfer/data_image.h"

namespace quillon {

namespace {

inline constexpr char kLineBreak = '\r';

char optionLetter(const Table& messages, int row) {
  // The ring column is deliberately not transmitted.
  return wire::optionLetter({.acknowledge = !messages.cell(row, kAckColumn).empty(),
                             .callBack = !messages.cell(row, kCallBackColumn).empty()});
}

void warnSingleCharacter(ImageEnv& env, int row) {
  env.dialog.tell(kMainTitle, env.texts[slot::kMessagePerLine] + SignedDecimal(row - 1) +
                                  env.texts[slot::kOnlyOneCharacter]);
}

}  // namespace

bool CheckTextMemory(const std::string& image, ImageEnv& env) {
  if (image.size() == 1 && image.front() == wire::kEndMark) return false;
  if (image.size() <= static_cast<std::size_t>(env.limits.textMemory)) return false;
  env.dialog.tell(kMainTitle,
                  env.texts[slot::kTooMuchText] + kLineBreak + env.texts[slot::kLimitYourText],
                  BoxIcon::Critical);
  return true;
}

MessagesImage DoMeldSend(const Project& project, ImageEnv& env) {
  env.status.setStatus(StatusPanel::Transfer, env.texts[slot::kPackingMessages]);
  const bool smallModule = env.limits.lastMessageIndex == kSmallModuleLastIndex;

  std::string image = kMessagesHeader;
  image += wire::kPad;
  for (int row = 1; row <= project.messages.rows(); ++row) {
    const std::string& text = project.messages.cell(row, kMessageTextColumn);
    if (text.size() == 1) warnSingleCharacter(env, row);
    image += optionLetter(project.messages, row);
    image += toGsm(text);
    image += wire::kPad;
    if (smallModule && CheckTextMemory(image, env)) return {{}, 1};
  }

  image += kAckRequestRecord;
  image += project.ack.first;
  image += kAckRequestSeparator;
  image += project.ack.second;
  image += wire::kPad;
  if (CheckTextMemory(image, env)) return {{}, 1};

  for (int row = 1; row <= project.filters.rows(); ++row) {
    image += project.filters.cell(row, kFilterTextColumn);
    image += wire::kPad;
    // Unlike the two refusals above, an overflow among the filters hands over an empty image
    // that the transfer window then reports as "nothing to transfer".
    if (smallModule && CheckTextMemory(image, env)) return {{}, 0};
  }

  image += wire::kEndMark;
  return {image, 0};
}

SendTexts splitSendText(const std::string& image) {
  if (image.size() <= kSendTextCapacity) return {image, {}};
  return {image.substr(0, kSendTextCapacity), image.substr(kSendTextCapacity)};
}

}  // namespace quillon
