// libFuzzer target of the project-file loader: any bytes must load without a crash, a hang or a
// sanitizer report and leave a consistent project. Saving and loading again must settle within a
// few rounds: only the phone-number check may still change a saved file (a cleaned number can
// start with a character the next check drops, or become too short), and only a little each time.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "project/number_text.h"
#include "project/project_file.h"

namespace {

class CountingDialog : public quillon::UserDialog {
 public:
  quillon::BoxAnswer ask(const quillon::Box& box) override {
    ++count;
    return box.defaultAnswer;
  }
  int count = 0;
};

void require(bool condition) {
  if (!condition) std::abort();
}

void requireConsistent(const quillon::Project& project) {
  require(project.messages.rows() == 100 && project.messages.columns() == 5);
  require(project.filters.rows() == quillon::kFilterRows && project.filters.columns() == 2);
  require(project.phones.rows() == 60 && project.phones.columns() == 2);
  for (int flag = 1; flag <= quillon::kFlagCount; ++flag) {
    const auto index = static_cast<std::size_t>(flag);
    require(project.flags.used[index] == (quillon::NumericValue(project.flags.entries[index]) > 0));
  }
  require(!project.changed);
}

const quillon::UiTexts& texts() {
  static const quillon::UiTexts kTexts = [] {
    quillon::UiTexts filled;
    filled.fill(quillon::kEnglish);
    return filled;
  }();
  return kTexts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const quillon::ProgramVersion version{1, 2, 3};

  CountingDialog dialog;
  quillon::Project project;
  quillon::ProjectFileLoadBytes(bytes, project, texts(), dialog);
  requireConsistent(project);
  std::string saved = quillon::ProjectFileBytes(project, dialog, version);

  constexpr int kRoundsToSettle = 3;
  for (int round = 0;; ++round) {
    require(round < kRoundsToSettle);
    quillon::Project again;
    quillon::ProjectFileLoadBytes(saved, again, texts(), dialog);
    requireConsistent(again);
    std::string savedAgain = quillon::ProjectFileBytes(again, dialog, version);
    if (savedAgain == saved) break;
    saved = std::move(savedAgain);
  }
  return 0;
}
