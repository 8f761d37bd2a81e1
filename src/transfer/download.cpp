#include "transfer/download.h"
#include "project/number_text.h"

#include <string>

#include "text/ui_text_slots.h"

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

// Builds the image of `kind` and, unless the build refused it, shows `statusAfterBuild` (when
// not empty), sends the image and reports the result. Nothing is sent when the build refuses.
Task<> buildAndSend(TransferContext& context, char kind, const char* label,
                    std::string statusAfterBuild, int& result) {
  ImageEnv env = context.imageEnv();
  const int reported = static_cast<int>(NumericValue(context.link.session.identity.phoneCount));
  const DownloadImage built =
      buildDownloadImage(kind, context.project, env.texts, env.limits, reported);
  showImageNotes(built.notes, env.dialog, env.status);
  if (built.refused) co_return;
  if (!statusAfterBuild.empty()) context.setTransferStatus(statusAfterBuild);
  TransferOutcome outcome;
  result = co_await SignIn(
      context.link, downloadJob(kind, label, built.image, context.identifierDigits), outcome);
  finishDownload(context, result);
}

}  // namespace

Task<> WriteP(TransferContext& context, int& result) {
  co_await buildAndSend(context, kKindConfiguration, kLabelConfiguration, kDownloadingPin, result);
}

Task<> DownloadMessages(TransferContext& context, int& result) {
  context.setTransferStatus(context.texts[slot::kDownloadMessagesStatus]);
  co_await buildAndSend(context, kKindMessages, kLabelMessages, {}, result);
}

Task<> WriteT(TransferContext& context, int& result) {
  co_await buildAndSend(context, kKindPhoneNumbers, kLabelPhoneNumbers,
                        context.texts[slot::kDownloadPhonesStatus], result);
}

Task<> WriteEasy800(TransferContext& context, int& result) {
  context.setTransferStatus(kDownloading);
  co_await buildAndSend(context, kKindControllerData, kLabelControllerData, {}, result);
}

Task<> DownloadAll(TransferContext& context, int& result) {
  // A refused build leaves the result at 0, so the later steps still run.
  co_await DownloadMessages(context, result);
  if (result < 1) co_await WriteT(context, result);
  if (result < 1) co_await WriteP(context, result);
  if (result < 1) co_await WriteEasy800(context, result);
}

}  // namespace quillon
