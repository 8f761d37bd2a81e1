#pragma once
// The print dialog: printer (or a PDF file), font, and a memo line for the listing.

#include <QDialog>
#include <QString>
#include <QStringList>

#include "text/ui_texts.h"

class QComboBox;
class QDialogButtonBox;
class QFontComboBox;
class QLineEdit;
class QToolButton;

namespace quillon {

struct PrintChoice {
  QString printerName;  // empty: write a PDF file
  QString pdfPath;
  QString fontFamily;
  QString memo;

  [[nodiscard]] bool toPdf() const { return printerName.isEmpty(); }
};

class PrtForm : public QDialog {
  Q_OBJECT

 public:
  // `printers` are the installed printers; the "PDF file" entry is always offered after them.
  PrtForm(const UiTexts& texts, const QStringList& printers, const QString& defaultPrinter,
          QWidget* parent = nullptr);

  // Preselects what the user chose last time (or sensible defaults).
  void setChoice(const PrintChoice& choice);
  [[nodiscard]] PrintChoice choice() const;

 private:
  void updateControls();
  void browse();

  bool m_german;
  QComboBox* m_printer;
  QFontComboBox* m_font;
  QLineEdit* m_memo;
  QLineEdit* m_file;
  QToolButton* m_browse;
  QDialogButtonBox* m_buttons;
};

}  // namespace quillon
