#pragma once
// The modal entry boxes of the tables: MInput for texts, TInput for phone numbers. Both answer
// with the text as it stands or with the private markers of the core (code 253 cancelled,
// code 254 an empty phone number confirmed).

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <string>

#include "text/ui_texts.h"

namespace quillon::app {

// The key code the core's filters work with: Backspace 8, Delete 127, Enter 13, a typed
// character its Windows-1252 code; -1 for a key that types nothing (arrows, Home ...).
[[nodiscard]] int keyCode(int qtKey, const QString& text);

class TextEntryBox : public QDialog {
  Q_OBJECT

 public:
  TextEntryBox(QWidget* parent, const UiTexts& texts);
  // Shows the box modally; the confirmed text, or the cancel marker. `preview` shows how a phone
  // will display the text: only for the texts that go to the module.
  [[nodiscard]] std::string run(const std::string& title, const std::string& start, int maxLength,
                                bool preview = true);

 private:
  void updateLabel();
  const UiTexts& m_texts;
  QLineEdit* m_edit;
  QLabel* m_count;
  QTextBrowser* m_preview;
  int m_maxLength = 0;
};

class PhoneEntryBox : public QDialog {
  Q_OBJECT

 public:
  PhoneEntryBox(QWidget* parent, const UiTexts& texts);
  // The confirmed number, the cancel marker, or the empty marker for OK on an empty box.
  [[nodiscard]] std::string run(const std::string& title, const std::string& start);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit* m_edit;
};

}  // namespace quillon::app
