#include "app/table_editor.h"

#include <QKeyEvent>

#include "app/entry_dialogs.h"

namespace quillon::app {

TableEditor::TableEditor(QTableView* view, ProjectTableModel* model, TableKind kind,
                         AppState& state)
    : QObject(view), m_view(view), m_model(model), m_kind(kind), m_state(state) {
  m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  m_view->installEventFilter(this);
  connect(m_view, &QAbstractItemView::doubleClicked, this, &TableEditor::onDoubleClick);
}

void TableEditor::onDoubleClick(const QModelIndex& index) {
  if (!index.isValid()) return;
  const int row = ProjectTableModel::dataRow(index);
  const int column = ProjectTableModel::dataColumn(index);
  if (m_kind == TableKind::Messages && ToggleMark(m_state.project, row, column)) {
    m_model->cellChanged(row, column);
    emit edited();
    return;
  }
  edit(row, column, kKeyEnter);
}

void TableEditor::edit(int row, int column, int key) {
  const EditRule rule = EditRuleFor(m_kind, column);
  if (rule.box == EntryBox::None) return;
  const std::string start = EntryStartText(TableOf(m_state.project, m_kind).cell(row, column), key);
  const std::string& title = m_state.texts[rule.titleSlot];
  std::string answer;
  if (rule.box == EntryBox::Phone) {
    PhoneEntryBox box(m_view->window(), m_state.texts);
    answer = box.run(title, start);
  } else {
    TextEntryBox box(m_view->window(), m_state.texts);
    // Comments and names stay in the PC: the phone never shows them.
    answer = box.run(title, start, rule.maxLength, rule.titleSlot != slot::kEditComment);
  }
  ApplyEntryResult(m_state.project, m_kind, row, column,
                   EntryResult::fromBoxText(std::move(answer)));
  m_model->cellChanged(row, column);
  emit edited();
}

bool TableEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_view || event->type() != QEvent::KeyPress) {
    return QObject::eventFilter(watched, event);
  }
  const auto* keyEvent = static_cast<QKeyEvent*>(event);
  const QModelIndex current = m_view->currentIndex();
  const int code = keyCode(keyEvent->key(), keyEvent->text());
  // Backspace and Delete keep their meaning for the view; only Enter and typed characters edit.
  if (!current.isValid() || code < 0 || code == kKeyBackspace || code == kKeyDelete ||
      (keyEvent->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
    return QObject::eventFilter(watched, event);
  }
  const int column = ProjectTableModel::dataColumn(current);
  // Space is the keyboard's double click on a mark: it toggles it.
  if (keyEvent->key() == Qt::Key_Space && m_kind == TableKind::Messages &&
      ToggleMark(m_state.project, ProjectTableModel::dataRow(current), column)) {
    m_model->cellChanged(ProjectTableModel::dataRow(current), column);
    emit edited();
    return true;
  }
  if (EditRuleFor(m_kind, column).box == EntryBox::None)
    return QObject::eventFilter(watched, event);
  edit(ProjectTableModel::dataRow(current), column, code);
  return true;
}

}  // namespace quillon::app
