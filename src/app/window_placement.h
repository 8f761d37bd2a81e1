#pragma once
// Where the main window opens. The saved placement is kept while a screen shows the window's
// title bar, so that it can still be moved, and no bigger than all screens together; otherwise
// the window goes onto the nearest screen, made small enough to fit on it.

#include <QList>
#include <QRect>

namespace quillon::app {

// `screens` are the screens' available areas; with none the placement stays as it is.
[[nodiscard]] QRect placeOnScreens(const QRect& wanted, const QList<QRect>& screens);

}  // namespace quillon::app
