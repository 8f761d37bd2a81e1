#pragma once
// One main window with everything it uses from the outside scripted: the boxes (answers queued,
// every box recorded), the file dialogs (paths queued), the device commands (calls recorded) and
// a settings file of its own in a temporary directory.

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
#include <vector>

#include "app/main_window.h"
#include "support/scripted_dialog.h"

namespace quillon::app::testing {

class ScriptedFiles : public FilePicker {
 public:
  QString openFile(const QString& title, const QString& filter, const QString&) override {
    return next(title, filter);
  }
  QString saveFile(const QString& title, const QString& filter, const QString&) override {
    return next(title, filter);
  }
  std::deque<QString> paths;  // an empty entry, or none left, cancels the dialog
  QStringList titles;
  QStringList filters;

 private:
  QString next(const QString& title, const QString& filter) {
    titles << title;
    filters << filter;
    if (paths.empty()) return {};
    QString path = paths.front();
    paths.pop_front();
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
  std::string portStatusText() const override { return "COM 3,9600, N ,8 ,1 not active"; }
  void closePort() override { calls << "closePort"; }

  QStringList calls;
};

struct Harness {
  // `prepare` may fill the settings file before the window starts up. Without `recordDevices`
  // the window uses its own stand-in device commands.
  explicit Harness(const std::function<void(QSettings&)>& prepare = {}, bool recordDevices = true)
      : settings(dir.filePath("Kestrix.conf"), QSettings::IniFormat) {
    if (prepare) prepare(settings);
    settings.sync();
    AnfangServices services;
    services.settings = &settings;
    services.dialog = &dialog;
    services.files = &files;
    if (recordDevices) {
      services.devices = [this](AppShell&) {
        auto recorder = std::make_unique<RecordingDevices>();
        devices = recorder.get();
        return recorder;
      };
    }
    services.startProgram = [this](const QString& program, const QStringList& arguments) {
      started << program + " " + arguments.join(' ');
      return false;
    };
    window = std::make_unique<Anfang>(services);
  }

  [[nodiscard]] QString path(const QString& name) const { return dir.filePath(name); }

  QTemporaryDir dir;
  QSettings settings;
  quillon::testing::ScriptedDialog dialog;
  ScriptedFiles files;
  RecordingDevices* devices = nullptr;
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

// Answers the modal dialog that the next call opens, from inside its event loop. Nothing is
// left armed once the object goes out of scope.
class ModalAnswer {
 public:
  explicit ModalAnswer(std::function<void(QDialog*)> answer) : m_answer(std::move(answer)) {
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, [this] {
      if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        ran = true;
        m_answer(box);
      }
    });
    m_timer.start(0);
  }
  bool ran = false;

 private:
  std::function<void(QDialog*)> m_answer;
  QTimer m_timer;
};

}  // namespace quillon::app::testing
