#include "app/flag_page_widget.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "app/entry_dialogs.h"
#include "app/qt_text.h"

namespace quillon::app {
namespace {

constexpr int kFlagsPerRow = 8;

enum class Mark { None, Selected, Cursor };

QString labelStyle(FlagColour colour, Mark mark, bool reception) {
  const Rgb rgb = ColourRgb(colour);
  QString border = reception ? QStringLiteral("2px solid #1f7a3a") : "1px solid #8a8a8a";
  if (mark == Mark::Selected) border = QStringLiteral("3px solid #2f6fc0");
  // The keyboard's place must stand out from the chosen flag and from the reception flag.
  if (mark == Mark::Cursor) border = QStringLiteral("3px dashed #d04a00");
  return QStringLiteral("QLabel { background: rgb(%1, %2, %3); color: %4; border: %5; }")
      .arg(rgb.red)
      .arg(rgb.green)
      .arg(rgb.blue)
      .arg(reception ? "#1f7a3a; font-weight: bold" : "black", border);
}

}  // namespace

FlagLabel::FlagLabel(int index, QWidget* parent) : QLabel(parent), m_index(index) {
  setObjectName(QStringLiteral("lblMerker%1").arg(index));
  setProperty("index", index);
  setText(QString::number(index + 1));
  setAlignment(Qt::AlignCenter);
  setMinimumSize(30, 24);
  setCursor(Qt::PointingHandCursor);
}

void FlagLabel::mousePressEvent(QMouseEvent* event) {
  QLabel::mousePressEvent(event);
  emit clicked(m_index);
}

FlagGrid::FlagGrid(QWidget* parent) : QWidget(parent) {
  setObjectName("grdMerker");
  setFocusPolicy(Qt::StrongFocus);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(3);
  for (int k = 0; k < kFlagCount; ++k) {
    auto* label = new FlagLabel(k, this);
    m_labels[static_cast<std::size_t>(k)] = label;
    grid->addWidget(label, k / kFlagsPerRow, k % kFlagsPerRow);
    connect(label, &FlagLabel::clicked, this, [this](int index) {
      setCursorIndex(index);
      setFocus(Qt::MouseFocusReason);
      emit chosen(index);
    });
  }
}

void FlagGrid::setCursorIndex(int index) {
  if (index < 0 || index >= kFlagCount || index == m_cursor) return;
  m_cursor = index;
  emit cursorChanged();
}

void FlagGrid::keyPressEvent(QKeyEvent* event) {
  int target = m_cursor;
  switch (event->key()) {
    case Qt::Key_Left:
      target = m_cursor - 1;
      break;
    case Qt::Key_Right:
      target = m_cursor + 1;
      break;
    case Qt::Key_Up:
      target = m_cursor - kFlagsPerRow;
      break;
    case Qt::Key_Down:
      target = m_cursor + kFlagsPerRow;
      break;
    case Qt::Key_Home:
      target = 0;
      break;
    case Qt::Key_End:
      target = kFlagCount - 1;
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      emit chosen(m_cursor);
      return;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  // A key that would leave the 32 flags keeps the cursor where it is.
  setCursorIndex(target);
}

void FlagGrid::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  emit cursorChanged();
}

void FlagGrid::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  emit cursorChanged();
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setTextInteractionFlags(Qt::NoTextInteraction);
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  QPainter painter(this);
  const QRect area = contentsRect().adjusted(margin() + 3, 0, -margin() - 3, 0);
  painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                   fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
}

