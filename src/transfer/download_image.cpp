#include "text/ui_text_slots.h"
#include "transfer/data_image.h"

namespace quillon {

DownloadImage buildDownloadImage(char kind, Project& project, ImageEnv& env,
                                 int reportedPhoneCount) {
  switch (kind) {
    case kKindMessages: {
      MessagesImage built = DoMeldSend(project, env);
      return {std::move(built.image), built.failed != 0};
    }
    case kKindPhoneNumbers:
      return {DoTelSend(project, env, reportedPhoneCount), false};
    case kKindConfiguration:
      if (pinRefused(project.pin)) {
        env.dialog.tell(kSettingsTitle, env.texts[slot::kPinRefused], BoxIcon::Exclamation);
        return {{}, true};
      }
      return {configurationImage(project.pin), false};
    case kKindControllerData:
      return {controllerDataImage(project.flags), false};
    default:
      return {{}, true};
  }
}

}  // namespace quillon
