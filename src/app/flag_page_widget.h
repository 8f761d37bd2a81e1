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
  std::array<FlagLabel*, kFlagCount> m_labels{};
  QLabel* m_caption;
  QLabel* m_hint;
  QLabel* m_legend = nullptr;
  QLabel* m_number;
  QLabel* m_messageCaption;
  QLabel* m_phoneCaption;
  QLineEdit* m_messageField;
  QLineEdit* m_phoneField;
  QLabel* m_messageLabel;
  QLabel* m_phoneLabel;
  QPushButton* m_set;
  QPushButton* m_clear;
  QPushButton* m_clearAll;
  QPushButton* m_reception;
  QPushButton* m_download;
  QPushButton* m_upload;
};

}  // namespace quillon::app
