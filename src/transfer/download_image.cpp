#include "text/ui_text_slots.h"
#include "transfer/data_image.h"

namespace quillon {

DownloadImage buildDownloadImage(char kind, Project& project, const UiTexts& texts,
                                 const ModuleLimits& limits, int reportedPhoneCount) {
  switch (kind) {
    case kKindMessages: {
      MessagesImage built = DoMeldSend(project, texts, limits);
      return {std::move(built.image), built.failed != 0, std::move(built.notes)};
    }
    case kKindPhoneNumbers: {
      PhoneImage built = DoTelSend(project, texts, limits, reportedPhoneCount);
      return {std::move(built.image), false, std::move(built.notes)};
    }
    case kKindConfiguration:
      if (pinRefused(project.pin)) {
        return {{}, true, {Box{kSettingsTitle, texts[slot::kPinRefused], BoxIcon::Exclamation}}};
      }
      return {configurationImage(project.pin), false, {}};
    case kKindControllerData:
      return {controllerDataImage(project.flags), false, {}};
    default:
      return {{}, true, {}};
  }
}

DownloadImage buildDownloadImage(char kind, Project& project, ImageEnv& env,
                                 int reportedPhoneCount) {
  DownloadImage built =
      buildDownloadImage(kind, project, env.texts, env.limits, reportedPhoneCount);
  showImageNotes(built.notes, env.dialog, env.status);
  return built;
}

}  // namespace quillon
