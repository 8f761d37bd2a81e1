#include "app/text_memory.h"

#include <cstddef>

namespace quillon::app {

// Until the image builder is linked in, the length is summed the way the image is laid out:
// header "A;" + separator, per message an option letter, the text (the GSM substitution keeps
// lengths) and a separator, the "Q" record, per filter the text and a separator, the end mark.
int messagesImageLength(const Project& project, const UiTexts& /*texts*/) {
  std::size_t length = 3;
  for (int row = 1; row <= project.messages.rows(); ++row) {
    length += 2 + project.messages.cell(row, kMessageTextColumn).size();
  }
  length += 3 + project.ack.first.size() + project.ack.second.size();
  for (int row = 1; row <= project.filters.rows(); ++row) {
    length += 1 + project.filters.cell(row, kFilterTextColumn).size();
  }
  length += 1;
  return static_cast<int>(length);
}

}  // namespace quillon::app
