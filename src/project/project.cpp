#include "project/project.h"

#include <cstddef>

namespace quillon {

Table::Table(int rows, int columns)
    : m_rows(rows),
      m_columns(columns),
      m_cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)) {}

bool Table::inRange(int row, int column) const {
  return row >= 1 && row <= m_rows && column >= 1 && column <= m_columns;
}

const std::string& Table::cell(int row, int column) const {
  static const std::string kEmpty;
  if (!inRange(row, column)) return kEmpty;
  return m_cells[static_cast<std::size_t>((row - 1) * m_columns + (column - 1))];
}

void Table::setCell(int row, int column, std::string text) {
  if (!inRange(row, column)) return;
  m_cells[static_cast<std::size_t>((row - 1) * m_columns + (column - 1))] = std::move(text);
}

void Table::resize(int rows) {
  m_cells.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(m_columns));
  m_rows = rows;
}

void Table::clear() {
  for (auto& c : m_cells) c.clear();
}

Project::Project(const ModuleLimits& limits)
    : messages(limits.messageRows(), 5), filters(kFilterRows, 2), phones(limits.phoneLimit, 2) {}

void clearAll(Project& project) {
  project.messages.clear();
  project.filters.clear();
  project.phones.clear();
  project.pin = kNoPin;
  project.station.clear();
}

void initMerkerArray(Project& project) { project.flags = FlagTable{}; }

void applyMessageLimit(Project& project, const ModuleLimits& limits) {
  project.messages.resize(limits.messageRows());
}

}  // namespace quillon
