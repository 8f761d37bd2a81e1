#pragma once
// A Qt view of one of the project's tables. The model holds no cells of its own: it reads and
// reports the core's Table, whose data rows and columns start at 1 where the model's start at 0
// (the header row and the row-number column belong to the view).

#include <QAbstractTableModel>
#include <vector>

#include "project/project.h"
#include "text/ui_texts.h"

namespace quillon::app {

class ProjectTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // `headerSlots` holds one text slot per data column; `markColumns` how many leading columns
  // are mark columns (shown centred, with a picture in the header).
  ProjectTableModel(const Table& table, const UiTexts& texts, std::vector<int> headerSlots,
                    int markColumns, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

  // Tells the views that one cell of the table changed (data row and column from 1).
  void cellChanged(int row, int column);
  // The table was rewritten or resized behind the model's back (load, clear, upload).
  void tableReplaced();
  void headersChanged();

  [[nodiscard]] static int dataRow(const QModelIndex& index) { return index.row() + 1; }
  [[nodiscard]] static int dataColumn(const QModelIndex& index) { return index.column() + 1; }
  [[nodiscard]] bool isMarkColumn(int column) const { return column >= 1 && column <= m_marks; }

 private:
  const Table& m_table;
  const UiTexts& m_texts;
  std::vector<int> m_headerSlots;
  int m_marks;
};

}  // namespace quillon::app
