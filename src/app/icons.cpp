#include "app/icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <functional>

namespace quillon::app {
namespace {

// Every toolbar picture is drawn on a 32 x 32 grid and scaled by QIcon.
constexpr int kCanvas = 32;
const QColor kInk(0x2b, 0x3a, 0x4a);
const QColor kPaper(0xfb, 0xfb, 0xf8);
const QColor kGreen(0x2e, 0x9b, 0x4f);
const QColor kBlue(0x2f, 0x6f, 0xc0);
const QColor kRed(0xc8, 0x37, 0x37);
const QColor kAmber(0xf2, 0xb6, 0x3c);
const QColor kGrey(0x9a, 0xa5, 0xb1);

using Painter = std::function<void(QPainter&)>;

QPixmap render(int size, const Painter& paint) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / double(kCanvas), size / double(kCanvas));
  painter.setPen(QPen(kInk, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  paint(painter);
  return pixmap;
}

QIcon iconOf(const Painter& paint) {
  QIcon icon;
  for (int size : {16, 24, 32, 48}) icon.addPixmap(render(size, paint));
  return icon;
}

void page(QPainter& p) {
  p.setBrush(kPaper);
  p.drawPolygon(
      QPolygonF({QPointF(7, 3), QPointF(20, 3), QPointF(26, 9), QPointF(26, 29), QPointF(7, 29)}));
  p.drawPolyline(QPolygonF({QPointF(20, 3), QPointF(20, 9), QPointF(26, 9)}));
}

void plus(QPainter& p, QPointF centre, QColor colour) {
  p.setPen(Qt::NoPen);
  p.setBrush(colour);
  p.drawEllipse(centre, 7, 7);
  p.setPen(QPen(Qt::white, 2.4, Qt::SolidLine, Qt::RoundCap));
  p.drawLine(centre + QPointF(-3.5, 0), centre + QPointF(3.5, 0));
  p.drawLine(centre + QPointF(0, -3.5), centre + QPointF(0, 3.5));
}

void module(QPainter& p) {
  // The alarm module: a box with a small antenna and two status lights.
  p.setBrush(kGrey);
  p.drawRoundedRect(QRectF(5, 17, 22, 12), 2, 2);
  p.drawLine(QPointF(22, 17), QPointF(24, 12));
  p.setPen(Qt::NoPen);
  p.setBrush(kGreen);
  p.drawEllipse(QPointF(10, 23), 1.8, 1.8);
  p.setBrush(kAmber);
  p.drawEllipse(QPointF(15, 23), 1.8, 1.8);
}

void arrow(QPainter& p, bool down, QColor colour) {
  QPolygonF shape;
  if (down) {
    shape << QPointF(13, 1) << QPointF(19, 1) << QPointF(19, 8) << QPointF(24, 8) << QPointF(16, 16)
          << QPointF(8, 8) << QPointF(13, 8);
  } else {
    shape << QPointF(13, 16) << QPointF(19, 16) << QPointF(19, 9) << QPointF(24, 9)
          << QPointF(16, 1) << QPointF(8, 9) << QPointF(13, 9);
  }
  p.setPen(QPen(kInk, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.setBrush(colour);
  p.drawPolygon(shape);
}

void drawNew(QPainter& p) {
  page(p);
  plus(p, QPointF(22, 24), kGreen);
}

void drawOpen(QPainter& p) {
  p.setBrush(kAmber.darker(115));
  p.drawPolygon(QPolygonF({QPointF(3, 27), QPointF(3, 7), QPointF(11, 7), QPointF(14, 10),
                           QPointF(26, 10), QPointF(26, 27)}));
  p.setBrush(kAmber);
  p.drawPolygon(QPolygonF({QPointF(3, 27), QPointF(8, 15), QPointF(30, 15), QPointF(26, 27)}));
}

void drawSave(QPainter& p) {
  p.setBrush(kBlue);
  p.drawPolygon(
      QPolygonF({QPointF(4, 4), QPointF(24, 4), QPointF(28, 8), QPointF(28, 28), QPointF(4, 28)}));
  p.setBrush(kPaper);
  p.drawRect(QRectF(9, 4, 13, 8));
  p.drawRect(QRectF(8, 17, 16, 11));
  p.setBrush(kBlue);
  p.setPen(Qt::NoPen);
  p.drawRect(QRectF(17, 5.5, 3, 5));
}

void drawPrint(QPainter& p) {
  p.setBrush(kPaper);
  p.drawRect(QRectF(9, 3, 14, 10));
  p.setBrush(kGrey);
  p.drawRoundedRect(QRectF(3, 12, 26, 12), 2, 2);
  p.setBrush(kPaper);
  p.drawRect(QRectF(9, 19, 14, 10));
  p.drawLine(QPointF(12, 23), QPointF(20, 23));
  p.drawLine(QPointF(12, 26), QPointF(18, 26));
  p.setPen(Qt::NoPen);
  p.setBrush(kGreen);
  p.drawEllipse(QPointF(25, 16), 1.5, 1.5);
}

void drawDown(QPainter& p) {
  module(p);
  arrow(p, true, kGreen);
}

void drawUp(QPainter& p) {
  module(p);
  arrow(p, false, kBlue);
}

void drawClear(QPainter& p) {
  p.setBrush(kPaper);
  p.drawRect(QRectF(3, 5, 22, 20));
  p.setPen(QPen(kGrey, 1.2));
  for (double y : {10.0, 15.0, 20.0}) p.drawLine(QPointF(3, y), QPointF(25, y));
  p.drawLine(QPointF(10, 5), QPointF(10, 25));
  p.setPen(Qt::NoPen);
  p.setBrush(kRed);
  p.drawEllipse(QPointF(23, 23), 7, 7);
  p.setPen(QPen(Qt::white, 2.4, Qt::SolidLine, Qt::RoundCap));
  p.drawLine(QPointF(20, 20), QPointF(26, 26));
  p.drawLine(QPointF(26, 20), QPointF(20, 26));
}

void drawHelp(QPainter& p) {
  p.setBrush(kBlue);
  p.drawEllipse(QPointF(16, 16), 13, 13);
  p.setPen(QPen(Qt::white, 3.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  QPainterPath hook;
  hook.moveTo(11.5, 12.5);
  hook.cubicTo(11.5, 6.5, 20.5, 6.5, 20.5, 12.5);
  hook.cubicTo(20.5, 16, 16, 16, 16, 19.5);
  p.setBrush(Qt::NoBrush);
  p.drawPath(hook);
  p.setPen(Qt::NoPen);
  p.setBrush(Qt::white);
  p.drawEllipse(QPointF(16, 24.5), 2, 2);
}

void drawEnd(QPainter& p) {
  p.setBrush(kRed);
  p.drawEllipse(QPointF(16, 16), 13, 13);
  p.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap));
  p.setBrush(Qt::NoBrush);
  p.drawArc(QRectF(9, 9.5, 14, 14), 120 * 16, 300 * 16);
  p.drawLine(QPointF(16, 7), QPointF(16, 15));
}

void drawLog(QPainter& p) {
  page(p);
  p.setPen(QPen(kGrey, 1.4, Qt::SolidLine, Qt::RoundCap));
  for (double y : {12.0, 16.0, 20.0}) p.drawLine(QPointF(10, y), QPointF(21, y));
  p.setPen(QPen(kInk, 1.2));
  p.setBrush(kRed);
  p.drawEllipse(QPointF(23, 24), 5.5, 5.5);
}

}  // namespace

QIcon toolbarIcon(const QString& key) {
  // The desktop's icon theme comes first, so the toolbar matches the rest of the desktop; our
  // drawings stand in where the theme has no such icon (and on systems without themes).
  struct Entry {
    const char* key;
    const char* themeName;
    void (*paint)(QPainter&);
  };
  static const Entry kIcons[] = {
      {"tbNew", "document-new", drawNew},       {"tbOpen", "document-open", drawOpen},
      {"tbSave", "document-save", drawSave},    {"tbPrint", "document-print", drawPrint},
      {"tbDown", "quillon-download", drawDown}, {"tbUp", "quillon-upload", drawUp},
      {"tbClear", "edit-clear", drawClear},     {"tbHelp", "help-contents", drawHelp},
      {"tbEnd", "application-exit", drawEnd},   {"tbLog", "quillon-traffic-log", drawLog},
  };
  for (const Entry& entry : kIcons) {
    if (key == QLatin1String(entry.key))
      return QIcon::fromTheme(QLatin1String(entry.themeName), iconOf(entry.paint));
  }
  return {};
}

QPixmap portPicture(bool open, int size) {
  return render(size, [open](QPainter& p) {
    // A plug and socket: joined when the port is open, apart when it is closed.
    const double gap = open ? 0 : 5;
    p.setBrush(kGrey);
    p.drawRoundedRect(QRectF(3 - gap, 11, 11, 10), 2, 2);
    p.drawLine(QPointF(-1 - gap, 16), QPointF(3 - gap, 16));
    p.setBrush(open ? kGreen : kRed);
    p.drawRoundedRect(QRectF(18 + gap, 9, 11, 14), 2, 2);
    p.drawLine(QPointF(29 + gap, 16), QPointF(33 + gap, 16));
    p.setPen(QPen(kInk, 2));
    p.drawLine(QPointF(14 - gap, 13.5), QPointF(18 + gap, 13.5));
    p.drawLine(QPointF(14 - gap, 18.5), QPointF(18 + gap, 18.5));
  });
}

QPixmap languageFlag(int language, int height) {
  if (language < 0 || language > 2) return {};
  const int width = height * 3 / 2;
  QPixmap pixmap(width, height);
  QPainter p(&pixmap);
  const double w = width;
  const double h = height;
  if (language == 1) {
    p.fillRect(QRectF(0, 0, w, h / 3), Qt::black);
    p.fillRect(QRectF(0, h / 3, w, h / 3), QColor(0xdd, 0x00, 0x00));
    p.fillRect(QRectF(0, 2 * h / 3, w, h - 2 * h / 3), QColor(0xff, 0xce, 0x00));
  } else if (language == 2) {
    p.fillRect(QRectF(0, 0, w / 3, h), QColor(0x00, 0x23, 0x95));
    p.fillRect(QRectF(w / 3, 0, w / 3, h), Qt::white);
    p.fillRect(QRectF(2 * w / 3, 0, w - 2 * w / 3, h), QColor(0xed, 0x29, 0x39));
  } else {
    const QColor red(0xc8, 0x10, 0x2e);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(QRectF(0, 0, w, h), QColor(0x01, 0x21, 0x69));
    p.setPen(QPen(Qt::white, h / 5));
    p.drawLine(QPointF(0, 0), QPointF(w, h));
    p.drawLine(QPointF(w, 0), QPointF(0, h));
    p.setPen(QPen(red, h / 12));
    p.drawLine(QPointF(0, 0), QPointF(w, h));
    p.drawLine(QPointF(w, 0), QPointF(0, h));
    p.setPen(Qt::NoPen);
    p.fillRect(QRectF(w / 2 - h / 6, 0, h / 3, h), Qt::white);
    p.fillRect(QRectF(0, h / 3, w, h / 3), Qt::white);
    p.fillRect(QRectF(w / 2 - h / 10, 0, h / 5, h), red);
    p.fillRect(QRectF(0, h / 2 - h / 10, w, h / 5), red);
  }
  return pixmap;
}

QIcon markColumnIcon(int column) {
  Painter paint;
  if (column == 1) {
    // Acknowledgement: a tick.
    paint = [](QPainter& p) {
      p.setPen(QPen(kGreen, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      p.drawPolyline(QPolygonF({QPointF(6, 17), QPointF(13, 24), QPointF(26, 8)}));
    };
  } else if (column == 2) {
    // Call back: a curved arrow returning.
    paint = [](QPainter& p) {
      p.setPen(QPen(kBlue, 3.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      p.setBrush(Qt::NoBrush);
      p.drawArc(QRectF(7, 7, 18, 18), 90 * 16, 270 * 16);
      p.setBrush(kBlue);
      p.setPen(Qt::NoPen);
      p.drawPolygon(QPolygonF({QPointF(16, 1), QPointF(16, 13), QPointF(9, 7)}));
    };
  } else if (column == 3) {
    // Ring: a bell.
    paint = [](QPainter& p) {
      p.setBrush(kAmber);
      QPainterPath bell;
      bell.moveTo(6, 24);
      bell.cubicTo(9, 20, 8, 6, 16, 6);
      bell.cubicTo(24, 6, 23, 20, 26, 24);
      bell.closeSubpath();
      p.drawPath(bell);
      p.drawEllipse(QPointF(16, 27), 2.5, 2.5);
    };
  } else {
    return {};
  }
  return iconOf(paint);
}

}  // namespace quillon::app
