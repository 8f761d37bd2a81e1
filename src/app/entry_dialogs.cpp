#include "app/entry_dialogs.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/gsm_preview_view.h"
#include "app/qt_text.h"
#include "project/project.h"
#include "project/validation.h"
#include "text/code_page.h"

namespace quillon::app {
namespace {

QDialogButtonBox* okCancel(QDialog* box, const UiTexts& texts) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, box);
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  QPushButton* cancel = buttons->button(QDialogButtonBox::Cancel);
  ok->setObjectName("cmdOK");
  cancel->setObjectName("cmdCancel");
  if (!texts[slot::kOk].empty()) ok->setText(toQString(texts[slot::kOk]));
  if (!texts[slot::kCancel].empty()) cancel->setText(toQString(texts[slot::kCancel]));
  QObject::connect(buttons, &QDialogButtonBox::accepted, box, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, box, &QDialog::reject);
  return buttons;
}

// The box takes the focus only once it is shown, and a focus that arrives by tabbing selects the
// whole text; the cursor belongs after the last character so that typing goes on from there.
void placeCursorAtEnd(QLineEdit* edit) {
  edit->setFocus();
  QMetaObject::invokeMethod(
      edit,
      [edit] {
        edit->setFocus();
        edit->deselect();
        edit->end(false);
      },
      Qt::QueuedConnection);
}

}  // namespace

int keyCode(int qtKey, const QString& text) {
  switch (qtKey) {
    case Qt::Key_Backspace:
      return kKeyBackspace;
    case Qt::Key_Delete:
      return kKeyDelete;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kKeyEnter;
    default:
      break;
  }
  if (text.isEmpty() || !text.front().isPrint()) return -1;
  const auto code = unicodeToCp1252(text.front().unicode());
  return code ? int{*code} : int{'?'};
}

TextEntryBox::TextEntryBox(QWidget* parent, const UiTexts& texts)
    : QDialog(parent),
      m_texts(texts),
      m_edit(new QLineEdit(this)),
      m_count(new QLabel(this)),
      m_preview(new QTextBrowser(this)) {
  setObjectName("MInput");
  m_edit->setObjectName("txtEingabe");
  m_count->setObjectName("lblAnzahl");
  m_preview->setObjectName("lblVorschau");
  // A fixed area that wraps anywhere: a 160-character text is shown whole, and the box keeps its
  // size (and its buttons their places) whatever is typed.
  m_preview->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  m_preview->setFocusPolicy(Qt::NoFocus);
  m_preview->setFrameShape(QFrame::NoFrame);
  m_preview->viewport()->setAutoFillBackground(false);
  m_preview->setFixedHeight(m_preview->fontMetrics().lineSpacing() * 8 + 8);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_edit);
  layout->addWidget(m_count);
  layout->addWidget(m_preview);
  layout->addWidget(okCancel(this, texts));
  setMinimumWidth(560);
  connect(m_edit, &QLineEdit::textChanged, this, &TextEntryBox::updateLabel);
}

void TextEntryBox::updateLabel() {
  const std::string text = fromQString(m_edit->text());
  const int length = static_cast<int>(m_edit->text().size());
  const int maxLength = m_maxLength;
  m_count->setText(toQString(m_texts[slot::kCharactersLeft]) + QString::number(maxLength - length) +
                   QStringLiteral("   (%1 / %2)").arg(length).arg(maxLength));
  if (m_preview->isVisibleTo(this)) m_preview->setHtml(gsmPreviewHtml(text, m_texts));
}

std::string TextEntryBox::run(const std::string& title, const std::string& start, int maxLength,
                              bool preview) {
  setWindowTitle(toQString(title));
  m_preview->setVisible(preview);
  // A loaded text may be longer than the box allows; it is shown whole, never cut unasked.
  const QString startText = toQString(start);
  m_edit->setMaxLength(std::max(maxLength, static_cast<int>(startText.size())));
  m_maxLength = maxLength;
  m_edit->setText(startText);
  updateLabel();
  placeCursorAtEnd(m_edit);
  if (exec() != QDialog::Accepted) return std::string(1, kEntryCancelled);
  return fromQString(m_edit->text());
}

PhoneEntryBox::PhoneEntryBox(QWidget* parent, const UiTexts& texts)
    : QDialog(parent), m_edit(new QLineEdit(this)) {
  setObjectName("TInput");
  m_edit->setObjectName("txtTelefon");
  m_edit->setMaxLength(kMaxPhoneLength);
  m_edit->installEventFilter(this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_edit);
  layout->addWidget(okCancel(this, texts));
  setMinimumWidth(320);
}

bool PhoneEntryBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_edit && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const int code = keyCode(key->key(), key->text());
    // Enter confirms the box and navigation keys keep working; typed characters are filtered.
    if (code >= 0 && code != kKeyEnter &&
        PhoneKeyFilter(code, static_cast<std::size_t>(m_edit->text().size())) == 0) {
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

std::string PhoneEntryBox::run(const std::string& title, const std::string& start) {
  setWindowTitle(toQString(title));
  m_edit->setText(toQString(start));
  placeCursorAtEnd(m_edit);
  if (exec() != QDialog::Accepted) return std::string(1, kEntryCancelled);
  if (m_edit->text().isEmpty()) return std::string(1, kEntryEmptyPhone);
  return fromQString(m_edit->text());
}

}  // namespace quillon::app
