#include "print/qt/listing_renderer.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QString>
#include <cmath>
#include <string>

#include "print/listing.h"
#include "print/pages.h"
#include "text/code_page.h"

namespace quillon {
namespace {

constexpr qreal kFontPoints = 10.0;
constexpr qreal kSmallestPoints = 5.0;
// The foot line sits below a blank line under the last listing line.
constexpr int kFootLines = 2;

QString toQString(const std::string& cp1252) {
  return QString::fromStdString(cp1252ToUtf8(cp1252));
}

// Shrinks the font until 80 columns fit across the printable width.
QFont fittingFont(QFont font, QPaintDevice* device, qreal width) {
  font.setFixedPitch(true);
  font.setStyleHint(QFont::TypeWriter);
  if (font.pointSizeF() <= 0) font.setPointSizeF(kFontPoints);
  const QString ruler(static_cast<qsizetype>(kListingWidth), QLatin1Char('M'));
  while (font.pointSizeF() > kSmallestPoints &&
         QFontMetricsF(font, device).horizontalAdvance(ruler) > width) {
    font.setPointSizeF(font.pointSizeF() - 0.5);
  }
  return font;
}

}  // namespace

QFont defaultListingFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPointSizeF(kFontPoints);
  return font;
}

QPageLayout defaultListingPageLayout() {
  return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(25, 15, 15, 15),
                     QPageLayout::Millimeter);
}

RenderResult renderListing(QPrinter& printer, std::string_view listing, const QString& title,
                           const QFont& font) {
  QPainter painter;
  if (!painter.begin(&printer)) return {};
  const QRectF area(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size());
  painter.setFont(fittingFont(font, &printer, area.width()));
  const QFontMetricsF metrics(painter.font(), &printer);
  const qreal lineHeight = metrics.lineSpacing();
  const int linesPerPage = static_cast<int>(std::floor(area.height() / lineHeight)) - kFootLines;

  const auto pages = paginateListing(listing, linesPerPage);
  const int pageCount = static_cast<int>(pages.size());
  for (int index = 0; index < pageCount; ++index) {
    if (index > 0 && !printer.newPage()) {
      painter.end();
      return {false, index};
    }
    qreal baseline = metrics.ascent();
    for (const auto& line : pages[static_cast<std::size_t>(index)]) {
      painter.drawText(QPointF(0, baseline), toQString(line));
      baseline += lineHeight;
    }
    const qreal footBaseline = area.height() - metrics.descent();
    painter.drawText(QPointF(0, footBaseline), title);
    const QString number =
        QString::number(index + 1) + QStringLiteral(" / ") + QString::number(pageCount);
    painter.drawText(QPointF(area.width() - metrics.horizontalAdvance(number), footBaseline),
                     number);
  }
  const bool finished = painter.end();
  return {finished, pageCount};
}

RenderResult writeListingPdf(std::string_view listing, const QString& path, const QString& title,
                             const QFont& font, const QPageLayout& layout) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(path);
  printer.setPageLayout(layout);
  printer.setCreator(QStringLiteral("Quillon"));
  printer.setDocName(title);
  return renderListing(printer, listing, title, font);
}

}  // namespace quillon
