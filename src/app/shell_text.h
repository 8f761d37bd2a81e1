#pragma once
// Texts the main window builds from its state: the title, the clock, the file-dialog filter and
// the port status shown until the serial link reports its own.

#include <QDateTime>
#include <QString>
#include <string>

namespace quillon::app {

inline constexpr int kTitleFilePartLimit = 50;

// "[" + file + "]" + " Quillon ", the bracketed part shortened to its first 15 and last 30
// characters around " ... " when it would be longer than 50 characters.
[[nodiscard]] QString titleFor(const QString& fileName);

// The table's "Description *.EAY|*.EAY" form as a Qt file-dialog filter "Description (*.EAY)".
[[nodiscard]] QString fileDialogFilter(const QString& tableFilter);

// "dd.MM.yyyy   hh:mm:ss", three blanks between date and time.
[[nodiscard]] QString clockText(const QDateTime& now);

// The port status text of a closed port at the default line settings, in the serial link's
// form ("COM 1,9600, N ,8 ,1 not active"); shown until a link reports its own status.
[[nodiscard]] std::string portStatusBeforeLink(int portNumber);

}  // namespace quillon::app
