#include "app/device/version_dialog.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "app/qt_text.h"

namespace quillon::app::device {
namespace {

QLabel* caption(QWidget* parent, const char* text, const char* name = nullptr) {
  auto* label = new QLabel(QString::fromLatin1(text), parent);
  if (name) label->setObjectName(name);
  return label;
}

QLabel* value(QWidget* parent, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setMinimumWidth(140);
  return label;
}

// Blinking must not make the rest of the dialog jump.
void keepPlace(QWidget* widget) {
  QSizePolicy policy = widget->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(policy);
}

}  // namespace

VersionDialog::VersionDialog(DeviceIdentity& identity, UserDialog& dialog, ReadVersion readVersion,
                             QWidget* parent)
    : QDialog(parent),
      m_identity(identity),
      m_dialog(dialog),
      m_readVersion(std::move(readVersion)) {
  setObjectName("frmVersion");
  setWindowTitle(kVersionDialogTitle);

  m_version = value(this, "lblVersion");
  m_bus = value(this, "lblBus");
  m_unit = value(this, "lblUnit");
  m_firmware = value(this, "lblFirmware");
  m_messages = value(this, "lblMeldZahl");
  m_phones = value(this, "lblTelZahl");
  m_raw = value(this, "lblTypzahl");
  m_unitCaption = caption(this, "Device", "Label4");
  m_phonesCaption = caption(this, "Number of phone nrs.:", "Label5");

  auto* grid = new QGridLayout;
  int row = 0;
  auto addRow = [&](QLabel* captionLabel, QLabel* valueLabel) {
    grid->addWidget(captionLabel, row, 0);
    grid->addWidget(valueLabel, row, 1);
    ++row;
  };
  addRow(caption(this, "Version: "), m_version);
  addRow(caption(this, "Bus type: "), m_bus);
  addRow(m_unitCaption, m_unit);
  addRow(caption(this, "Firmware: "), m_firmware);
  addRow(caption(this, "Nuber of messages"), m_messages);
  addRow(m_phonesCaption, m_phones);
  addRow(caption(this, ""), m_raw);

  m_correct = caption(this, "Please, correct settings", "lblEinstellung");
  QFont bold = m_correct->font();
  bold.setBold(true);
  m_correct->setFont(bold);
  m_correct->setStyleSheet(QStringLiteral("color: #b00000;"));
  m_correct->hide();
  m_picture = new QLabel(this);
  m_picture->setObjectName("picVersConflict");
  m_picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(32, 32));
  m_picture->setCursor(Qt::PointingHandCursor);
  m_picture->setToolTip(QStringLiteral("Click to stop blinking"));
  m_picture->installEventFilter(this);
  m_picture->hide();

  for (QWidget* widget :
       {static_cast<QWidget*>(m_picture), static_cast<QWidget*>(m_correct),
        static_cast<QWidget*>(m_unitCaption), static_cast<QWidget*>(m_phonesCaption)}) {
    keepPlace(widget);
  }

  auto* notice = new QHBoxLayout;
  notice->addWidget(m_picture);
  notice->addWidget(m_correct, 1);

  auto* read = new QPushButton(QStringLiteral("Read &version"), this);
  read->setObjectName("cmdVersion");
  read->setAutoDefault(false);
  auto* back = new QPushButton(QStringLiteral("&Back"), this);
  back->setObjectName("cmdOK");
  back->setDefault(true);
  connect(read, &QPushButton::clicked, this, [this] {
    stopBlinking();
    m_correct->hide();
    m_picture->hide();
    if (!m_readVersion) return refresh();
    m_readVersion([dialog = QPointer<VersionDialog>(this)] {
      if (dialog) dialog->refresh();
    });
  });
  connect(back, &QPushButton::clicked, this, &VersionDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(read);
  buttons->addStretch(1);
  buttons->addWidget(back);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addLayout(notice);
  layout->addLayout(buttons);

  m_blink.setParent(this);
  m_blink.setObjectName("Timer1");
  m_blink.setInterval(kBlinkInterval);
  connect(&m_blink, &QTimer::timeout, this, &VersionDialog::blink);
  refresh();
}

void VersionDialog::refresh() {
  m_version->setText(toQString(m_identity.version));
  m_bus->setText(toQString(m_identity.bus));
  m_unit->setText(toQString(m_identity.unit));
  m_firmware->setText(toQString(m_identity.firmware));
  m_messages->setText(toQString(m_identity.messageCount));
  m_phones->setText(toQString(m_identity.phoneCount));
  m_raw->setText(toQString(m_identity.raw));
  if (m_identity.conflicts != 0) {
    m_correct->show();
    m_picture->show();
    m_blink.start();
  }
}

void VersionDialog::blink() {
  if (m_picture->isVisible()) {
    m_picture->hide();
    if (m_identity.conflicts & kConflictWrongDevice) m_unitCaption->hide();
    if (m_identity.conflicts & kConflictPhoneCount) m_phonesCaption->hide();
  } else {
    m_picture->show();
    m_unitCaption->show();
    m_phonesCaption->show();
  }
}

void VersionDialog::stopBlinking() {
  m_blink.stop();
  m_unitCaption->show();
  m_phonesCaption->show();
}

bool VersionDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_picture && event->type() == QEvent::MouseButtonPress) {
    stopBlinking();
    m_picture->hide();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

void VersionDialog::reject() {
  if (m_identity.holdsData) {
    const Box question{kDiscardVersionTitle, kDiscardVersionQuestion, BoxIcon::Question,
                       BoxButtons::YesNo, BoxAnswer::Yes};
    if (m_dialog.ask(question) != BoxAnswer::Yes) return;
    // The module's limits and the identity-read flag stay; only what the dialog shows goes.
    m_identity = DeviceIdentity{};
  }
  stopBlinking();
  QDialog::reject();
}

}  // namespace quillon::app::device
