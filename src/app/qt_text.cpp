#include "app/qt_text.h"

#include "text/code_page.h"

namespace quillon::app {

QString toQString(std::string_view cp1252) { return QString::fromStdString(cp1252ToUtf8(cp1252)); }

std::string fromQString(const QString& text) { return utf8ToCp1252(text.toStdString()); }

}  // namespace quillon::app
