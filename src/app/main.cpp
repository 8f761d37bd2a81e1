#include <QApplication>
#include <QFileInfo>
#include <cstdio>

#include "app/command_line.h"
#include "app/device/module_commands.h"
#include "app/main_window.h"
#include "app/window_settings.h"

namespace {

QStringList rawArguments(int argc, char* argv[]) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  return arguments;
}

int print(const quillon::app::CommandLine& line) {
  const bool error = line.action == quillon::app::CommandLine::Action::Error;
  const QByteArray text = line.text.toLocal8Bit();
  std::fputs(text.constData(), error ? stderr : stdout);
  if (!error) return 0;
  std::fputs("\nTry 'quillon --help' for more information.\n", stderr);
  return 2;
}

}  // namespace

int main(int argc, char* argv[]) {
  using quillon::app::CommandLine;
  // The help and the version need no screen: a terminal without one answers them too.
  if (quillon::app::printsOnly(rawArguments(argc, argv))) {
    QCoreApplication core(argc, argv);
    return print(quillon::app::parseCommandLine(QCoreApplication::arguments()));
  }
  QApplication application(argc, argv);
  // Qt has taken its own options (-platform, -style ...) out of the arguments by now.
  const CommandLine line = quillon::app::parseCommandLine(QApplication::arguments());
  if (line.action != CommandLine::Action::Start) return print(line);
  QApplication::setOrganizationName(quillon::app::kSettingsOrganisation);
  QApplication::setApplicationName(quillon::app::kSettingsApplication);
  quillon::app::device::ModuleCommandsOptions devices;
  devices.port = line.port;
  // The project's path is taken before start-up changes to the working directory.
  const QString project = line.project.isEmpty() ? "" : QFileInfo(line.project).absoluteFilePath();
  quillon::app::AnfangServices services;
  services.devices = quillon::app::device::moduleCommandsFactory(devices);
  quillon::app::Anfang window(services);
  window.show();
  if (!project.isEmpty()) (void)window.loadProject(project);
  return QApplication::exec();
}
