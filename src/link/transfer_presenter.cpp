#include "link/transfer_presenter.h"

#include <utility>

namespace quillon {

namespace {

using Kind = TransferEvent::Kind;

TransferEvent event(Kind kind, std::string text = {}, std::string text2 = {}, int value = 0) {
  return TransferEvent{kind, std::move(text), std::move(text2), value, Box{}};
}

// The checksum display of the window shows only the first two characters of the unpadded
// hexadecimal digits followed by "0": 0xA shows as "A0", 0xAB as "AB".
std::string checksumDisplay(std::uint8_t sum) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string hex;
  if (sum >= 16) hex += kDigits[sum >> 4];
  hex += kDigits[sum & 0x0F];
  return (hex + "0").substr(0, 2);
}

std::string replyText(char last) {
  if (last == kAck) return "[ACK]";
  if (last == kNak) return "[nak]";
  return "[" + std::string(1, last) + "]";
}

const char* trafficPrefix(TrafficKind kind) {
  switch (kind) {
    case TrafficKind::Write:
      return "WRITE: ";
    case TrafficKind::Read:
      return "READ: ";
    case TrafficKind::Block:
      return "LESEN: ";
    case TrafficKind::BlockAnswer:
      return "SCHREIBEN: ";
  }
  return "";
}

template <typename... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

std::string StatusTitle(TransferStatus status, TransferDirection direction) {
  switch (status) {
    case TransferStatus::Active:
      return direction == TransferDirection::Download ? "Download active" : "Upload active";
    case TransferStatus::Cancel:
      return "Cancel";
    case TransferStatus::Timeout:
      return "Timeout";
    case TransferStatus::NoConnection:
      return "No connection";
    case TransferStatus::NoResponse:
      return "No response";
    case TransferStatus::VersionConflict:
      return "Version conflict";
  }
  return {};
}

std::string StateText(WindowState state) {
  switch (state) {
    case WindowState::SigningIn:
      return "Sign in ...";
    case WindowState::PortOpen:
      return "Com open";
    case WindowState::StartIdentifier:
      return "Start identifier ...";
    case WindowState::SendingBlocks:
      return "Sending data block by block...";
    case WindowState::Cancel:
      return "Cancel";
    case WindowState::NoConnection:
      return "No connection";
    case WindowState::Denied:
      return "Denied";
    case WindowState::Done:
      return "done";
    case WindowState::ReadingData:
      return " Reading Data ...";
    case WindowState::ReadingBlocks:
      return "Reading data block by block...";
  }
  return {};
}

TransferPresenter::TransferPresenter(TransferJob job, int language)
    : m_job(std::move(job)), m_messages(language) {}

Box TransferPresenter::failureBox(TransferFailure failure) const {
  switch (failure) {
    case TransferFailure::NotReady:
      return Box{kTerminalTitle, m_messages[kMsgNotReady]};
    case TransferFailure::Aborted:
      return Box{kTerminalTitle, m_messages[kMsgAborted]};
    case TransferFailure::InterfaceNotActive:
      return Box{kTerminalTitle, m_messages[kMsgInterfaceNotActive]};
    case TransferFailure::PortError:
      return Box{kTerminalTitle, "Error " + m_portErrorText};
    case TransferFailure::SendRefused:
      return Box{kTerminalTitle, "Option <" + m_job.contentLabel + m_messages[kMsgNotImplemented]};
    case TransferFailure::NoData:
      return Box{kTerminalTitle, m_messages[kMsgNoData]};
    case TransferFailure::NoFinalConfirmation:
      return Box{kTerminalTitle, m_messages[kMsgNoFinalConfirmation], BoxIcon::Exclamation};
    case TransferFailure::FiveTrials:
      return Box{kTerminalTitle, m_messages[kMsgFiveTrials], BoxIcon::Critical};
    case TransferFailure::RequestRefused:
      // This text is German in every language.
      return Box{kTerminalTitle, "Option <" + m_job.contentLabel + "> ist nicht implementiert"};
    case TransferFailure::WaitTimedOut:
      // The wait's own box carries no title of the window; the front end puts its own name.
      return Box{"", "Timeout"};
  }
  return {};
}

TransferEvent TransferPresenter::present(const EngineEvent& engineEvent) const {
  namespace e = engine_event;
  return std::visit(
      Overloaded{
          [](const e::StateChanged& x) { return event(Kind::Comment, StateText(x.state)); },
          [](const e::Progress& x) { return event(Kind::Progress, {}, {}, x.percent); },
          [](const e::BlockSent& x) {
            return event(Kind::Block, x.data, checksumDisplay(x.checksum));
          },
          [](const e::Reply& x) { return event(Kind::Reply, replyText(x.last)); },
          [](const e::Received& x) { return event(Kind::Received, x.data, {}, x.box); },
          [](const e::Count& x) { return event(Kind::Count, {}, {}, static_cast<int>(x.count)); },
          [this](const e::StatusChanged& x) {
            return event(Kind::Title, StatusTitle(x.status, m_job.direction));
          },
          [this](const e::Failure& x) {
            TransferEvent box = event(Kind::Box);
            box.box = failureBox(x.failure);
            return box;
          },
          [](const e::Traffic& x) { return event(Kind::Log, x.bytes, trafficPrefix(x.kind)); },
          [](const e::Busy& x) { return event(Kind::Busy, {}, {}, x.on ? 1 : 0); },
          [](const e::Finished&) { return event(Kind::Finished); },
          [this](const e::Completed&) {
            return event(Kind::StatusText, m_messages[kMsgDownloadDone]);
          },
          [](const e::BlockRead& x) { return event(Kind::BlockRead, x.data, x.checksum); },
      },
      engineEvent);
}

std::vector<TransferEvent> TransferPresenter::present(
    const std::vector<EngineEvent>& events) const {
  std::vector<TransferEvent> shown;
  shown.reserve(events.size());
  for (const EngineEvent& e : events) shown.push_back(present(e));
  return shown;
}

}  // namespace quillon
