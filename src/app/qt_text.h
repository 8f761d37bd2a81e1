#pragma once
// The one crossing between the core's Windows-1252 bytes and Qt's Unicode strings.

#include <QString>
#include <string>
#include <string_view>

namespace quillon::app {

[[nodiscard]] QString toQString(std::string_view cp1252);
// Characters that Windows-1252 cannot hold become '?'.
[[nodiscard]] std::string fromQString(const QString& text);

}  // namespace quillon::app
