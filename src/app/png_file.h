#pragma once
// A picture saved as a PNG file through the safe writer, as every file the program writes.

#include <QPixmap>
#include <QString>

namespace quillon::app {

[[nodiscard]] bool writePng(const QPixmap& picture, const QString& path);

}  // namespace quillon::app
