#include "app/status_panels.h"

#include <QGridLayout>
#include <algorithm>

#include "app/icons.h"
#include "app/qt_text.h"

namespace quillon::app {

StatusPanels::StatusPanels(QStatusBar* bar)
    : m_portPicture(new QLabel(bar)),
      m_port(new QLabel(bar)),
      m_transfer(new QLabel(bar)),
      m_lastTransfer(new QLabel(bar)),
      m_gauge(new QProgressBar(bar)),
      m_clock(new QLabel(bar)) {
  bar->setObjectName("sbrStatus");
  m_portPicture->setObjectName("sbrStatusPicture");
  m_port->setObjectName("sbrStatusPanel1");
  m_transfer->setObjectName("sbrStatusPanel2");
  m_lastTransfer->setObjectName("sbrStatusPanel3");
  m_gauge->setObjectName("sbrStatusGauge");
  m_clock->setObjectName("sbrStatusPanel4");
  m_portPicture->setPixmap(portPicture(false));
  m_gauge->setTextVisible(true);
  m_gauge->setMaximumWidth(160);
  m_gauge->setMinimumWidth(110);
  m_clock->setMinimumWidth(m_clock->fontMetrics().horizontalAdvance("00.00.0000   00:00:00 "));
  // Long texts are cut at the window's edge instead of widening it; the tooltips keep them whole.
  for (QLabel* text : {m_port, m_transfer, m_lastTransfer}) {
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    text->setMinimumWidth(40);
  }
  m_port->setMinimumWidth(
      m_port->fontMetrics().horizontalAdvance("COM 1,9600, N ,8 ,1 not active"));

  auto* panels = new QWidget(bar);
  panels->setObjectName("sbrPanels");
  auto* grid = new QGridLayout(panels);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(1);
  grid->addWidget(m_portPicture, 0, 0);
  grid->addWidget(m_port, 0, 1);
  grid->addWidget(m_transfer, 0, 2);
  grid->addWidget(m_gauge, 0, 3);
  grid->addWidget(m_clock, 0, 4);
  grid->addWidget(m_lastTransfer, 1, 0, 1, 5);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(2, 3);
  bar->addWidget(panels, 1);
}

QLabel* StatusPanels::label(StatusPanel panel) const {
  switch (panel) {
    case StatusPanel::Port:
      return m_port;
    case StatusPanel::Transfer:
      return m_transfer;
    case StatusPanel::LastTransfer:
      return m_lastTransfer;
    case StatusPanel::Clock:
      return m_clock;
  }
  return m_transfer;
}

void StatusPanels::setStatus(StatusPanel panel, const std::string& text) {
  const QString shown = toQString(text);
  QLabel* target = label(panel);
  target->setText(shown);
  if (panel != StatusPanel::Clock) target->setToolTip(shown);
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
