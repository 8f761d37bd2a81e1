#include "transfer/download.h"

#include <string>

#include "text/ui_text_slots.h"
#include "transfer/field_text.h"

namespace quillon {

namespace {

inline constexpr const char* kDownloadingPin = " Download ...";
inline constexpr const char* kDownloading = "Download ...";

void finishDownload(TransferContext& context, int result) {
  if (result == kResultOk) {
    context.setTransferStatus(context.texts[slot::kDownloadSuccessful]);
    return;
  }
  context.setTransferStatus(context.texts[slot::kErrorWhileDownloading]);
  // Show which module answered, after the status text is set.
  if (result == kResultVersionConflict) context.showIdentification();
}

void transfer(TransferContext& context, const TransferJob& job, int& result) {
  TransferOutcome outcome;
  result = SignIn(context.link, job, outcome);
  finishDownload(context, result);
}

}  // namespace

void WriteP(TransferContext& context, int& result) {
  const std::string pin = context.project.pin;
  if (pinRefused(pin)) {
    context.dialog().tell(kSettingsTitle, context.texts[slot::kPinRefused], BoxIcon::Exclamation);
    return;
  }
  context.setTransferStatus(kDownloadingPin);
  transfer(context,
           downloadJob(kKindConfiguration, kLabelConfiguration, configurationImage(pin),
                       context.identifierDigits),
           result);
}

void DownloadMessages(TransferContext& context, int& result) {
  context.setTransferStatus(context.texts[slot::kDownloadMessagesStatus]);
  ImageEnv env = context.imageEnv();
  const MessagesImage built = DoMeldSend(context.project, env);
  if (built.failed != 0) return;
  transfer(context,
           downloadJob(kKindMessages, kLabelMessages, built.image, context.identifierDigits),
           result);
  context.processEvents();
}

void WriteT(TransferContext& context, int& result) {
  ImageEnv env = context.imageEnv();
  const int reported =
      static_cast<int>(field::leadingNumber(context.link.session.identity.phoneCount));
  const std::string image = DoTelSend(context.project, env, reported);
  context.setTransferStatus(context.texts[slot::kDownloadPhonesStatus]);
  transfer(context,
           downloadJob(kKindPhoneNumbers, kLabelPhoneNumbers, image, context.identifierDigits),
           result);
  context.processEvents();
}

void WriteEasy800(TransferContext& context, int& result) {
  context.setTransferStatus(kDownloading);
  transfer(context,
           downloadJob(kKindControllerData, kLabelControllerData,
                       controllerDataImage(context.project.flags), context.identifierDigits),
           result);
}

void DownloadAll(TransferContext& context, int& result) {
  // A refused build leaves the result at 0, so the later steps still run.
  DownloadMessages(context, result);
  if (result < 1) WriteT(context, result);
  if (result < 1) WriteP(context, result);
  if (result < 1) WriteEasy800(context, result);
}

}  // namespace quillon
