#include "app/status_panels.h"

#include <algorithm>

#include "app/icons.h"
#include "app/qt_text.h"

namespace quillon::app {

StatusPanels::StatusPanels(QStatusBar* bar)
    : m_portPicture(new QLabel(bar)),
      m_port(new QLabel(bar)),
      m_transfer(new QLabel(bar)),
      m_gauge(new QProgressBar(bar)),
      m_clock(new QLabel(bar)) {
  bar->setObjectName("sbrStatus");
  m_portPicture->setObjectName("sbrStatusPicture");
  m_port->setObjectName("sbrStatusPanel1");
  m_transfer->setObjectName("sbrStatusPanel2");
  m_gauge->setObjectName("sbrStatusGauge");
  m_clock->setObjectName("sbrStatusPanel4");
  m_portPicture->setPixmap(portPicture(false));
  m_gauge->setTextVisible(true);
  m_gauge->setMaximumWidth(220);
  m_gauge->setMinimumWidth(160);
  m_clock->setMinimumWidth(m_clock->fontMetrics().horizontalAdvance("00.00.0000   00:00:00 "));
  bar->addWidget(m_portPicture);
  bar->addWidget(m_port);
  bar->addWidget(m_transfer, 1);
  bar->addPermanentWidget(m_gauge);
  bar->addPermanentWidget(m_clock);
}

QLabel* StatusPanels::label(StatusPanel panel) const {
  switch (panel) {
    case StatusPanel::Port:
      return m_port;
    case StatusPanel::Transfer:
      return m_transfer;
    case StatusPanel::Clock:
      return m_clock;
  }
  return m_transfer;
}

void StatusPanels::setStatus(StatusPanel panel, const std::string& text) {
  const QString shown = toQString(text);
  label(panel)->setText(shown);
  if (panel == StatusPanel::Port) {
    const bool open = shown.endsWith(" active") && !shown.endsWith(" not active");
    m_portPicture->setPixmap(portPicture(open));
  }
}

QString StatusPanels::text(StatusPanel panel) const { return label(panel)->text(); }

void StatusPanels::setTextMemory(int used, int capacity, const QString& toolTip) {
  m_gauge->setRange(0, capacity);
  m_gauge->setValue(std::min(used, capacity));
  m_gauge->setFormat(QStringLiteral("%1 / %2").arg(used).arg(capacity));
  m_gauge->setToolTip(toolTip);
  // Past the capacity the download would be refused: show it before the user tries.
  m_gauge->setStyleSheet(used > capacity ? "QProgressBar::chunk { background: #c83737; }" : "");
}

}  // namespace quillon::app
