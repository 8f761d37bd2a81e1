#pragma once
// The port as the transfer procedures reach it: through the transfer window. Loading the window
// (the first port operation after a transfer has ended) runs ConfigurePort, which sets the
// literal line settings "9600, N ,8 ,1" whatever the settings dialog chose, and tells the user
// to choose the proper port when it cannot be opened.

#include <functional>

#include "link/qt/serial_link.h"
#include "link/sign_in.h"

namespace quillon::app::device {

class TermLink : public LinkPort {
 public:
  // `loading` runs before ConfigurePort each time the window loads (the port and the engine
  // settings are brought up to date there); `language` chooses the text of the port message.
  TermLink(SerialLink& serial, UserDialog& dialog, std::function<void()> loading);

  void setLanguage(int language) { m_language = language; }

  [[nodiscard]] int openLinkPort() override;
  void closeLinkPort() override;
  void startTransfer(const TransferJob& job, std::function<void(TransferOutcome)> done) override;
  [[nodiscard]] std::string portStatusText() const override;

 private:
  void load();

  SerialLink& m_serial;
  UserDialog& m_dialog;
  std::function<void()> m_loading;
  int m_language = 0;
  bool m_loaded = false;
};

}  // namespace quillon::app::device