FlagPageWidget::FlagPageWidget(AppState& state, UserDialog& dialog, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_dialog(dialog),
      m_grid(new FlagGrid(this)),
      m_caption(new QLabel(this)),
      m_hint(new QLabel(this)),
      m_legend(new QLabel(this)),
      m_number(new QLabel(this)),
      m_messageCaption(new QLabel(this)),
      m_phoneCaption(new QLabel(this)),
      m_messageField(new QLineEdit(this)),
      m_phoneField(new QLineEdit(this)),
      m_messageLabel(new ElidedLabel(this)),
      m_phoneLabel(new ElidedLabel(this)),
      m_set(new QPushButton(this)),
      m_clear(new QPushButton(this)),
      m_clearAll(new QPushButton(this)),
      m_reception(new QPushButton(this)),
      m_download(new QPushButton(this)),
      m_upload(new QPushButton(this)) {
  m_caption->setObjectName("Label9");
  m_hint->setObjectName("Label8");
  m_legend->setObjectName("lblLegende");
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
  connect(m_grid, &FlagGrid::chosen, this, &FlagPageWidget::choose);
  connect(m_grid, &FlagGrid::cursorChanged, this, &FlagPageWidget::paintLabels);

  // Left: the flags and the transfer of the whole table. Right: the current flag and the
  // commands on it. Every control has a place of its own that no text moves.
  auto* flagsBox = new QGroupBox(this);
  flagsBox->setObjectName("FrameReg0");
  auto* flagsLayout = new QVBoxLayout(flagsBox);
  m_hint->setWordWrap(true);
  flagsLayout->addWidget(m_caption);
  flagsLayout->addWidget(m_grid);
  flagsLayout->addWidget(m_legend);
  flagsLayout->addWidget(m_hint);
  flagsLayout->addStretch();
  auto* transfer = new QHBoxLayout;
  transfer->addWidget(m_download);
  transfer->addWidget(m_upload);
  transfer->addStretch();
  flagsLayout->addLayout(transfer);

  QFont big = m_number->font();
  big.setBold(true);
  big.setPointSizeF(big.pointSizeF() * 1.2);
  m_number->setFont(big);
  // Empty before the first flag is chosen: its height must not depend on its text.
  m_number->setFixedHeight(m_number->fontMetrics().height() + 4);
  const int fieldWidth =
      m_messageField->fontMetrics().horizontalAdvance(QStringLiteral("8888")) + 16;
  for (QLineEdit* field : {m_messageField, m_phoneField}) {
    field->setMaxLength(3);
    field->setFixedWidth(fieldWidth);
    // Pasted text bypasses the key filter; the validator keeps it to digits as well.
    field->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,3}")), field));
    field->installEventFilter(this);
  }
  for (ElidedLabel* label : {m_messageLabel, m_phoneLabel})
    label->setFixedHeight(m_messageField->sizeHint().height());
  auto* fields = new QGridLayout;
  fields->setHorizontalSpacing(6);
  fields->addWidget(m_messageCaption, 0, 0);
  fields->addWidget(m_messageField, 0, 1);
  fields->addWidget(m_messageLabel, 1, 0, 1, 2);
  fields->addWidget(m_phoneCaption, 2, 0);
  fields->addWidget(m_phoneField, 2, 1);
  fields->addWidget(m_phoneLabel, 3, 0, 1, 2);
  fields->setColumnStretch(0, 1);

  auto* side = new QGroupBox(this);
  side->setObjectName("Frame3");
  // On a wide screen the column keeps a readable width instead of stretching its buttons.
  auto* column = new QWidget(side);
  column->setMaximumWidth(m_set->fontMetrics().averageCharWidth() * 50);
  column->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  auto* columnLayout = new QVBoxLayout(column);
  columnLayout->setContentsMargins(0, 0, 0, 0);
  columnLayout->addWidget(m_number);
  columnLayout->addLayout(fields);
  columnLayout->addSpacing(4);
  for (QPushButton* button : {m_set, m_clear, m_clearAll, m_reception})
    columnLayout->addWidget(button);
  auto* columnRow = new QHBoxLayout;
  columnRow->addWidget(column, 1);
  columnRow->addStretch(0);
  auto* sideLayout = new QVBoxLayout(side);
  sideLayout->addLayout(columnRow);
  sideLayout->addStretch();

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
  m_grid->setCursorIndex(label);
  if (ChooseFlag(m_page, m_state.project, label)) refresh();
}

void FlagPageWidget::projectReplaced() {
  if (m_page.selectedLabel >= 0) (void)ChooseFlag(m_page, m_state.project, m_page.selectedLabel);
  refresh();
}

void FlagPageWidget::paintLabels() {
  const std::optional<int> reception = ReceptionFlag(m_state.project.flags);
  const int cursor = m_grid->hasFocus() ? m_grid->cursorIndex() : -1;
  for (int k = 0; k < kFlagCount; ++k) {
    FlagLabel* label = m_grid->label(k);
    const bool isReception = reception == k + 1;
    const Mark mark = k == cursor                 ? Mark::Cursor
                      : m_page.selectedLabel == k ? Mark::Selected
                                                  : Mark::None;
    label->setStyleSheet(labelStyle(LabelColour(m_state.project, k), mark, isReception));
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
  for (auto [label, text] : {std::pair{m_messageLabel, &m_page.messageLabel},
                             std::pair{m_phoneLabel, &m_page.phoneLabel}}) {
    label->setText(toQString(*text));
    label->setToolTip(label->text());
  }
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
