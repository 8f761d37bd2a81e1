#include "app/message_box_dialog.h"

#include <QApplication>
#include <QMessageBox>

#include "app/qt_text.h"

namespace quillon::app {
namespace {

QMessageBox::Icon qtIcon(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Critical:
      return QMessageBox::Critical;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons qtButtons(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case BoxButtons::Ok:
      break;
  }
  return QMessageBox::Ok;
}

QMessageBox::StandardButton qtButton(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::Cancel:
      return QMessageBox::Cancel;
    case BoxAnswer::Yes:
      return QMessageBox::Yes;
    case BoxAnswer::No:
      return QMessageBox::No;
    case BoxAnswer::Ok:
      break;
  }
  return QMessageBox::Ok;
}

BoxAnswer answerOf(int button, BoxButtons buttons) {
  switch (button) {
    case QMessageBox::Yes:
      return BoxAnswer::Yes;
    case QMessageBox::No:
      return BoxAnswer::No;
    case QMessageBox::Cancel:
      return BoxAnswer::Cancel;
    case QMessageBox::Ok:
      return BoxAnswer::Ok;
    default:
      break;
  }
  // Escape on a box without Cancel: the box's own closing answer.
  return buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

}  // namespace

BoxAnswer MessageBoxDialog::ask(const Box& box) {
  const QString title = box.title.empty() ? QString::fromLatin1(kMainTitle) : toQString(box.title);
  QMessageBox message(qtIcon(box.icon), title, toQString(box.text), qtButtons(box.buttons),
                      m_parent.data());
  message.setDefaultButton(qtButton(box.defaultAnswer));
  // A box can come up in the middle of a load or save that shows the hourglass; the user needs
  // the ordinary pointer to answer it.
  const bool busy = QApplication::overrideCursor() != nullptr;
  if (busy) QApplication::setOverrideCursor(Qt::ArrowCursor);
  const int button = message.exec();
  if (busy) QApplication::restoreOverrideCursor();
  return answerOf(button, box.buttons);
}

}  // namespace quillon::app
