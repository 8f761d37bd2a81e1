#include "transfer/upload.h"

#include <string>

#include "text/ui_text_slots.h"
#include "transfer/image_parse.h"

namespace quillon {

namespace {

inline constexpr const char* kConfigurationFragments =
    "An error occurred while reading. Should be still processed the data fragments?";

Box fragmentsQuestion(std::string title, std::string text) {
  return Box{std::move(title), std::move(text), BoxIcon::Critical, BoxButtons::YesNo,
             BoxAnswer::No};
}

Box languageFragmentsQuestion(const TransferContext& context, std::string title) {
  return fragmentsQuestion(std::move(title), context.texts[slot::kErrorDuringReading] + '\r' +
                                                 context.texts[slot::kDataFragmentsQuestion]);
}

Task<int> readKind(TransferContext& context, char request, const char* label,
                   TransferOutcome& outcome) {
  co_return co_await SignIn(context.link, uploadJob(request, label), outcome);
}

Task<> messagesBody(TransferContext& context, int& result) {
  context.setTransferStatus(context.texts[slot::kReadMessagesStatus]);
  TransferOutcome outcome;
  result = co_await readKind(context, kRequestMessages, kLabelMessages, outcome);
  if (!acceptUploadResult(context, result, context.texts[slot::kNoConnection],
                          languageFragmentsQuestion(context, kMainTitle)))
    co_return;
  ImageEnv env = context.imageEnv();
  const MessagesParse parsed = parseMessages(receivedData(outcome), context.project, env);
  if (result != kResultOk) {
    context.setTransferStatus(context.texts[slot::kTextUploadFaulty]);
  } else if (parsed.endMarkSeen && !parsed.malformed) {
    context.setTransferStatus(context.texts[slot::kTextUploadCorrect]);
  } else {
    context.setTransferStatus(context.texts[slot::kTextUploadIncomplete]);
  }
}

Task<> phonesBody(TransferContext& context, int& result) {
  context.setTransferStatus(context.texts[slot::kReadPhonesStatus]);
  TransferOutcome outcome;
  result = co_await readKind(context, kRequestPhoneNumbers, kLabelPhoneNumbers, outcome);
  if (!acceptUploadResult(context, result, context.texts[slot::kNoConnection],
                          languageFragmentsQuestion(context, kMainTitle)))
    co_return;
  ImageEnv env = context.imageEnv();
  parsePhoneNumbers(receivedDataText(outcome), context.project, env);
}

Task<> configurationBody(TransferContext& context, int& result) {
  context.setTransferStatus(context.texts[slot::kReadingAddressPin]);
  TransferOutcome outcome;
  result = co_await readKind(context, kRequestConfiguration, kLabelConfiguration, outcome);
  if (!acceptUploadResult(context, result, context.texts[slot::kNoConnection],
                          fragmentsQuestion(kOptionModuleTitle, kConfigurationFragments))) {
    co_return;
  }
  ImageEnv env = context.imageEnv();
  parseConfiguration(receivedDataText(outcome), context.project, env);
  // Deliberately the explanation of the receive and send area, not the success text.
  context.setTransferStatus(context.texts[slot::kSlInSlOutExplanation]);
}

Task<> controllerDataBody(TransferContext& context, int& result) {
  TransferOutcome outcome;
  result = co_await readKind(context, kRequestControllerData, kLabelControllerData, outcome);
  if (!acceptUploadResult(context, result, context.texts[slot::kNoConnection],
                          languageFragmentsQuestion(context, kOptionModuleTitle))) {
    co_return;
  }
  ImageEnv env = context.imageEnv();
  parseControllerData(receivedDataText(outcome), context.project.flags, env);
  if (result == kResultOk) {
    context.link.status.setStatus(StatusPanel::Port, context.link.port.portStatusText());
  }
}

}  // namespace

void askSaveBeforeReading(TransferContext& context) {
  if (!context.project.changed) return;
  const BoxAnswer answer =
      context.dialog().ask(Box{kMainTitle, context.texts[slot::kDataChangedSave],
                               BoxIcon::Exclamation, BoxButtons::YesNo, BoxAnswer::Yes});
  if (answer != BoxAnswer::Yes) return;
  if (context.hooks.saveProjectAs) context.hooks.saveProjectAs();
  context.project.changed = false;
}

bool acceptUploadResult(TransferContext& context, int result, const std::string& noConnectionText,
                        const Box& fragmentsQuestion) {
  switch (result) {
    case kResultOk:
      return true;
    case kResultPortNotOpened:
    case kResultDeclined:
      context.dialog().tell(kMainTitle, noConnectionText, BoxIcon::Critical);
      return false;
    case kResultVersionConflict:
      context.showIdentification();
      return false;
    case kResultCancelled:
    case kResultTimeout:
    case kResultNoConnection:
    case kResultNoResponse:
      return context.dialog().ask(fragmentsQuestion) == BoxAnswer::Yes;
    default:
      return false;
  }
}

Task<> UploadMessages(TransferContext& context, int& result) {
  askSaveBeforeReading(context);
  co_await messagesBody(context, result);
}

Task<> UploadPhoneNumbers(TransferContext& context, int& result) {
  askSaveBeforeReading(context);
  co_await phonesBody(context, result);
}

Task<> ReadP(TransferContext& context, int& result) {
  askSaveBeforeReading(context);
  co_await configurationBody(context, result);
}

Task<> ReadEasy800(TransferContext& context, int& result) {
  askSaveBeforeReading(context);
  co_await controllerDataBody(context, result);
}

Task<> ReadAll(TransferContext& context, int& result) {
  askSaveBeforeReading(context);
  co_await messagesBody(context, result);
  if (result == kResultOk) co_await phonesBody(context, result);
  if (result == kResultOk) co_await configurationBody(context, result);
  if (result == kResultOk) co_await controllerDataBody(context, result);
}

}  // namespace quillon
