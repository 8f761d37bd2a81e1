#include "print/qt/listing_renderer.h"

#include <QBuffer>
#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QString>
#include <cmath>
#include <filesystem>
#include <string>

#include "print/listing.h"
#include "print/pages.h"
#include "project/atomic_file.h"
#include "text/code_page.h"

namespace quillon {
namespace {

constexpr qreal kFontPoints = 10.0;
constexpr qreal kSmallestPoints = 5.0;
// What QPrinter's high resolution gives a PDF, so both paths lay the listing out alike.
constexpr int kPdfResolution = 1200;
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

RenderResult renderListing(QPagedPaintDevice& printer, std::string_view listing,
                           const QString& title, const QFont& font) {
  QPainter painter;
  if (!painter.begin(&printer)) return {};
  const QRectF area(QPointF(0, 0),
                    printer.pageLayout().paintRectPixels(printer.logicalDpiX()).size());
  painter.setFont(fittingFont(font, &printer, area.width()));
  const QFontMetricsF metrics(painter.font(), &printer);
  const qreal lineHeight = metrics.lineSpacing();
  const int linesPerPage = static_cast<int>(std::floor(area.height() / lineHeight)) - kFootLines;

  const auto pages = paginateListing(listing, linesPerPage);
  const int pageCount = static_cast<int>(pages.size());
  for (int index = 0; index < pageCount; ++index) {
    if (index > 0 && !printer.newPage()) {
      painter.end();
      return {false, index, {}};
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
  return {finished, pageCount, {}};
}

RenderResult writeListingPdf(std::string_view listing, const QString& path, const QString& title,
                             const QFont& font, const QPageLayout& layout) {
  QBuffer document;
  document.open(QIODevice::WriteOnly);
  RenderResult result;
  {
    // The writer finishes the document when it goes out of scope.
    QPdfWriter pdf(&document);
    pdf.setResolution(kPdfResolution);
    pdf.setPageLayout(layout);
    pdf.setCreator(QStringLiteral("Quillon"));
    pdf.setTitle(title);
    result = renderListing(pdf, listing, title, font);
  }
  if (!result.printed) return result;
  const QByteArray& bytes = document.data();
  const WriteResult written = WriteFileReplacing(
      std::filesystem::path(QFile::encodeName(path).toStdString()),
      std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
  if (!written.ok) {
    result.printed = false;
    result.error = QString::fromStdString(written.error);
  }
  return result;
}

}  // namespace quillon
