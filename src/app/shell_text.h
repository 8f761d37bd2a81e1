#pragma once
// Texts the main window builds from its state: the title, the clock and the file-dialog filter.

#include <QDateTime>
#include <QString>

namespace quillon::app {

inline constexpr int kTitleFilePartLimit = 50;

// "[" + file + "]" + " Quillon ", the bracketed part shortened to its first 15 and last 30
// characters around " ... " when it would be longer than 50 characters.
[[nodiscard]] QString titleFor(const QString& fileName);

// The table's "Description *.EAY|*.EAY" form as a Qt file-dialog filter "Description (*.EAY)".
[[nodiscard]] QString fileDialogFilter(const QString& tableFilter);

// "dd.MM.yyyy   hh:mm:ss", three blanks between date and time.
[[nodiscard]] QString clockText(const QDateTime& now);

}  // namespace quillon::app
