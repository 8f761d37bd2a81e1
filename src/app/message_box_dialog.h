#pragma once
// UserDialog shown as QMessageBox over a parent window.

#include <QPointer>
#include <QWidget>

#include "project/user_dialog.h"

namespace quillon::app {

class MessageBoxDialog : public UserDialog {
 public:
  explicit MessageBoxDialog(QWidget* parent = nullptr) : m_parent(parent) {}
  void setParent(QWidget* parent) { m_parent = parent; }
  [[nodiscard]] BoxAnswer ask(const Box& box) override;

 private:
  QPointer<QWidget> m_parent;
};

}  // namespace quillon::app
