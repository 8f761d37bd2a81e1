#pragma once
// The manual built into the program, for the systems where the help viewer cannot be started:
// one HTML page per language in the resources, with the pictures of docs/, in a browser window
// of its own that stays open beside the main window.

#include <QTextBrowser>
#include <QWidget>

class QPushButton;

namespace quillon::app {

// Anchors of the manual that the Help menu opens.
inline constexpr const char* kManualFirstSteps = "first-steps";
inline constexpr const char* kManualContents = "contents";

// "qrc:/manual/manual_de.html" for German, the English page for every other language.
[[nodiscard]] QUrl manualUrl(int language, const QString& anchor = {});

class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* parent = nullptr);

  // Shows the manual of `language` at `anchor`, and the window in front.
  void showManual(int language, const QString& anchor);
  [[nodiscard]] QTextBrowser* browser() const { return m_browser; }

 private:
  QTextBrowser* m_browser;
  QPushButton* m_back;
  QPushButton* m_contents;
  QPushButton* m_close;
  int m_language = 0;
};

}  // namespace quillon::app
