#include <optional>
#include <string>
#include <utility>

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

Box singleCharacterWarning(const UiTexts& texts, int row) {
  return Box{kMainTitle, texts[slot::kMessagePerLine] + SignedDecimal(row - 1) +
                             texts[slot::kOnlyOneCharacter]};
}

}  // namespace

std::optional<Box> CheckTextMemory(const std::string& image, const UiTexts& texts,
                                   const ModuleLimits& limits) {
  if (image.size() == 1 && image.front() == wire::kEndMark) return std::nullopt;
  if (image.size() <= static_cast<std::size_t>(limits.textMemory)) return std::nullopt;
  return Box{kMainTitle, texts[slot::kTooMuchText] + kLineBreak + texts[slot::kLimitYourText],
             BoxIcon::Critical};
}

MessagesImage DoMeldSend(const Project& project, const UiTexts& texts, const ModuleLimits& limits) {
  ImageNotes notes{PanelText{texts[slot::kPackingMessages]}};
  // Ends the build with the text memory's refusal as its last note.
  const auto refusedBy = [&notes](Box refusal, int failed) {
    notes.emplace_back(std::move(refusal));
    return MessagesImage{{}, failed, std::move(notes)};
  };
  const bool smallModule = limits.lastMessageIndex == kSmallModuleLastIndex;

  std::string image = kMessagesHeader;
  image += wire::kPad;
  for (int row = 1; row <= project.messages.rows(); ++row) {
    const std::string& text = project.messages.cell(row, kMessageTextColumn);
    if (text.size() == 1) notes.emplace_back(singleCharacterWarning(texts, row));
    image += optionLetter(project.messages, row);
    image += toGsm(text);
    image += wire::kPad;
    if (smallModule) {
      if (auto refusal = CheckTextMemory(image, texts, limits)) {
        return refusedBy(std::move(*refusal), 1);
      }
    }
  }

  image += kAckRequestRecord;
  image += project.ack.first;
  image += kAckRequestSeparator;
  image += project.ack.second;
  image += wire::kPad;
  if (auto refusal = CheckTextMemory(image, texts, limits))
    return refusedBy(std::move(*refusal), 1);

  for (int row = 1; row <= project.filters.rows(); ++row) {
    image += project.filters.cell(row, kFilterTextColumn);
    image += wire::kPad;
    // Unlike the two refusals above, an overflow among the filters hands over an empty image
    // that the transfer window then reports as "nothing to transfer".
    if (smallModule) {
      if (auto refusal = CheckTextMemory(image, texts, limits)) {
        return refusedBy(std::move(*refusal), 0);
      }
    }
  }

  image += wire::kEndMark;
  return {image, 0, std::move(notes)};
}

SendTexts splitSendText(const std::string& image) {
  if (image.size() <= kSendTextCapacity) return {image, {}};
  return {image.substr(0, kSendTextCapacity), image.substr(kSendTextCapacity)};
}

}  // namespace quillon
