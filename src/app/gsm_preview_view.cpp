#include "app/gsm_preview_view.h"

#include <QStringList>

#include "app/qt_text.h"
#include "text/gsm_preview.h"

namespace quillon::app {
namespace {

// Listing every differing character of a 160-character text would drown the preview.
constexpr int kListedDifferences = 8;

QString character(char32_t code) {
  const char32_t one[] = {code};
  return QString::fromUcs4(one, 1).toHtmlEscaped();
}

}  // namespace

QString gsmPreviewHtml(const std::string& text, const UiTexts& texts) {
  if (text.empty()) return {};
  const std::vector<GsmPreviewChar> preview = gsmPreview(text);
  QString shown;
  QStringList differences;
  int differing = 0;
  for (std::size_t i = 0; i < preview.size(); ++i) {
    const GsmPreviewChar& c = preview[i];
    if (!c.differs) {
      shown += character(c.shown);
      continue;
    }
    const QString colour = c.sendable ? QStringLiteral("#b36b00") : QStringLiteral("#c83737");
    shown += QStringLiteral("<span style=\"background:%1;color:white\">%2</span>")
                 .arg(colour, character(c.shown));
    if (++differing > kListedDifferences) continue;
    const QString typed = toQString(text.substr(i, 1)).toHtmlEscaped();
    differences
        << (c.sendable
                ? QStringLiteral("%1: %2 \u2192 %3").arg(i + 1).arg(typed, character(c.shown))
                : QStringLiteral("%1: %2 \u2717").arg(i + 1).arg(typed));
  }
  QString html = "<b>" + toQString(texts[slot::kGsmPreview]).toHtmlEscaped() + "</b><br>" +
                 "<span style=\"font-family:monospace\">" + shown + "</span>";
  if (differing > 0) {
    if (differing > kListedDifferences) differences << QStringLiteral("\u2026");
    html += "<br><small>" + differences.join(QStringLiteral(", &nbsp;")) + "<br>" +
            toQString(texts[slot::kUnsendableMarked]).toHtmlEscaped() + "</small>";
  }
  return html;
}

}  // namespace quillon::app
