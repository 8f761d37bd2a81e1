#pragma once
// The main window's printing: "Print" (menu and toolbar) and the printer set-up of the file
// menu. Owned by the main window, so the page set-up and the last choices outlive one print.

#include <QDate>
#include <QPageLayout>
#include <QString>

#include "print/qt/prt_form.h"
#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"

class QWidget;

namespace quillon {

class PrintService {
 public:
  explicit PrintService(UserDialog& boxes);

  // MenuFileIns item 5: paper size, orientation and margins for every later print.
  void showPrinterSetup(QWidget* parent);

  // MenuFilePrint and "tbPrint": the dialog PrtForm, then the listing of `project`.
  // `projectPath` names the listing and suggests the PDF file name.
  void showPrintDialog(QWidget* parent, const Project& project, const UiTexts& texts,
                       const QString& projectPath);

  // What OK in PrtForm does; tells the user in a box when the printer or file cannot be used.
  [[nodiscard]] bool print(const PrintChoice& choice, const Project& project, const UiTexts& texts,
                           const QString& projectPath, const QDate& today);

  [[nodiscard]] const QPageLayout& pageLayout() const { return m_layout; }

 private:
  UserDialog& m_boxes;
  QPageLayout m_layout;
  PrintChoice m_last;
  bool m_hasPrinted = false;
};

}  // namespace quillon
