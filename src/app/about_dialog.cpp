#include "app/about_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/icons.h"

namespace quillon::app {

QString versionText() {
  return QStringLiteral("Version %1.%2.%3")
      .arg(QUILLON_VERSION_MAJOR)
      .arg(QUILLON_VERSION_MINOR)
      .arg(QUILLON_VERSION_PATCH);
}

AboutDialog::AboutDialog(const AppState& state, UserDialog& dialog, QWidget* parent)
    : QDialog(parent), m_dialog(dialog) {
  setObjectName("frmAbout");
  setWindowTitle(QStringLiteral("Info zu ") + kMainTitle);

  auto* title = new QLabel(QStringLiteral("Quillon"), this);
  title->setObjectName("lblTitle");
  QFont big = title->font();
  big.setBold(true);
  big.setPointSizeF(big.pointSizeF() * 1.6);
  title->setFont(big);
  auto* version = new QLabel(versionText(), this);
  version->setObjectName("lblVersion");
  // The English description continues the product name; the German one stands alone.
  const QString description = (state.texts.german() ? QString() : QStringLiteral("Quillon")) +
                              state.text(slot::kAboutDescriptionLine1) +
                              state.text(slot::kAboutDescriptionLine2);
  auto* descriptionLabel = new QLabel(description, this);
  descriptionLabel->setObjectName("lblDescription");
  descriptionLabel->setWordWrap(true);
  auto* warning =
      new QLabel("<b>" + state.text(slot::kAboutWarningTitle).toHtmlEscaped() + "</b><br>" +
                     (state.text(slot::kAboutWarningLine1) + state.text(slot::kAboutWarningLine2))
                         .toHtmlEscaped(),
                 this);
  warning->setObjectName("lblDisclaimer");
  warning->setWordWrap(true);

  auto* picture = new QLabel(this);
  picture->setPixmap(toolbarIcon("tbDown").pixmap(48, 48));
  picture->setAlignment(Qt::AlignTop);

  auto* buttons = new QDialogButtonBox(this);
  QPushButton* ok = buttons->addButton(QDialogButtonBox::Ok);
  ok->setObjectName("cmdOK");
  QPushButton* info =
      buttons->addButton(state.text(slot::kSystemInfo), QDialogButtonBox::ActionRole);
  info->setObjectName("cmdSysInfo");
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(info, &QPushButton::clicked, this, &AboutDialog::systemInfo);

  auto* text = new QVBoxLayout;
  text->addWidget(title);
  text->addWidget(version);
  text->addSpacing(8);
  text->addWidget(descriptionLabel);
  text->addSpacing(12);
  text->addWidget(warning);
  auto* top = new QHBoxLayout;
  top->addWidget(picture);
  top->addLayout(text, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(buttons);
  setMinimumWidth(460);
}

void AboutDialog::systemInfo() {
  // There is no system-information tool to start on this platform.
  m_dialog.tell(kMainTitle, "Systeminformationen sind momentan nicht verf\xFCgbar");
}

}  // namespace quillon::app
