#include <QApplication>
#include <QFileInfo>

#include "app/main_window.h"
#include "app/window_settings.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName(quillon::app::kSettingsOrganisation);
  QApplication::setApplicationName(quillon::app::kSettingsApplication);
  // A project file named on the command line (or handed over by a file manager) is opened.
  // Its path is taken before start-up changes to the working directory.
  const QStringList arguments = QApplication::arguments();
  const QString project = arguments.size() > 1 ? QFileInfo(arguments[1]).absoluteFilePath() : "";
  quillon::app::Anfang window;
  window.show();
  if (!project.isEmpty()) (void)window.loadProject(project);
  return QApplication::exec();
}
