#pragma once
// The file-open and file-save dialogs of the file commands, behind an interface so that tests
// can choose the files.

#include <QString>
#include <QWidget>

namespace quillon::app {

class FilePicker {
 public:
  virtual ~FilePicker() = default;
  // The chosen path, or an empty text when the user cancelled.
  [[nodiscard]] virtual QString openFile(const QString& title, const QString& filter,
                                         const QString& directory) = 0;
  // Does not ask about an existing file: the caller asks its own question.
  [[nodiscard]] virtual QString saveFile(const QString& title, const QString& filter,
                                         const QString& directory) = 0;
};

class QtFilePicker : public FilePicker {
 public:
  explicit QtFilePicker(QWidget* parent) : m_parent(parent) {}
  [[nodiscard]] QString openFile(const QString& title, const QString& filter,
                                 const QString& directory) override;
  [[nodiscard]] QString saveFile(const QString& title, const QString& filter,
                                 const QString& directory) override;

 private:
  QWidget* m_parent;
};

}  // namespace quillon::app
