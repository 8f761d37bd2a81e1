#include "print/qt/print_command.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include "print/listing.h"
#include "print/qt/listing_renderer.h"
#include "project/atomic_file.h"
#include "text/code_page.h"

namespace quillon {
namespace {

std::string toCp1252(const QString& text) { return utf8ToCp1252(text.toStdString()); }

// Fonts and painting need a QGuiApplication. The command line has none of its own, and a PDF
// needs no display, so it gets one on the offscreen platform for as long as the PDF takes.
class PaintingApplication {
 public:
  PaintingApplication() {
    if (QCoreApplication::instance() == nullptr) {
      m_application = std::make_unique<QGuiApplication>(m_argc, m_argv);
    }
  }
  PaintingApplication(const PaintingApplication&) = delete;
  PaintingApplication& operator=(const PaintingApplication&) = delete;

 private:
  char m_program[12] = "quillon-cli";
  char m_platformOption[10] = "-platform";
  char m_platform[10] = "offscreen";
  char* m_argv[4] = {m_program, m_platformOption, m_platform, nullptr};
  int m_argc = 3;
  std::unique_ptr<QGuiApplication> m_application;
};

constexpr std::string_view kOutputOption = "-o";
constexpr std::string_view kMemoOption = "--memo";

}  // namespace

std::optional<PrintArguments> parsePrintArguments(const std::vector<std::string>& arguments,
                                                  std::string& error) {
  PrintArguments parsed;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool output = argument == kOutputOption;
    if (output || argument == kMemoOption) {
      if (i + 1 >= arguments.size()) {
        error = "option " + argument + " needs a value";
        return std::nullopt;
      }
      const std::string& value = arguments[++i];
      if (output) {
        parsed.outputPath = QFile::decodeName(value.c_str());
      } else {
        parsed.memo = QString::fromStdString(value);
      }
    } else if (argument.starts_with("--memo=")) {
      parsed.memo = QString::fromStdString(argument.substr(kMemoOption.size() + 1));
    } else if (argument.size() > 1 && argument.front() == '-') {
      error = "unknown option '" + argument + "'";
      return std::nullopt;
    } else if (parsed.projectPath.isEmpty()) {
      parsed.projectPath = QFile::decodeName(argument.c_str());
    } else {
      error = "print takes one project file, not also '" + argument + "'";
      return std::nullopt;
    }
  }
  if (parsed.projectPath.isEmpty()) {
    error = "print needs a project file";
    return std::nullopt;
  }
  return parsed;
}

int writePrintOutput(const Project& project, const PrintArguments& arguments, const QDate& today,
                     std::ostream& out, std::ostream& err) {
  const QString title = QFileInfo(arguments.projectPath).fileName();
  const ListingOptions options{toCp1252(title),
                               toCp1252(today.toString(QStringLiteral("dd.MM.yyyy"))),
                               toCp1252(arguments.memo)};
  const std::string listing = printListing(project, options);

  if (arguments.outputPath.isEmpty()) {
    out << cp1252ToUtf8(listing);
    out.flush();
    return out ? 0 : kPrintCannotWrite;
  }
  std::string error;
  if (QFileInfo(arguments.outputPath).suffix().compare(QLatin1String("pdf"), Qt::CaseInsensitive) ==
      0) {
    const PaintingApplication application;
    const RenderResult written = writeListingPdf(listing, arguments.outputPath, title);
    if (written.printed) return 0;
    error = written.error.toStdString();
  } else {
    const WriteResult written = WriteFileReplacing(
        std::filesystem::path(QFile::encodeName(arguments.outputPath).toStdString()),
        cp1252ToUtf8(listing));
    if (written.ok) return 0;
    error = written.error;
  }
  err << "quillon-cli: cannot write " << arguments.outputPath.toStdString()
      << (error.empty() ? "" : ": " + error) << '\n';
  return kPrintCannotWrite;
}

}  // namespace quillon
