#pragma once
// Puts a listing on paper: a monospaced font small enough for 80 columns, entries kept whole
// where they fit on a page, and at the foot of every page the title (the project file name, so
// a loose page still says where it belongs) and "page / pages".

#include <QFont>
#include <QPageLayout>
#include <QString>
#include <string_view>

class QPagedPaintDevice;

namespace quillon {

struct RenderResult {
  bool printed = false;
  int pages = 0;
  QString error;  // why a PDF file could not be written, in the system's words
};

// The system's fixed-pitch font at 10 points.
[[nodiscard]] QFont defaultListingFont();
// A4 portrait with a wide left margin for the punch holes of a file folder.
[[nodiscard]] QPageLayout defaultListingPageLayout();

// `listing` is Windows-1252 text as printListing makes it. Fails when the printer cannot be
// opened.
[[nodiscard]] RenderResult renderListing(QPagedPaintDevice& device, std::string_view listing,
                                         const QString& title, const QFont& font);

// The PDF is made in memory and written with the safe writer: `path` is replaced as a whole once
// the document is complete, or left as it was.
[[nodiscard]] RenderResult writeListingPdf(std::string_view listing, const QString& path,
                                           const QString& title,
                                           const QFont& font = defaultListingFont(),
                                           const QPageLayout& layout = defaultListingPageLayout());

}  // namespace quillon
