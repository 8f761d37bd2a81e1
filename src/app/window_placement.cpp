#include "app/window_placement.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quillon::app {

namespace {

// Enough of the title bar to take hold of.
constexpr int kGripWidth = 100;
constexpr int kGripHeight = 20;

bool titleBarShown(const QRect& window, const QRect& screen) {
  const QRect titleBar(window.left(), window.top(), window.width(),
                       std::min(kGripHeight, window.height()));
  const QRect shown = titleBar.intersected(screen);
  return shown.width() >= std::min(kGripWidth, window.width()) &&
         shown.height() >= titleBar.height();
}

std::int64_t gap(int firstEnd, int secondStart) {
  return std::max<std::int64_t>(0, std::int64_t{secondStart} - firstEnd);
}

std::int64_t squaredDistance(const QRect& a, const QRect& b) {
  const std::int64_t dx = std::max(gap(a.right(), b.left()), gap(b.right(), a.left()));
  const std::int64_t dy = std::max(gap(a.bottom(), b.top()), gap(b.bottom(), a.top()));
  return dx * dx + dy * dy;
}

}  // namespace

QRect placeOnScreens(const QRect& wanted, const QList<QRect>& screens) {
  if (screens.isEmpty()) return wanted;
  QRect allScreens;
  for (const QRect& screen : screens) allScreens = allScreens.united(screen);
  for (const QRect& screen : screens) {
    if (titleBarShown(wanted, screen)) {
      return {wanted.topLeft(), wanted.size().boundedTo(allScreens.size())};
    }
  }
  const QRect* nearest = &screens.front();
  std::int64_t nearestDistance = std::numeric_limits<std::int64_t>::max();
  for (const QRect& screen : screens) {
    const std::int64_t distance = squaredDistance(wanted, screen);
    if (distance < nearestDistance) {
      nearestDistance = distance;
      nearest = &screen;
    }
  }
  const QSize size = wanted.size().boundedTo(nearest->size());
  const int left = std::clamp(wanted.left(), nearest->left(), nearest->right() + 1 - size.width());
  const int top = std::clamp(wanted.top(), nearest->top(), nearest->bottom() + 1 - size.height());
  return {QPoint(left, top), size};
}

}  // namespace quillon::app
