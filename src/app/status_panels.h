#pragma once
// The main window's status bar `sbrStatus` as a StatusDisplay, in two lines. The first: panel 1
// the port status with its open/closed picture, panel 2 the transfer status, the text-memory
// gauge and panel 4 the clock. The second: panel 3, the outcome of the last transfer, which gets
// the whole width because a port failure names the device that was tried.

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <string>

#include "project/user_dialog.h"

namespace quillon::app {

class StatusPanels : public StatusDisplay {
 public:
  explicit StatusPanels(QStatusBar* bar);

  // Texts are Windows-1252. A port text ending in " active" (not " not active") shows the picture
  // of an open port.
  void setStatus(StatusPanel panel, const std::string& text) override;
  [[nodiscard]] QString text(StatusPanel panel) const;
  // How much of the module's text memory the current project would take.
  void setTextMemory(int used, int capacity, const QString& toolTip);
  [[nodiscard]] QProgressBar* gauge() const { return m_gauge; }

 private:
  [[nodiscard]] QLabel* label(StatusPanel panel) const;
  QLabel* m_portPicture;
  QLabel* m_port;
  QLabel* m_transfer;
  QLabel* m_lastTransfer;
  QProgressBar* m_gauge;
  QLabel* m_clock;
};

}  // namespace quillon::app
