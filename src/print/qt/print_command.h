#pragma once
// `quillon-cli print FILE.EAY [-o OUT.txt|OUT.pdf] [--memo TEXT]`: the listing as UTF-8 text on
// standard output or in a text file, or as a PDF when the output name ends in ".pdf".
// The CLI loads the project; these functions parse the arguments and write the listing.

#include <QDate>
#include <QString>
#include <QStringList>
#include <iosfwd>
#include <optional>

#include "project/project.h"

namespace quillon {

struct PrintArguments {
  QString projectPath;
  QString outputPath;  // empty: standard output
  QString memo;
};

inline constexpr const char* kPrintUsage =
    "usage: quillon-cli print FILE.EAY [-o OUT.txt|OUT.pdf] [--memo TEXT]";

// `arguments` are those after "print". On a mistake, nullopt and `error` says which.
[[nodiscard]] std::optional<PrintArguments> parsePrintArguments(const QStringList& arguments,
                                                                QString& error);

// Exit code when the output cannot be written (the "cannot create" of the BSD sysexits).
inline constexpr int kPrintCannotWrite = 73;

// Returns the process exit code: 0 written, kPrintCannotWrite otherwise. Works without a
// QGuiApplication (and without a display): the PDF brings its own for the time it takes.
[[nodiscard]] int writePrintOutput(const Project& project, const PrintArguments& arguments,
                                   const QDate& today, std::ostream& out, std::ostream& err);

}  // namespace quillon
