#pragma once
// One main window with everything it uses from the outside scripted: the boxes (answers queued,
// every box recorded), the file dialogs (paths queued), the device commands (calls recorded) and
// a settings file of its own in a temporary directory.

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "app/main_window.h"
#include "support/scripted_dialog.h"

namespace quillon::app::testing {

class ScriptedFiles : public FilePicker {
 public:
  QString openFile(const QString& title, const QString&, const QString&) override {
    return next(title);
  }
  QString saveFile(const QString& title, const QString& filter, const QString&) override {
    filters << filter;
    return next(title);
  }
  std::deque<QString> paths;  // an empty entry, or none left, cancels the dialog
  QStringList titles;
  QStringList filters;

 private:
  QString next(const QString& title) {
    titles << title;
    const QString path = paths.empty() ? QString() : paths.front();
    if (!paths.empty()) paths.pop_front();
    return path;
  }
};

class RecordingDevices : public DeviceCommands {
 public:
  void downloadAll() override { calls << "downloadAll"; }
  void uploadAll() override { calls << "uploadAll"; }
  void downloadMessages() override { calls << "downloadMessages"; }
  void uploadMessages() override { calls << "uploadMessages"; }
  void downloadPhones() override { calls << "downloadPhones"; }
  void uploadPhones() override { calls << "uploadPhones"; }
  void downloadConfiguration() override { calls << "downloadConfiguration"; }
  void uploadConfiguration() override { calls << "uploadConfiguration"; }
  void downloadFlags() override { calls << "downloadFlags"; }
  void uploadFlags() override { calls << "uploadFlags"; }
  void acknowledgementRequest() override { calls << "acknowledgementRequest"; }
  void portSettings() override { calls << "portSettings"; }
  void smsCentreList() override { calls << "smsCentreList"; }
  void identifyDevice() override { calls << "identifyDevice"; }
  void readLogger() override { calls << "readLogger"; }
  void substitutionTable() override { calls << "substitutionTable"; }
  std::string portStatusText() const override { return {}; }
  void closePort() override { calls << "closePort"; }

  QStringList calls;
};

struct Harness {
  // `prepare` may fill the settings file before the window starts up; `devices`, given the
  // harness, makes the device commands (recorded ones without it).
  explicit Harness(const std::function<void(QSettings&)>& prepare = {},
                   const std::function<DeviceCommandsFactory(Harness&)>& devices = {})
      : settings(dir.filePath("Kestrix.conf"), QSettings::IniFormat) {
    if (prepare) prepare(settings);
    settings.sync();
    AnfangServices services;
    services.settings = &settings;
    services.dialog = &dialog;
    services.files = &files;
    services.devices = devices ? devices(*this) : [this](AppShell&) {
      auto recorder = std::make_unique<RecordingDevices>();
      recorded = recorder.get();
      return std::unique_ptr<DeviceCommands>(std::move(recorder));
    };
    services.startProgram = [this](const QString& program, const QStringList& arguments) {
      started << program + " " + arguments.join(' ');
      return false;
    };
    window = std::make_unique<Anfang>(services);
  }

  [[nodiscard]] QString path(const QString& name) const { return dir.filePath(name); }
  [[nodiscard]] quillon::Project& project() const { return window->state().project; }
  template <typename T>
  T* find(const QString& name) const {
    return window->findChild<T*>(name);
  }
  // Clicks the button or triggers the action of that name.
  void activate(const QString& name) const {
    if (auto* button = find<QAbstractButton>(name)) {
      button->click();
    } else {
      find<QAction>(name)->trigger();
    }
  }

  QTemporaryDir dir;
  QSettings settings;
  quillon::testing::ScriptedDialog dialog;
  ScriptedFiles files;
  RecordingDevices* recorded = nullptr;
  QStringList started;
  std::unique_ptr<Anfang> window;
};

// A double click as the mouse makes it: press, release, double click, release.
inline void doubleClick(QWidget* widget, QPoint position) {
  QTest::mousePress(widget, Qt::LeftButton, {}, position);
  QTest::mouseRelease(widget, Qt::LeftButton, {}, position);
  QTest::mouseDClick(widget, Qt::LeftButton, {}, position);
  QTest::mouseRelease(widget, Qt::LeftButton, {}, position);
}

// Types `text` key by key; characters beyond ASCII arrive as a key event carrying that text.
inline void typeText(QWidget* widget, const QString& text) {
  for (const QChar c : text) {
    if (c.unicode() < 0x80) {
      QTest::keyClick(widget, c.toLatin1());
    } else {
      QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), {});
    }
  }
}

// Finds the visible modal dialog named `name` (any name when empty).
inline std::function<QDialog*()> modal(const QString& name = {}) {
  return [name]() -> QDialog* {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    const bool match =
        dialog && dialog->isVisible() && (name.isEmpty() || dialog->objectName() == name);
    return match ? dialog : nullptr;
  };
}

// Acts once, from inside the event loop of whatever runs next, on the dialog `find` returns as
// soon as it returns one. Nothing is left armed once the object goes out of scope.
class WhenShown {
 public:
  WhenShown(std::function<QDialog*()> find, std::function<void(QDialog*)> act) {
    QObject::connect(&m_timer, &QTimer::timeout, [this, find, act] {
      if (QDialog* dialog = find()) {
        ran = true;
        m_timer.stop();
        act(dialog);
      }
    });
    m_timer.start(5);
  }
  bool ran = false;

 private:
  QTimer m_timer;
};

}  // namespace quillon::app::testing
