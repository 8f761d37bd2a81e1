#pragma once
// Working the main window from the keyboard: the platform's standard shortcuts on the file
// commands, a mnemonic on every menu and menu entry in either language, and a focus ring that
// shows clearly which control the next key goes to.

#include <QFocusFrame>
#include <QMenuBar>
#include <QObject>
#include <QPointer>
#include <QStringList>

namespace quillon::app {

// Gives each caption one mnemonic ("&" before a letter), none shared within the list. A caption
// that carries one already keeps it. Free first letters go first, then the first letters of
// later words, then any free letter; a caption without a free letter stays as it is.
[[nodiscard]] QStringList withMnemonics(const QStringList& captions);

// The menu bar's titles and every menu's entries get their mnemonics (after each language
// switch: the texts come without them).
void addMnemonics(QMenuBar* bar);

// New, Open, Save, Save as, Print and Exit on QKeySequence's standard keys (Ctrl+Shift+S and
// Ctrl+Q where the desktop has none for Save as and Exit).
void addStandardShortcuts(QWidget* window);

// A ring in the highlight colour around whichever control has the keyboard focus, in every
// window of the program; the styles' own marks are too faint to see at a glance.
class FocusRing : public QFocusFrame {
  Q_OBJECT

 public:
  explicit FocusRing(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

class FocusMarker : public QObject {
  Q_OBJECT

 public:
  explicit FocusMarker(QObject* parent);
  ~FocusMarker() override;

 private:
  void follow(QWidget* focused);
  QPointer<FocusRing> m_ring;
};

}  // namespace quillon::app
