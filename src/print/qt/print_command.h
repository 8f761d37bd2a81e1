#pragma once
// `quillon-cli print FILE.EAY [-o OUT] [--memo TEXT]`: the listing as UTF-8 text on the standard
// output or in a text file, or as a PDF when the output name ends in ".pdf". The CLI loads the
// project; these read the command's arguments and write the listing.

#include <QDate>
#include <QString>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "project/project.h"

namespace quillon {

struct PrintArguments {
  QString projectPath;
  QString outputPath;  // empty: standard output
  QString memo;
};

// `arguments` are those after "print", in the order given (UTF-8). On a mistake, nullopt and
// `error` says which.
[[nodiscard]] std::optional<PrintArguments> parsePrintArguments(
    const std::vector<std::string>& arguments, std::string& error);

// Exit code when the output cannot be written (the "cannot create" of the BSD sysexits).
inline constexpr int kPrintCannotWrite = 73;

// Returns the process exit code: 0 written, kPrintCannotWrite otherwise. Works without a
// QGuiApplication (and without a display): the PDF brings its own for the time it takes.
[[nodiscard]] int writePrintOutput(const Project& project, const PrintArguments& arguments,
                                   const QDate& today, std::ostream& out, std::ostream& err);

}  // namespace quillon
