// quillon-cli print FILE.EAY [-o OUT] [--memo TEXT]: the listing of the tables, as the program
// prints it.

#include <QDate>
#include <QFile>

#include "cli/command.h"
#include "cli/terminal_dialog.h"
#include "print/qt/print_command.h"

namespace quillon::cli {

namespace {

int runPrint(const CommandContext& context) {
  std::string error;
  const auto arguments = parsePrintArguments(context.arguments, error);
  if (!arguments) {
    context.err << "quillon-cli: " << error
                << "\nTry 'quillon-cli print --help' for more information.\n";
    return kExitUsage;
  }
  TerminalDialog dialog(context.err);
  Project project;
  const LoadResult loaded = ProjectFileLoad(QFile::encodeName(arguments->projectPath).toStdString(),
                                            project, context.texts, dialog);
  if (loaded.status != LoadStatus::Ok) return ExitCodeFor(loaded.status);
  return writePrintOutput(project, *arguments, QDate::currentDate(), context.out, context.err);
}

}  // namespace

extern const Command kPrintCommand;
const Command kPrintCommand{
    "print",
    "FILE.EAY [-o OUT] [--memo TEXT]",
    0,
    "write the tables as the printed listing (text or PDF)",
    "Loads FILE.EAY and writes the listing that Print puts on paper: filter texts,\n"
    "messages with their options, the SMS centre and the phone numbers, today's date\n"
    "and the memo line. A file that cannot be written exits with 73.\n"
    "\n"
    "  -o OUT       OUT.pdf: a PDF (A4, page numbers); any other name: UTF-8 text\n"
    "               (default: UTF-8 text on the standard output)\n"
    "  --memo TEXT  the text of the memo line\n",
    runPrint,
    true,
};

}  // namespace quillon::cli
