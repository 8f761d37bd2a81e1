#include "app/png_file.h"

#include <QBuffer>
#include <QFile>
#include <filesystem>

#include "project/atomic_file.h"

namespace quillon::app {

bool writePng(const QPixmap& picture, const QString& path) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (!buffer.open(QIODevice::WriteOnly) || !picture.save(&buffer, "PNG")) return false;
  return WriteFileReplacing(
             std::filesystem::path(QFile::encodeName(path).toStdString()),
             std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))
      .ok;
}

}  // namespace quillon::app
