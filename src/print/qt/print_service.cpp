#include "print/qt/print_service.h"

#include <QDir>
#include <QFileInfo>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include "print/listing.h"
#include "print/qt/listing_renderer.h"
#include "text/code_page.h"

namespace quillon {
namespace {

std::string toCp1252(const QString& text) { return utf8ToCp1252(text.toStdString()); }

QString suggestedPdfPath(const QString& projectPath) {
  const QFileInfo info(projectPath.isEmpty() ? QStringLiteral("NEW.EAY") : projectPath);
  return info.dir().filePath(info.completeBaseName() + QStringLiteral(".pdf"));
}

}  // namespace

PrintService::PrintService(UserDialog& boxes)
    : m_boxes(boxes), m_layout(defaultListingPageLayout()) {}

void PrintService::showPrinterSetup(QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  if (!m_last.printerName.isEmpty()) printer.setPrinterName(m_last.printerName);
  printer.setPageLayout(m_layout);
  QPageSetupDialog dialog(&printer, parent);
  if (dialog.exec() == QDialog::Accepted) m_layout = printer.pageLayout();
}

void PrintService::showPrintDialog(QWidget* parent, const Project& project, const UiTexts& texts,
                                   const QString& projectPath) {
  PrtForm form(texts, QPrinterInfo::availablePrinterNames(), QPrinterInfo::defaultPrinterName(),
               parent);
  PrintChoice preset = m_last;
  if (!m_hasPrinted) {
    preset.printerName = QPrinterInfo::defaultPrinterName();
    preset.fontFamily = defaultListingFont().family();
  }
  if (preset.pdfPath.isEmpty()) preset.pdfPath = suggestedPdfPath(projectPath);
  form.setChoice(preset);
  if (form.exec() != QDialog::Accepted) return;
  (void)print(form.choice(), project, texts, projectPath, QDate::currentDate());
}

bool PrintService::print(const PrintChoice& choice, const Project& project, const UiTexts& texts,
                         const QString& projectPath, const QDate& today) {
  m_last = choice;
  m_hasPrinted = true;
  const ListingOptions options{toCp1252(QFileInfo(projectPath).fileName()),
                               toCp1252(today.toString(QStringLiteral("dd.MM.yyyy"))),
                               toCp1252(choice.memo)};
  const std::string listing = printListing(project, options);

  const QString title = QFileInfo(projectPath).fileName();
  QFont font = defaultListingFont();
  if (!choice.fontFamily.isEmpty()) font.setFamily(choice.fontFamily);

  RenderResult result;
  if (choice.toPdf()) {
    result = writeListingPdf(listing, choice.pdfPath, title, font, m_layout);
  } else {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPrinterName(choice.printerName);
    printer.setPageLayout(m_layout);
    printer.setCreator(QStringLiteral("Quillon"));
    printer.setDocName(title);
    result = renderListing(printer, listing, title, font);
  }
  if (result.printed) return true;
  std::string where = toCp1252(choice.toPdf() ? choice.pdfPath : choice.printerName);
  if (!result.error.isEmpty()) where += ": " + toCp1252(result.error);
  m_boxes.tell(kMainTitle,
               (texts.german() ? "Drucken nicht m\xF6glich: " : "Printing failed: ") + where,
               BoxIcon::Critical);
  return false;
}

}  // namespace quillon
