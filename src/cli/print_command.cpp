// quillon-cli print FILE.EAY [-o OUT.txt|OUT.pdf] [--memo TEXT]: the listing of the tables, as
// the program prints it.

#include <QDate>
#include <QFile>
#include <QString>
#include <array>

#include "cli/command.h"
#include "cli/terminal_dialog.h"
#include "print/qt/print_command.h"

namespace quillon::cli {

namespace {

constexpr std::string_view kOutputOption = "-o";
constexpr std::string_view kMemoOption = "--memo";
constexpr std::array kPrintOptions{kOutputOption, kMemoOption};

std::string optionValue(const OptionValues& options, std::string_view name) {
  const auto it = options.find(name);
  return it == options.end() ? std::string() : it->second;
}

int runPrint(const CommandContext& context) {
  TerminalDialog dialog(context.err);
  Project project;
  const LoadResult loaded = ProjectFileLoad(context.arguments[0], project, context.texts, dialog);
  if (loaded.status != LoadStatus::Ok) return ExitCodeFor(loaded.status);

  const PrintArguments arguments{
      QFile::decodeName(context.arguments[0].c_str()),
      QFile::decodeName(optionValue(context.options, kOutputOption).c_str()),
      QString::fromStdString(optionValue(context.options, kMemoOption))};
  return writePrintOutput(project, arguments, QDate::currentDate(), context.out, context.err);
}

}  // namespace

extern const Command kPrintCommand;
const Command kPrintCommand{
    "print",
    "FILE.EAY [-o OUT] [--memo TEXT]",
    1,
    "write the tables as the printed listing (text or PDF)",
    "Loads FILE.EAY and writes the listing that Print puts on paper: filter texts,\n"
    "messages with their options, the SMS centre and the phone numbers, today's date\n"
    "and the memo TEXT. Without -o the listing goes to the standard output as UTF-8\n"
    "text; -o OUT.pdf writes a PDF (A4, page numbers), any other name OUT a text file.\n"
    "A file that cannot be written exits with 73.\n",
    runPrint,
    kPrintOptions,
};

}  // namespace quillon::cli
