#pragma once
// Editing one table view: a double click or a key on a text cell opens its entry box and writes
// the answer into the project; a double click on a mark column toggles the mark. The rules (which
// box, its title and length, what an answer does to the cell) are the core's.

#include <QObject>
#include <QTableView>

#include "app/app_state.h"
#include "app/table_model.h"
#include "project/validation.h"

namespace quillon::app {

class TableEditor : public QObject {
  Q_OBJECT

 public:
  TableEditor(QTableView* view, ProjectTableModel* model, TableKind kind, AppState& state);

  // Opens the entry box of a data cell (row and column from 1); `key` is the key code that
  // started the edit, Enter for a double click.
  void edit(int row, int column, int key);

 signals:
  // Any edit, cancelled ones included: the project counts as changed.
  void edited();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void onDoubleClick(const QModelIndex& index);
  QTableView* m_view;
  ProjectTableModel* m_model;
  TableKind m_kind;
  AppState& m_state;
};

}  // namespace quillon::app
