#include <QApplication>
#include <QFileInfo>

#include "app/device/module_commands.h"
#include "app/main_window.h"
#include "app/window_settings.h"

int main(int argc, char* argv[]) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName(quillon::app::kSettingsOrganisation);
  QApplication::setApplicationName(quillon::app::kSettingsApplication);
  // "--port DEV" talks to that device (or port number) instead of the settings' port number.
  QStringList arguments = QApplication::arguments();
  quillon::app::device::ModuleCommandsOptions devices;
  devices.port = quillon::app::device::takePortArgument(arguments);
  // A project file named on the command line (or handed over by a file manager) is opened.
  // Its path is taken before start-up changes to the working directory.
  const QString project = arguments.size() > 1 ? QFileInfo(arguments[1]).absoluteFilePath() : "";
  quillon::app::AnfangServices services;
  services.devices = quillon::app::device::moduleCommandsFactory(devices);
  quillon::app::Anfang window(services);
  window.show();
  if (!project.isEmpty()) (void)window.loadProject(project);
  return QApplication::exec();
}
