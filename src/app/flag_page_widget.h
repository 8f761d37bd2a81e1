#pragma once
// The page "Marker Setting": 32 flag labels, the current flag's two number fields with the
// labels that follow them, and the set / clear / clear-all / reception-flag commands. The rules
// are the core's FlagPage functions; this widget only shows their state and feeds them input.

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "app/app_state.h"
#include "project/flag_assignment.h"
#include "project/user_dialog.h"

namespace quillon::app {

class FlagLabel : public QLabel {
  Q_OBJECT

 public:
  FlagLabel(int index, QWidget* parent);

 signals:
  void clicked(int index);

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  int m_index;
};

// The 32 labels as one stop of the tab chain: the arrow keys move a cursor over them, Home and
// End jump to the first and the last, Enter or Space chooses the flag under the cursor.
class FlagGrid : public QWidget {
  Q_OBJECT

 public:
  explicit FlagGrid(QWidget* parent);

  [[nodiscard]] FlagLabel* label(int index) const {
    return m_labels[static_cast<std::size_t>(index)];
  }
  [[nodiscard]] int cursorIndex() const { return m_cursor; }
  void setCursorIndex(int index);

 signals:
  void chosen(int index);
  // The cursor moved, or the grid gained or lost the focus: the labels need painting again.
  void cursorChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  std::array<FlagLabel*, kFlagCount> m_labels{};
  int m_cursor = 0;
};

// A one-line label that shows as much of its text as fits and ends it with "…"; its width never
// follows the text, so the controls around it keep their places whatever it shows.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

class FlagPageWidget : public QWidget {
  Q_OBJECT

 public:
  FlagPageWidget(AppState& state, UserDialog& dialog, QWidget* parent = nullptr);

  // Re-reads the labels and the current flag after the flag table changed (load, new, upload).
  void projectReplaced();
  void applyTexts();
  [[nodiscard]] const FlagPage& page() const { return m_page; }
  [[nodiscard]] QPushButton* downloadButton() const { return m_download; }
  [[nodiscard]] QPushButton* uploadButton() const { return m_upload; }

 signals:
  // Leaving a number field positions the message grid (text column) or the phone grid on a row.
  void showMessageRow(int row);
  void showPhoneRow(int row);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void choose(int label);
  void refresh();
  void paintLabels();
  AppState& m_state;
  UserDialog& m_dialog;
  FlagPage m_page;
  FlagGrid* m_grid;
  QLabel* m_caption;
  QLabel* m_hint;
  QLabel* m_legend;
  QLabel* m_number;
  QLabel* m_messageCaption;
  QLabel* m_phoneCaption;
  QLineEdit* m_messageField;
  QLineEdit* m_phoneField;
  ElidedLabel* m_messageLabel;
  ElidedLabel* m_phoneLabel;
  QPushButton* m_set;
  QPushButton* m_clear;
  QPushButton* m_clearAll;
  QPushButton* m_reception;
  QPushButton* m_download;
  QPushButton* m_upload;
};

}  // namespace quillon::app
