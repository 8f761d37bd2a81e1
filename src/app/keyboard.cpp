#include "app/keyboard.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QSet>

namespace quillon::app {
namespace {

// The position of the mnemonic character in `caption`, or -1. "&&" is a literal ampersand.
qsizetype mnemonicAt(const QString& caption) {
  for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != '&') continue;
    if (caption[i + 1] == '&') {
      ++i;
      continue;
    }
    return i + 1;
  }
  return -1;
}

bool isFree(const QSet<QChar>& taken, QChar c) {
  return c.isLetter() && !taken.contains(c.toLower());
}

}  // namespace

QStringList withMnemonics(const QStringList& captions) {
  QStringList result = captions;
  QSet<QChar> taken;
  for (const QString& caption : captions) {
    if (const qsizetype at = mnemonicAt(caption); at >= 0) taken.insert(caption[at].toLower());
  }
  auto place = [&](qsizetype entry, qsizetype at) {
    taken.insert(result[entry][at].toLower());
    result[entry].insert(at, '&');
  };
  std::vector<qsizetype> waiting;
  for (qsizetype i = 0; i < result.size(); ++i) {
    const QString& caption = result[i];
    if (caption.isEmpty() || mnemonicAt(caption) >= 0) continue;
    if (isFree(taken, caption[0])) {
      place(i, 0);
    } else {
      waiting.push_back(i);
    }
  }
  for (const qsizetype i : waiting) {
    const QString& caption = result[i];
    qsizetype chosen = -1;
    for (qsizetype at = 1; at < caption.size() && chosen < 0; ++at) {
      if (caption[at - 1] == ' ' && isFree(taken, caption[at])) chosen = at;
    }
    for (qsizetype at = 1; at < caption.size() && chosen < 0; ++at) {
      if (isFree(taken, caption[at])) chosen = at;
    }
    if (chosen >= 0) place(i, chosen);
  }
  return result;
}

namespace {

void addMnemonics(const QList<QAction*>& actions) {
  QList<QAction*> named;
  QStringList captions;
  for (QAction* action : actions) {
    if (action->isSeparator()) continue;
    named << action;
    captions << action->text();
  }
  const QStringList marked = withMnemonics(captions);
  for (qsizetype i = 0; i < named.size(); ++i) {
    if (marked[i] != captions[i]) named[i]->setText(marked[i]);
    if (QMenu* menu = named[i]->menu()) addMnemonics(menu->actions());
  }
}

}  // namespace

void addMnemonics(QMenuBar* bar) { addMnemonics(bar->actions()); }

void addStandardShortcuts(QWidget* window) {
  struct Shortcut {
    const char* action;
    QKeySequence::StandardKey key;
    // Some desktops define no key for Save as or Quit; the common one stands in there.
    QKeySequence fallback;
  };
  const Shortcut shortcuts[] = {
      {"MenuFileNew", QKeySequence::New, {}},
      {"MenuFileOpen", QKeySequence::Open, {}},
      {"MenuFileSave", QKeySequence::Save, {}},
      {"MenuFileSaveAs", QKeySequence::SaveAs, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
      {"MenuFilePrint", QKeySequence::Print, {}},
      {"MenuFileIns13", QKeySequence::Quit, QKeySequence(Qt::CTRL | Qt::Key_Q)},
  };
  for (const Shortcut& shortcut : shortcuts) {
    auto* action = window->findChild<QAction*>(shortcut.action);
    if (!action) continue;
    QList<QKeySequence> keys = QKeySequence::keyBindings(shortcut.key);
    if (keys.isEmpty() && !shortcut.fallback.isEmpty()) keys << shortcut.fallback;
    action->setShortcuts(keys);
  }
}

FocusRing::FocusRing(QWidget* parent) : QFocusFrame(parent) { setObjectName("focusRing"); }

void FocusRing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPen pen(palette().color(QPalette::Active, QPalette::Highlight), 2.5);
  painter.setPen(pen);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1.25, 1.25, -1.25, -1.25), 3, 3);
}

FocusMarker::FocusMarker(QObject* parent) : QObject(parent) {
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* focused) { follow(focused); });
  follow(QApplication::focusWidget());
}

FocusMarker::~FocusMarker() { delete m_ring; }

void FocusMarker::follow(QWidget* focused) {
  // Menus and whole windows show their focus themselves.
  const bool marked = focused && !focused->isWindow() && !qobject_cast<QMenuBar*>(focused) &&
                      !qobject_cast<QMenu*>(focused);
  if (!m_ring) {
    if (!marked) return;
    m_ring = new FocusRing;
  }
  m_ring->setWidget(marked ? focused : nullptr);
}

}  // namespace quillon::app
