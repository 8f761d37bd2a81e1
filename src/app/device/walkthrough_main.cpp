// Renders the walkthrough "Try it with the simulated module" for the documentation:
//   quillon-walkthrough OUTPUT_DIR TELVANE_SIM PROJECT.EAY
// Starts the simulated module on a pseudo-terminal of its own, opens the main window with the
// real device commands on port 1, downloads the project, reads it back into a new project, and
// takes a picture of the screen at each step. Every box is answered with its default, and the
// user's settings are neither read nor changed. Meant to run under xvfb-run.

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>

#include "app/device/module_commands.h"
#include "app/main_window.h"
#include "app/png_file.h"
#include "app/window_settings.h"

namespace {

class DefaultAnswers : public quillon::UserDialog {
 public:
  quillon::BoxAnswer ask(const quillon::Box& box) override { return box.defaultAnswer; }
};

bool g_failed = false;

void shoot(const QString& path) {
  QApplication::processEvents();
  // The part of the screen the program's windows cover, with a small margin.
  QRect covered;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) covered |= window->frameGeometry();
  }
  covered = covered.adjusted(-8, -8, 8, 8) & QGuiApplication::primaryScreen()->geometry();
  if (!quillon::app::writePng(QGuiApplication::primaryScreen()->grabWindow(
                                  0, covered.x(), covered.y(), covered.width(), covered.height()),
                              path)) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    g_failed = true;
  }
}

// Runs `step` from the event loop once `ready` holds, polling every 20 ms.
void whenReady(std::function<bool()> ready, std::function<void()> step) {
  auto* timer = new QTimer;
  QObject::connect(timer, &QTimer::timeout, [timer, ready, step] {
    if (!ready()) return;
    timer->stop();
    timer->deleteLater();
    step();
  });
  timer->start(20);
}

QWidget* modalNamed(const char* name) {
  QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->objectName() == name && modal->isVisible() ? modal : nullptr;
}

}  // namespace

int main(int argc, char* argv[]) {
  // The simulated module registers itself as port 1 in a settings store of this run only.
  QTemporaryDir home;
  qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
  QApplication application(argc, argv);
  QApplication::setOrganizationName(quillon::kSettingsOrganisation);
  QApplication::setApplicationName(quillon::kSettingsApplication);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 4) {
    std::fprintf(stderr, "usage: quillon-walkthrough OUTPUT_DIR TELVANE_SIM PROJECT.EAY\n");
    return 2;
  }
  const QDir output(QFileInfo(arguments[1]).absoluteFilePath());
  const QString project = QFileInfo(arguments[3]).absoluteFilePath();

  QProcess sim;
  sim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  // Slow enough that the transfer window can be seen at work.
  sim.start(arguments[2],
            {"--link", home.filePath("telvane"), "--register", "1", "--baud", "9600"});
  if (!sim.waitForReadyRead(10000)) {
    std::fprintf(stderr, "the simulated module did not start\n");
    return 1;
  }

  QSettings settings(home.filePath("Kestrix.conf"), QSettings::IniFormat);
  const double dpi = QGuiApplication::primaryScreen()->logicalDotsPerInch();
  settings.setValue("Settings/MainLeft", quillon::app::pixelsToTwips(20, dpi));
  settings.setValue("Settings/MainTop", quillon::app::pixelsToTwips(20, dpi));
  settings.setValue("Settings/MyDir", QFileInfo(project).absolutePath());

  DefaultAnswers answers;
  quillon::app::device::ModuleCommandsOptions options;
  quillon::app::device::ModuleCommands* commands = nullptr;
  options.created = [&](quillon::app::device::ModuleCommands& created) { commands = &created; };
  quillon::app::AnfangServices services;
  services.settings = &settings;
  services.dialog = &answers;
  services.devices = quillon::app::device::moduleCommandsFactory(options);
  quillon::app::Anfang window(services);
  (void)window.loadProject(project);
  window.show();

  QTimer::singleShot(1500, &window, [&] {
    // 1. Download all, pictured with the transfer window's details open half-way.
    quillon::app::device::Term* term = &commands->term();
    // Every transfer opens short: the details are opened once the messages are on their way.
    whenReady(
        [term] {
          return term->isVisible() && term->findChild<QLabel*>("lblInhalt")->text() == "Messages";
        },
        [term] { term->findChild<QPushButton*>("Command1")->click(); });
    whenReady(
        [term] {
          return term->isVisible() && term->windowTitle() == "Download active" &&
                 term->findChild<QLabel*>("lblInhalt")->text() == "Messages" &&
                 term->findChild<QProgressBar*>("Laufzeit")->value() >= 40;
        },
        [&output] { shoot(output.filePath("walkthrough-download.png")); });
    window.findChild<QAction*>("MenuConnDownAll")->trigger();

    // 2. A new project, then Read all.
    window.state().project.changed = false;
    window.fileNew();
    window.findChild<QAction*>("MenuConnUpAll")->trigger();
    shoot(output.filePath("walkthrough-read-back.png"));

    // 3. The identification and the port settings.
    whenReady([] { return modalNamed("frmVersion") != nullptr; },
              [&output] {
                shoot(output.filePath("walkthrough-version.png"));
                modalNamed("frmVersion")->findChild<QPushButton*>("cmdOK")->click();
              });
    window.findChild<QAction*>("mnuConfigVersion")->trigger();
    whenReady([] { return modalNamed("frmProperties") != nullptr; },
              [&output] {
                shoot(output.filePath("walkthrough-port.png"));
                modalNamed("frmProperties")->findChild<QPushButton*>("cmdCancel")->click();
              });
    window.findChild<QAction*>("MenuConfigCom")->trigger();
    QApplication::exit(g_failed ? 1 : 0);
  });
  const int status = QApplication::exec();
  sim.closeWriteChannel();
  sim.waitForFinished(5000);
  return status;
}
