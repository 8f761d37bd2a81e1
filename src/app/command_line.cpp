#include "app/command_line.h"

#include <QCommandLineParser>

namespace quillon::app {

CommandLine parseCommandLine(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Configures the Telvane SMS alarm module: message texts, filter texts, phone "
                     "numbers, PIN and flag assignments, kept in *.EAY project files and sent to "
                     "the module over a serial line."));
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  const QCommandLineOption port(
      QStringLiteral("port"),
      QStringLiteral("Talk to DEVICE (a device path such as /dev/ttyUSB0, or a port number) "
                     "instead of the port chosen under Configuration > Serial port."),
      QStringLiteral("DEVICE"));
  parser.addOption(port);
  parser.addPositionalArgument(QStringLiteral("FILE.EAY"),
                               QStringLiteral("The project file to open."),
                               QStringLiteral("[FILE.EAY]"));

  CommandLine line;
  if (!parser.parse(arguments)) {
    line.action = CommandLine::Action::Error;
    line.text = parser.errorText();
    return line;
  }
  if (parser.isSet(help)) {
    line.action = CommandLine::Action::PrintHelp;
    // Qt names the program as it was called ("build-dev/src/app/quillon"); the usage names it.
    QString text = parser.helpText();
    const qsizetype options = text.indexOf(QStringLiteral(" ["));
    if (text.startsWith(QStringLiteral("Usage: ")) && options > 0)
      text.replace(0, options, QStringLiteral("Usage: quillon"));
    line.text = text;
    return line;
  }
  if (parser.isSet(version)) {
    line.action = CommandLine::Action::PrintVersion;
    line.text = QStringLiteral("quillon %1.%2.%3\n")
                    .arg(QUILLON_VERSION_MAJOR)
                    .arg(QUILLON_VERSION_MINOR)
                    .arg(QUILLON_VERSION_PATCH);
    return line;
  }
  const QStringList files = parser.positionalArguments();
  if (files.size() > 1) {
    line.action = CommandLine::Action::Error;
    line.text = QStringLiteral("One project file at most, not %1.").arg(files.size());
    return line;
  }
  if (!files.isEmpty()) line.project = files.front();
  line.port = parser.value(port);
  return line;
}

bool printsOnly(const QStringList& arguments) {
  for (qsizetype i = 1; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument == QStringLiteral("--")) return false;
    if (argument == QStringLiteral("-h") || argument == QStringLiteral("--help") ||
        argument == QStringLiteral("-?") || argument == QStringLiteral("--help-all") ||
        argument == QStringLiteral("-v") || argument == QStringLiteral("--version"))
      return true;
  }
  return false;
}

}  // namespace quillon::app
