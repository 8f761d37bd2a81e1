#include "app/flag_page_widget.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "app/entry_dialogs.h"
#include "app/qt_text.h"

namespace quillon::app {
namespace {

QString labelStyle(FlagColour colour, bool selected, bool reception) {
  const Rgb rgb = ColourRgb(colour);
  return QStringLiteral("QLabel { background: rgb(%1, %2, %3); color: %4; border: %5; }")
      .arg(rgb.red)
      .arg(rgb.green)
      .arg(rgb.blue)
      .arg(reception ? "#1f7a3a; font-weight: bold" : "black")
      .arg(selected    ? "3px solid #2f6fc0"
           : reception ? "2px solid #1f7a3a"
                       : "1px solid #8a8a8a");
}

}  // namespace

FlagLabel::FlagLabel(int index, QWidget* parent) : QLabel(parent), m_index(index) {
  setObjectName(QStringLiteral("lblMerker%1").arg(index));
  setProperty("index", index);
  setText(QString::number(index + 1));
  setAlignment(Qt::AlignCenter);
  setMinimumSize(34, 28);
  setCursor(Qt::PointingHandCursor);
}

void FlagLabel::mousePressEvent(QMouseEvent* event) {
  QLabel::mousePressEvent(event);
  emit clicked(m_index);
}

FlagPageWidget::FlagPageWidget(AppState& state, UserDialog& dialog, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_dialog(dialog),
      m_caption(new QLabel(this)),
      m_hint(new QLabel(this)),
      m_number(new QLabel(this)),
      m_messageCaption(new QLabel(this)),
      m_phoneCaption(new QLabel(this)),
      m_messageField(new QLineEdit(this)),
      m_phoneField(new QLineEdit(this)),
      m_messageLabel(new QLabel(this)),
      m_phoneLabel(new QLabel(this)),
      m_set(new QPushButton(this)),
      m_clear(new QPushButton(this)),
      m_clearAll(new QPushButton(this)),
      m_reception(new QPushButton(this)),
      m_download(new QPushButton(this)),
      m_upload(new QPushButton(this)) {
  m_caption->setObjectName("Label9");
  m_hint->setObjectName("Label8");
  m_number->setObjectName("lblMerkerNr");
  m_messageField->setObjectName("mskMeldNr");
  m_phoneField->setObjectName("mskTelNr");
  m_messageLabel->setObjectName("lblMeldung");
  m_phoneLabel->setObjectName("lblTelefon");
  m_set->setObjectName("cmdSmsSet");
  m_clear->setObjectName("cmdSmsClear");
  m_clearAll->setObjectName("cmdSmsClearAll");
  m_reception->setObjectName("cmdFlag");
  m_download->setObjectName("cmdEasy800Down");
  m_upload->setObjectName("cmdEasy800Up");

  auto* grid = new QGridLayout;
  grid->setSpacing(4);
  for (int k = 0; k < kFlagCount; ++k) {
    auto* label = new FlagLabel(k, this);
    m_labels[static_cast<std::size_t>(k)] = label;
    grid->addWidget(label, k / 8, k % 8);
    connect(label, &FlagLabel::clicked, this, &FlagPageWidget::choose);
  }
  auto* flagsBox = new QGroupBox(this);
  flagsBox->setObjectName("FrameReg0");
  auto* flagsLayout = new QVBoxLayout(flagsBox);
  m_legend = new QLabel(flagsBox);
  m_legend->setObjectName("lblLegende");
  flagsLayout->addWidget(m_caption);
  flagsLayout->addLayout(grid);
  flagsLayout->addWidget(m_legend);
  flagsLayout->addWidget(m_hint);
  flagsLayout->addStretch();
  m_hint->setWordWrap(true);

  QFont big = m_number->font();
  big.setBold(true);
  big.setPointSizeF(big.pointSizeF() * 1.3);
  m_number->setFont(big);
  for (QLineEdit* field : {m_messageField, m_phoneField}) {
    field->setMaxLength(3);
    field->setMaximumWidth(70);
    // Pasted text bypasses the key filter; the validator keeps it to digits as well.
    field->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,3}")), field));
    field->installEventFilter(this);
  }
  for (QLabel* label : {m_messageLabel, m_phoneLabel}) {
    label->setWordWrap(true);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setMinimumHeight(m_messageField->sizeHint().height());
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  }
  auto* fields = new QGridLayout;
  fields->addWidget(m_number, 0, 0, 1, 3);
  fields->addWidget(m_messageCaption, 1, 0);
  fields->addWidget(m_messageField, 1, 1);
  fields->addWidget(m_messageLabel, 1, 2);
  fields->addWidget(m_phoneCaption, 2, 0);
  fields->addWidget(m_phoneField, 2, 1);
  fields->addWidget(m_phoneLabel, 2, 2);
  fields->setColumnStretch(2, 1);

  auto* commands = new QHBoxLayout;
  for (QPushButton* button : {m_set, m_clear, m_clearAll, m_reception}) commands->addWidget(button);
  commands->addStretch();
  auto* transfer = new QHBoxLayout;
  transfer->addWidget(m_download);
  transfer->addWidget(m_upload);
  transfer->addStretch();

  auto* side = new QGroupBox(this);
  side->setObjectName("Frame3");
  auto* sideLayout = new QVBoxLayout(side);
  sideLayout->addLayout(fields);
  sideLayout->addLayout(commands);
  sideLayout->addStretch();
  sideLayout->addLayout(transfer);

  auto* layout = new QHBoxLayout(this);
  layout->addWidget(flagsBox);
  layout->addWidget(side, 1);

  connect(m_messageField, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_page.messageField = fromQString(text); });
  connect(m_phoneField, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_page.phoneField = fromQString(text); });
  connect(m_messageField, &QLineEdit::editingFinished, this, [this] {
    const std::optional<int> row = LeaveMessageField(m_page, m_state.project);
    refresh();
    if (row) emit showMessageRow(*row);
  });
  connect(m_phoneField, &QLineEdit::editingFinished, this, [this] {
    const std::optional<int> row = LeavePhoneField(m_page, m_state.project);
    refresh();
    if (row) emit showPhoneRow(*row);
  });
  connect(m_set, &QPushButton::clicked, this, [this] {
    (void)SetFlag(m_page, m_state.project, m_state.texts, m_dialog);
    refresh();
  });
  connect(m_clear, &QPushButton::clicked, this, [this] {
    ClearFlag(m_page, m_state.project);
    refresh();
  });
  connect(m_clearAll, &QPushButton::clicked, this, [this] {
    (void)ClearAllFlags(m_state.project, m_state.texts, m_dialog);
    refresh();
  });
  connect(m_reception, &QPushButton::clicked, this, [this] {
    (void)SetReceptionFlag(m_page, m_state.project, m_state.texts, m_dialog);
    refresh();
  });
  refresh();
}

