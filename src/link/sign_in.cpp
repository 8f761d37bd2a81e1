#include "link/sign_in.h"

namespace quillon {

namespace {

bool ended(const std::string& title) {
  return title == kStatusTimeout || title == kStatusCancel || title == kStatusNoConnection ||
         title == kStatusNoResponse;
}

}  // namespace

int TransferResultForTitle(const std::string& title) {
  if (title == kStatusCancel) return kResultCancelled;
  if (title == kStatusTimeout) return kResultTimeout;
  if (title == kStatusNoConnection) return kResultNoConnection;
  if (title == kStatusNoResponse) return kResultNoResponse;
  return kResultOk;
}

std::string ReadIdentity(LinkContext& context) {
  DeviceIdentity& identity = context.session.identity;
  identity = DeviceIdentity{};
  context.status.setStatus(StatusPanel::Transfer, "Version lesen ...");

  TransferJob job;
  job.title = kUploadActive;
  job.contentLabel = kLabelVersion;
  job.requestLetter = 'v';
  const TransferOutcome outcome = context.port.runTransfer(job);
  context.status.setStatus(StatusPanel::Transfer, outcome.title);
  if (ended(outcome.title)) return outcome.title;

  context.session.identityRead = true;
  if (outcome.title == kStatusVersionConflict) return outcome.title;
  context.status.setStatus(StatusPanel::Transfer, " Version-Lesen erfolgreich");
  // A refused request leaves the reply empty; decoding it then reports the wrong device.
  const int conflicts = DecodeIdentity(receivedDataText(outcome), identity, context.limits,
                                       context.session.expectedPhoneCount, context.dialog);
  return conflicts != 0 ? kStatusVersionConflict : outcome.title;
}

int OpenAndConfirmReady(LinkContext& context) {
  if (context.port.openLinkPort() != 0) return kResultPortNotOpened;
  if (!context.session.readyConfirmed) {
    const BoxAnswer answer = context.dialog.ask(
        Box{kMainTitle, kReadyQuestion, BoxIcon::Question, BoxButtons::OkCancel, BoxAnswer::Ok});
    if (answer != BoxAnswer::Ok) {
      // Nothing follows, so the port is not kept busy.
      context.port.closeLinkPort();
      return kResultDeclined;
    }
    context.session.readyConfirmed = true;
  }
  return kResultOk;
}

int SignIn(LinkContext& context, const TransferJob& job, TransferOutcome& outcome) {
  if (const int opened = OpenAndConfirmReady(context); opened != kResultOk) return opened;

  if (!context.session.identityRead) {
    const std::string left = ReadIdentity(context);
    int result = kResultOk;
    if (left == kStatusCancel) result = kResultCancelled;
    if (left == kStatusTimeout) result = kResultTimeout;
    if (left == kStatusNoConnection) result = kResultNoConnection;
    if (left == kStatusVersionConflict) result = kResultVersionConflict;
    if (result != kResultOk) {
      // The job never ran: what the caller reads back is the identity query's ending.
      outcome = TransferOutcome{};
      outcome.title = left;
      return result;
    }
  }

  context.status.setStatus(StatusPanel::Transfer, job.title);
  outcome = context.port.runTransfer(job);
  const int result = TransferResultForTitle(outcome.title);
  if (result == kResultOk) {
    context.status.setStatus(StatusPanel::Transfer, "OK");
    context.status.setStatus(StatusPanel::Port, context.port.portStatusText());
  }
  return result;
}

}  // namespace quillon
