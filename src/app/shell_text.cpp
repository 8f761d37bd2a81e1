#include "app/shell_text.h"

#include <QStringList>

namespace quillon::app {

QString titleFor(const QString& fileName) {
  QString filePart = "[" + fileName + "]";
  if (filePart.size() > kTitleFilePartLimit) {
    filePart = "[" + fileName.left(15) + " ... " + fileName.right(30) + "]";
  }
  return filePart + " Quillon ";
}

QString fileDialogFilter(const QString& tableFilter) {
  const QStringList parts = tableFilter.split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString description = parts[i].trimmed();
    const QString pattern = parts[i + 1].trimmed();
    if (description.endsWith(pattern)) description.chop(pattern.size());
    description = description.trimmed();
    filters << (description.isEmpty() ? "(" + pattern + ")" : description + " (" + pattern + ")");
  }
  // Without a text table (no language chosen) the dialog still offers the project files.
  if (filters.isEmpty()) return QStringLiteral("(*.EAY)");
  return filters.join(";;");
}

QString clockText(const QDateTime& now) {
  return now.toString(QStringLiteral("dd.MM.yyyy   hh:mm:ss"));
}

}  // namespace quillon::app
