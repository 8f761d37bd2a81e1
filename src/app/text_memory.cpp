#include "app/text_memory.h"

#include <limits>

#include "transfer/data_image.h"

namespace quillon::app {
namespace {

// Measuring must not show the warnings and status texts of a real download.
class Silent : public UserDialog, public StatusDisplay {
 public:
  BoxAnswer ask(const Box& box) override { return box.defaultAnswer; }
  void setStatus(StatusPanel, const std::string&) override {}
};

}  // namespace

int messagesImageLength(const Project& project, const UiTexts& texts) {
  Silent silent;
  // Without a memory limit the image is built whole, however far it overruns the module.
  ModuleLimits unlimited;
  unlimited.textMemory = std::numeric_limits<int>::max();
  ImageEnv env{silent, silent, texts, unlimited};
  return static_cast<int>(DoMeldSend(project, env).image.size());
}

}  // namespace quillon::app
