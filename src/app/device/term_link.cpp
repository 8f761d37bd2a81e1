#include "app/device/term_link.h"

#include "link/transfer_messages.h"

namespace quillon::app::device {

TermLink::TermLink(SerialLink& serial, UserDialog& dialog, std::function<void()> loading)
    : m_serial(serial), m_dialog(dialog), m_loading(std::move(loading)) {}

void TermLink::load() {
  if (m_loaded) return;
  m_loaded = true;
  if (m_loading) m_loading();
  if (m_serial.configurePort() != 0) {
    m_dialog.tell(kTerminalTitle, TransferMessages(m_language)[kMsgChoosePort],
                  BoxIcon::Exclamation);
  }
}

int TermLink::openLinkPort() {
  load();
  return m_serial.openLinkPort();
}

void TermLink::closeLinkPort() { m_serial.closeLinkPort(); }

void TermLink::startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) {
  load();
  m_serial.startTransfer(job, [this, done = std::move(done)](TransferOutcome outcome) {
    // The window unloads when its transfer ends; the next port operation loads it afresh.
    m_loaded = false;
    done(std::move(outcome));
  });
}

std::string TermLink::portStatusText() const { return m_serial.portStatusText(); }

}  // namespace quillon::app::device