bool FlagPageWidget::eventFilter(QObject* watched, QEvent* event) {
  if ((watched == m_messageField || watched == m_phoneField) && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const int code = keyCode(key->key(), key->text());
    if (code >= 0) {
      const bool pass = NumberFieldKey(m_page, m_state.project, code) != 0;
      paintLabels();
      if (!pass) return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void FlagPageWidget::choose(int label) {
  if (ChooseFlag(m_page, m_state.project, label)) refresh();
}

void FlagPageWidget::projectReplaced() {
  if (m_page.selectedLabel >= 0) (void)ChooseFlag(m_page, m_state.project, m_page.selectedLabel);
  refresh();
}

void FlagPageWidget::paintLabels() {
  const std::optional<int> reception = ReceptionFlag(m_state.project.flags);
  for (int k = 0; k < kFlagCount; ++k) {
    FlagLabel* label = m_labels[static_cast<std::size_t>(k)];
    const bool isReception = reception == k + 1;
    label->setStyleSheet(
        labelStyle(LabelColour(m_state.project, k), m_page.selectedLabel == k, isReception));
    QString tip = toQString(m_state.project.flags.entries[static_cast<std::size_t>(k + 1)]);
    if (isReception) tip = m_state.text(slot::kReceptionFlag) + " (" + tip + ")";
    label->setToolTip(tip);
  }
}

void FlagPageWidget::refresh() {
  paintLabels();
  m_number->setText(toQString(m_page.markerCaption));
  const QString message = toQString(m_page.messageField);
  const QString phone = toQString(m_page.phoneField);
  if (m_messageField->text() != message) m_messageField->setText(message);
  if (m_phoneField->text() != phone) m_phoneField->setText(phone);
  m_messageLabel->setText(toQString(m_page.messageLabel));
  m_phoneLabel->setText(toQString(m_page.phoneLabel));
  const bool chosen = m_page.currentFlag >= 1;
  for (QWidget* w :
       std::initializer_list<QWidget*>{m_messageField, m_phoneField, m_set, m_clear, m_reception}) {
    w->setEnabled(chosen);
  }
}

void FlagPageWidget::applyTexts() {
  m_caption->setText(m_state.text(slot::kActiveFlagsYellow));
  m_hint->setText(m_state.text(slot::kFlagPageHint));
  m_legend->setText(
      QStringLiteral("<span style=\"color:#1f7a3a;font-weight:bold\">&#9632;</span> ") +
      m_state.text(slot::kReceptionFlag).toHtmlEscaped());
  m_messageCaption->setText(m_state.text(slot::kMessageNumber));
  m_phoneCaption->setText(m_state.text(slot::kPhoneNumber));
  m_set->setText(m_state.text(slot::kSetAsSmsFlag));
  m_set->setToolTip(m_state.text(slot::kSetFlagTooltip));
  m_clear->setText(m_state.text(slot::kClearBit));
  m_clear->setToolTip(m_state.text(slot::kSmsFlagReleased));
  m_clearAll->setText(m_state.text(slot::kClearAll));
  // Of the button's two tooltip texts the release notice is the one that stays.
  m_clearAll->setToolTip(m_state.text(slot::kSmsFlagReleased));
  m_reception->setText(m_state.text(slot::kSetReceptionFlag));
  m_download->setText(m_state.text(slot::kDownloadFlagsButton));
  m_upload->setText(m_state.text(slot::kUploadFlagsButton));
  paintLabels();
}

}  // namespace quillon::app
