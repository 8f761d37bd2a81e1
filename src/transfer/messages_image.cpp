#include <string>

#include "project/number_text.h"
#include "text/substitution.h"
#include "text/ui_text_slots.h"
#include "transfer/data_image.h"
#include "transfer/field_text.h"

namespace quillon {

namespace {

inline constexpr char kLineBreak = '\r';

char optionLetter(const Table& messages, int row) {
  int value = 0;
  if (!messages.cell(row, kAckColumn).empty()) value += 1;
  if (!messages.cell(row, kCallBackColumn).empty()) value += 2;
  // The ring column is deliberately not transmitted.
  return static_cast<char>(kOptionBase + value);
}

void warnSingleCharacter(ImageEnv& env, int row) {
  env.dialog.tell(kMainTitle, env.texts[slot::kMessagePerLine] + SignedDecimal(row - 1) +
                                  env.texts[slot::kOnlyOneCharacter]);
}

}  // namespace

bool CheckTextMemory(const std::string& image, ImageEnv& env) {
  if (image.size() == 1 && image.front() == kEndOfImage) return false;
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
  image += kPad;
  for (int row = 1; row <= project.messages.rows(); ++row) {
    const std::string& text = project.messages.cell(row, kMessageTextColumn);
    if (text.size() == 1) warnSingleCharacter(env, row);
    image += optionLetter(project.messages, row);
    image += toGsm(text);
    image += kPad;
    if (smallModule && CheckTextMemory(image, env)) return {{}, 1};
  }

  image += kAckRequestRecord;
  image += project.ack.first;
  image += kAckRequestSeparator;
  image += project.ack.second;
  image += kPad;
  if (CheckTextMemory(image, env)) return {{}, 1};

  for (int row = 1; row <= project.filters.rows(); ++row) {
    image += project.filters.cell(row, kFilterTextColumn);
    image += kPad;
    // Unlike the two refusals above, an overflow among the filters hands over an empty image
    // that the transfer window then reports as "nothing to transfer".
    if (smallModule && CheckTextMemory(image, env)) return {{}, 0};
  }

  image += kEndOfImage;
  return {image, 0};
}

SendTexts splitSendText(const std::string& image) {
  if (image.size() <= kSendTextCapacity) return {image, {}};
  return {image.substr(0, kSendTextCapacity), image.substr(kSendTextCapacity)};
}

}  // namespace quillon
