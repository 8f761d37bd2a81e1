#include "link/sign_in.h"

#include "link/transfer_presenter.h"

namespace quillon {

bool TransferAwaiter::await_suspend(std::coroutine_handle<> waiting) {
  m_waiting = waiting;
  m_starting = true;
  m_port.startTransfer(m_job, [this](TransferOutcome outcome) {
    m_outcome = std::move(outcome);
    m_ended = true;
    if (!m_starting) m_waiting.resume();
  });
  m_starting = false;
  // A transfer that ended before startTransfer returned goes on without suspending.
  return !m_ended;
}

int ResultOf(TransferStatus status) {
  switch (status) {
    case TransferStatus::Active:
      return kResultOk;
    case TransferStatus::Cancel:
      return kResultCancelled;
    case TransferStatus::Timeout:
      return kResultTimeout;
    case TransferStatus::NoConnection:
      return kResultNoConnection;
    case TransferStatus::NoResponse:
      return kResultNoResponse;
    case TransferStatus::VersionConflict:
      return kResultVersionConflict;
  }
  return kResultOk;
}

Task<TransferStatus> ReadIdentity(LinkContext& context) {
  DeviceIdentity& identity = context.session.identity;
  identity = DeviceIdentity{};
  context.status.setStatus(StatusPanel::Transfer, "Version lesen ...");

  TransferJob job;
  job.direction = TransferDirection::Upload;
  job.contentLabel = kLabelVersion;
  job.requestLetter = 'v';
  const TransferOutcome outcome = co_await RunTransfer(context.port, job);
  context.status.setStatus(StatusPanel::Transfer, StatusTitle(outcome.status, job.direction));
  if (outcome.status != TransferStatus::Active) co_return outcome.status;

  context.session.identityRead = true;
  context.status.setStatus(StatusPanel::Transfer, " Version-Lesen erfolgreich");
  // A refused request leaves the reply empty; decoding it then reports the wrong device.
  const int conflicts = DecodeIdentity(receivedDataText(outcome), identity, context.limits,
                                       context.session.expectedPhoneCount, context.dialog);
  co_return conflicts != 0 ? TransferStatus::VersionConflict : outcome.status;
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

Task<int> SignIn(LinkContext& context, TransferJob job, TransferOutcome& outcome) {
  if (const int opened = OpenAndConfirmReady(context); opened != kResultOk) co_return opened;

  if (!context.session.identityRead) {
    const TransferStatus left = co_await ReadIdentity(context);
    // A module that does not answer the version request still gets the job.
    if (left != TransferStatus::Active && left != TransferStatus::NoResponse) {
      // The job never ran: what the caller reads back is the identity query's ending.
      outcome = TransferOutcome{};
      outcome.status = left;
      co_return ResultOf(left);
    }
  }

  context.status.setStatus(StatusPanel::Transfer,
                           StatusTitle(TransferStatus::Active, job.direction));
  outcome = co_await RunTransfer(context.port, job);
  const int result = ResultOf(outcome.status);
  if (result == kResultOk) {
    context.status.setStatus(StatusPanel::Transfer, "OK");
    context.status.setStatus(StatusPanel::Port, context.port.portStatusText());
  }
  co_return result;
}

}  // namespace quillon
