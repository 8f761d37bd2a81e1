#include "print/qt/prt_form.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "text/code_page.h"
#include "text/ui_text_slots.h"

namespace quillon {
namespace {

QString fromCp1252(const std::string& text) { return QString::fromStdString(cp1252ToUtf8(text)); }

QString pick(bool german, const char* de, const char* en) {
  return QString::fromUtf8(german ? de : en);
}

}  // namespace

PrtForm::PrtForm(const UiTexts& texts, const QStringList& printers, const QString& defaultPrinter,
                 QWidget* parent)
    : QDialog(parent),
      m_german(texts.german()),
      m_printer(new QComboBox(this)),
      m_font(new QFontComboBox(this)),
      m_memo(new QLineEdit(this)),
      m_file(new QLineEdit(this)),
      m_browse(new QToolButton(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
  setObjectName(QStringLiteral("PrtForm"));
  setWindowTitle(fromCp1252(texts[slot::kPrint]));

  m_printer->setObjectName(QStringLiteral("cboPrinter"));
  for (const auto& name : printers) m_printer->addItem(name, name);
  m_printer->addItem(pick(m_german, "PDF-Datei", "PDF file"), QString());
  const int preset = m_printer->findData(defaultPrinter);
  m_printer->setCurrentIndex(preset >= 0 && !defaultPrinter.isEmpty() ? preset : 0);

  // Only fixed-pitch fonts keep the columns of the phone list straight.
  m_font->setObjectName(QStringLiteral("cboFont"));
  m_font->setFontFilters(QFontComboBox::MonospacedFonts);

  m_memo->setObjectName(QStringLiteral("txtMemo"));
  m_memo->setMaxLength(200);

  m_file->setObjectName(QStringLiteral("txtFile"));
  m_browse->setObjectName(QStringLiteral("cmdBrowse"));
  m_browse->setText(QStringLiteral("..."));
  auto* fileRow = new QHBoxLayout;
  fileRow->addWidget(m_file, 1);
  fileRow->addWidget(m_browse);

  auto* form = new QFormLayout;
  form->addRow(pick(m_german, "Drucker:", "Printer:"), m_printer);
  form->addRow(pick(m_german, "PDF-Datei:", "PDF file:"), fileRow);
  form->addRow(pick(m_german, "Schriftart:", "Font:"), m_font);
  form->addRow(QStringLiteral("Memo:"), m_memo);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(m_buttons);

  connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_printer, &QComboBox::currentIndexChanged, this, &PrtForm::updateControls);
  connect(m_file, &QLineEdit::textChanged, this, &PrtForm::updateControls);
  connect(m_browse, &QToolButton::clicked, this, &PrtForm::browse);
  updateControls();
}

void PrtForm::setChoice(const PrintChoice& choice) {
  const int index = m_printer->findData(choice.printerName);
  if (index >= 0) m_printer->setCurrentIndex(index);
  if (!choice.fontFamily.isEmpty()) m_font->setCurrentFont(QFont(choice.fontFamily));
  m_memo->setText(choice.memo);
  m_file->setText(choice.pdfPath);
  updateControls();
}

PrintChoice PrtForm::choice() const {
  PrintChoice c;
  c.printerName = m_printer->currentData().toString();
  c.pdfPath = c.printerName.isEmpty() ? m_file->text().trimmed() : QString();
  c.fontFamily = m_font->currentFont().family();
  c.memo = m_memo->text();
  return c;
}

void PrtForm::updateControls() {
  const bool pdf = m_printer->currentData().toString().isEmpty();
  m_file->setEnabled(pdf);
  m_browse->setEnabled(pdf);
  m_buttons->button(QDialogButtonBox::Ok)->setEnabled(!pdf || !m_file->text().trimmed().isEmpty());
}

void PrtForm::browse() {
  QString path = QFileDialog::getSaveFileName(this, pick(m_german, "PDF-Datei", "PDF file"),
                                              m_file->text(), QStringLiteral("PDF (*.pdf)"));
  if (path.isEmpty()) return;
  if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".pdf");
  m_file->setText(path);
}

}  // namespace quillon
