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

// Returns the process exit code: 0 written, 1 the output could not be written.
[[nodiscard]] int writePrintOutput(const Project& project, const PrintArguments& arguments,
                                   const QDate& today, std::ostream& out, std::ostream& err);

}  // namespace quillon
