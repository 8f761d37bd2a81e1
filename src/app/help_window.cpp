#include "app/help_window.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

// The manual's resources sit in a static library; nothing else would pull them in.
static void initManualResources() { Q_INIT_RESOURCE(manual); }

namespace quillon::app {

QUrl manualUrl(int language, const QString& anchor) {
  QUrl url(language == 1 ? QStringLiteral("qrc:/manual/manual_de.html")
                         : QStringLiteral("qrc:/manual/manual_en.html"));
  if (!anchor.isEmpty()) url.setFragment(anchor);
  return url;
}

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      m_browser(new QTextBrowser(this)),
      m_back(new QPushButton(this)),
      m_contents(new QPushButton(this)),
      m_close(new QPushButton(this)) {
  initManualResources();
  setObjectName("frmHandbuch");
  m_browser->setObjectName("txtHandbuch");
  m_back->setObjectName("cmdZurueck");
  m_contents->setObjectName("cmdInhalt");
  m_close->setObjectName("cmdSchliessen");
  m_browser->setOpenExternalLinks(true);
  connect(m_back, &QPushButton::clicked, m_browser, &QTextBrowser::backward);
  connect(m_browser, &QTextBrowser::backwardAvailable, m_back, &QPushButton::setEnabled);
  connect(m_contents, &QPushButton::clicked, this,
          [this] { m_browser->setSource(manualUrl(m_language, kManualContents)); });
  connect(m_close, &QPushButton::clicked, this, &QWidget::close);
  m_back->setEnabled(false);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(m_back);
  buttons->addWidget(m_contents);
  buttons->addStretch();
  buttons->addWidget(m_close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_browser, 1);
  layout->addLayout(buttons);
  resize(760, 620);
}

void HelpWindow::showManual(int language, const QString& anchor) {
  m_language = language;
  const bool german = language == 1;
  setWindowTitle(german ? QStringLiteral("Quillon \u2013 Handbuch")
                        : QStringLiteral("Quillon \u2013 Manual"));
  m_back->setText(german ? QStringLiteral("&Zur\u00FCck") : QStringLiteral("&Back"));
  m_contents->setText(german ? QStringLiteral("&Inhalt") : QStringLiteral("&Contents"));
  m_close->setText(german ? QStringLiteral("&Schlie\u00DFen") : QStringLiteral("C&lose"));
  m_browser->setSource(manualUrl(language, anchor));
  if (!anchor.isEmpty()) m_browser->scrollToAnchor(anchor);
  show();
  raise();
  activateWindow();
}

}  // namespace quillon::app
