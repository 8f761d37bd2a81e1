#include "app/file_picker.h"

#include <QFileDialog>

namespace quillon::app {

QString QtFilePicker::openFile(const QString& title, const QString& filter,
                               const QString& directory) {
  return QFileDialog::getOpenFileName(m_parent, title, directory, filter);
}

QString QtFilePicker::saveFile(const QString& title, const QString& filter,
                               const QString& directory) {
  return QFileDialog::getSaveFileName(m_parent, title, directory, filter, nullptr,
                                      QFileDialog::DontConfirmOverwrite);
}

}  // namespace quillon::app
