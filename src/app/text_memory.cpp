#include "app/text_memory.h"

#include <limits>

#include "transfer/data_image.h"

namespace quillon::app {

int messagesImageLength(const Project& project, const UiTexts& texts) {
  // Without a memory limit the image is built whole, however far it overruns the module. Its
  // notes are those of a real download and are not shown here.
  ModuleLimits unlimited;
  unlimited.textMemory = std::numeric_limits<int>::max();
  return static_cast<int>(DoMeldSend(project, texts, unlimited).image.size());
}

}  // namespace quillon::app
