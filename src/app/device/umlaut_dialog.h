#pragma once
// The substitution editor `frmUmlaut`: the user's own table of PC characters and what is sent in
// their place, kept in Umlaut.ini. In the substitute column three typed digits become the one
// character of that code.

#include <QDialog>
#include <filesystem>

#include "app/app_state.h"
#include "project/user_dialog.h"

class QTableWidget;

namespace quillon::app::device {

inline constexpr int kUmlautGridRows = 20;

// Umlaut.ini of this user: in the application's configuration folder (on Windows where the file
// has always been).
[[nodiscard]] std::filesystem::path userUmlautFile();

class UmlautDialog : public QDialog {
  Q_OBJECT

 public:
  UmlautDialog(const AppState& state, UserDialog& dialog, std::filesystem::path file,
               QWidget* parent = nullptr);

  // The rows as the grid holds them; rows with both cells empty are left out.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> rows() const;

 private:
  void load();
  void save();

  UserDialog& m_dialog;
  bool m_german = false;
  std::filesystem::path m_file;
  QTableWidget* m_grid = nullptr;
};

}  // namespace quillon::app::device
