#pragma once
// File → Previous versions…: the kept versions of the open project file with the time each was
// saved and its size, newest first. Restore closes the list with the chosen one.

#include <QDialog>
#include <string>
#include <vector>

#include "project/file_history.h"

class QTableWidget;

namespace quillon::app {

class VersionsDialog : public QDialog {
  Q_OBJECT

 public:
  // `versions` oldest first, as ListVersions gives them.
  VersionsDialog(const std::vector<FileVersion>& versions, bool german, QWidget* parent = nullptr);

  // The name of the version on the selected row; empty when none is selected.
  [[nodiscard]] std::string chosen() const;

 private:
  QTableWidget* m_list = nullptr;
  std::vector<std::string> m_names;  // by row
};

}  // namespace quillon::app
