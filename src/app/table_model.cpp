#include "app/table_model.h"

#include "app/icons.h"
#include "app/qt_text.h"

namespace quillon::app {

ProjectTableModel::ProjectTableModel(const Table& table, const UiTexts& texts,
                                     std::vector<int> headerSlots, int markColumns, QObject* parent)
    : QAbstractTableModel(parent),
      m_table(table),
      m_texts(texts),
      m_headerSlots(std::move(headerSlots)),
      m_marks(markColumns) {}

int ProjectTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_table.rows();
}

int ProjectTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_table.columns();
}

QVariant ProjectTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const int column = dataColumn(index);
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
    const QString text = toQString(m_table.cell(dataRow(index), column));
    if (role == Qt::ToolTipRole && (isMarkColumn(column) || text.isEmpty())) return {};
    return text;
  }
  if (role == Qt::TextAlignmentRole && isMarkColumn(column)) {
    return QVariant::fromValue(Qt::AlignCenter);
  }
  return {};
}

QVariant ProjectTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical) {
    if (role == Qt::DisplayRole) return section + 1;
    return {};
  }
  if (section < 0 || static_cast<std::size_t>(section) >= m_headerSlots.size()) return {};
  const QString text = toQString(m_texts[m_headerSlots[static_cast<std::size_t>(section)]]);
  if (isMarkColumn(section + 1)) {
    // The mark columns are narrow: a picture in the header, the name as its tooltip.
    if (role == Qt::DecorationRole) return markColumnIcon(section + 1);
    if (role == Qt::ToolTipRole) return text;
    return {};
  }
  if (role == Qt::DisplayRole) return text;
  return {};
}

void ProjectTableModel::cellChanged(int row, int column) {
  const QModelIndex cell = index(row - 1, column - 1);
  emit dataChanged(cell, cell);
}

void ProjectTableModel::tableReplaced() {
  beginResetModel();
  endResetModel();
}

void ProjectTableModel::headersChanged() {
  emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

}  // namespace quillon::app
