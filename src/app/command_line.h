#pragma once
// What `quillon` is asked to do by its command line:
//   quillon [--port DEVICE] [FILE.EAY]    start, open the project, talk to that port
//   quillon --help | --version            print and end, without a window

#include <QString>
#include <QStringList>

namespace quillon::app {

struct CommandLine {
  enum class Action { Start, PrintHelp, PrintVersion, Error };
  Action action = Action::Start;
  QString text;     // the help, the version or the error to print
  QString project;  // FILE.EAY as given, or empty
  QString port;     // a device path or a port number, or empty for the settings' port
};

// `arguments` begins with the program's name, as QCoreApplication::arguments() has it.
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments);

// True when the command line only asks for the help or the version, which needs no screen.
[[nodiscard]] bool printsOnly(const QStringList& arguments);

}  // namespace quillon::app
