// quillon's command line: a project file and --port start the window, --help and --version only
// print, and anything else is an error instead of a project called "--help".

#include <QtTest>

#include "app/command_line.h"

using quillon::app::CommandLine;
using Action = CommandLine::Action;

class CommandLineTest : public QObject {
  Q_OBJECT

 private slots:
  void parse();
};

void CommandLineTest::parse() {
  struct Row {
    QStringList arguments;  // after the program's name
    Action action;
    QString project;
    QString port;
    QString text;  // a part of what is printed
  };
  const Row rows[] = {
      {{}, Action::Start, "", "", ""},
      {{"Anlage.EAY"}, Action::Start, "Anlage.EAY", "", ""},
      {{"--port", "/dev/ttyUSB0", "Anlage.EAY"}, Action::Start, "Anlage.EAY", "/dev/ttyUSB0", ""},
      {{"--port=3"}, Action::Start, "", "3", ""},
      {{"--help"}, Action::PrintHelp, "", "", "Usage: quillon [options] [FILE.EAY]"},
      {{"-h"}, Action::PrintHelp, "", "", "--port <DEVICE>"},
      {{"--version"}, Action::PrintVersion, "", "", "quillon 1.0.0\n"},
      {{"--bogus"}, Action::Error, "", "", "Unknown option 'bogus'."},
      {{"a.EAY", "b.EAY"}, Action::Error, "", "", "One project file at most, not 2."},
      // After "--" a file may be called anything.
      {{"--", "--help"}, Action::Start, "--help", "", ""},
  };
  for (const Row& row : rows) {
    const QStringList arguments = QStringList{"quillon"} + row.arguments;
    const CommandLine line = quillon::app::parseCommandLine(arguments);
    QVERIFY2(line.action == row.action && line.project == row.project && line.port == row.port &&
                 line.text.contains(row.text),
             qPrintable(arguments.join(' ') + ": " + line.text));
    const bool printsOnly = row.action == Action::PrintHelp || row.action == Action::PrintVersion;
    QCOMPARE(quillon::app::printsOnly(arguments), printsOnly);
  }
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "command_line_test.moc"
