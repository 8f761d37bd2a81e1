// Renders the main window into PNG files for the documentation:
//   quillon-screenshot OUTPUT.png LANGUAGE [PROJECT.EAY] [PAGE]
// LANGUAGE 0 English, 1 German; PAGE the tab page index (0 messages .. 3 flags). Uses a settings
// file of its own, so the user's settings are neither read nor changed.

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "app/main_window.h"
#include "app/png_file.h"
#include "app/window_settings.h"

namespace {

// Answers every box with its default, so nothing waits for a click.
class DefaultAnswers : public quillon::UserDialog {
 public:
  quillon::BoxAnswer ask(const quillon::Box& box) override { return box.defaultAnswer; }
};

}  // namespace

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) {
    std::fprintf(stderr, "usage: quillon-screenshot OUTPUT.png LANGUAGE [PROJECT.EAY] [PAGE]\n");
    return 2;
  }
  // Start-up changes to the project's folder: every path is made absolute before that.
  const QString output = QFileInfo(arguments[1]).absoluteFilePath();
  const QString project = arguments.size() > 3 ? QFileInfo(arguments[3]).absoluteFilePath() : "";
  QTemporaryDir home;
  QSettings settings(home.filePath("Kestrix.conf"), QSettings::IniFormat);
  const double dpi = QGuiApplication::primaryScreen()->logicalDotsPerInch();
  settings.setValue("Language/MyLang", arguments[2]);
  settings.setValue("Settings/MainWidth", quillon::app::pixelsToTwips(1180, dpi));
  settings.setValue("Settings/MainHeight", quillon::app::pixelsToTwips(720, dpi));
  if (!project.isEmpty()) settings.setValue("Settings/MyDir", QFileInfo(project).absolutePath());

  DefaultAnswers answers;
  quillon::app::AnfangServices services;
  services.settings = &settings;
  services.dialog = &answers;
  quillon::app::Anfang window(services);
  if (!project.isEmpty()) (void)window.loadProject(project);
  if (arguments.size() > 4) {
    window.findChild<QTabWidget*>("Eingabe")->setCurrentIndex(arguments[4].toInt());
  }
  window.show();
  int status = 1;
  // Let the file lists fill and the layout settle before the picture is taken.
  QTimer::singleShot(1500, &window, [&] {
    status = quillon::app::writePng(window.grab(), output) ? 0 : 1;
    if (status != 0) std::fprintf(stderr, "cannot write %s\n", qPrintable(output));
    QApplication::exit(status);
  });
  QApplication::exec();
  return status;
}
