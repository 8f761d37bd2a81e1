// quillon's command line: a project file and --port start the window, --help and --version only
// print, and anything else is an error instead of a project called "--help".

#include <QtTest>

#include "app/command_line.h"

using quillon::app::CommandLine;

class CommandLineTest : public QObject {
  Q_OBJECT

 private slots:
  void parse_data();
  void parse();
};

void CommandLineTest::parse_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<int>("action");
  QTest::addColumn<QString>("project");
  QTest::addColumn<QString>("port");
  QTest::addColumn<QString>("text");  // a part of what is printed
  QTest::addColumn<bool>("printsOnly");
  const int start = int(CommandLine::Action::Start);
  const int help = int(CommandLine::Action::PrintHelp);
  const int version = int(CommandLine::Action::PrintVersion);
  const int error = int(CommandLine::Action::Error);
  QTest::newRow("nothing") << QStringList{"quillon"} << start << ""
                           << ""
                           << "" << false;
  QTest::newRow("projectFile") << QStringList{"quillon", "Anlage.EAY"} << start << "Anlage.EAY"
                               << ""
                               << "" << false;
  QTest::newRow("portAndProject") << QStringList{"quillon", "--port", "/dev/ttyUSB0", "Anlage.EAY"}
                                  << start << "Anlage.EAY"
                                  << "/dev/ttyUSB0"
                                  << "" << false;
  QTest::newRow("portNumberWithEquals") << QStringList{"quillon", "--port=3"} << start << ""
                                        << "3"
                                        << "" << false;
  QTest::newRow("helpIsNoProject") << QStringList{"quillon", "--help"} << help << ""
                                   << ""
                                   << "Usage: quillon [options] [FILE.EAY]" << true;
  QTest::newRow("helpNamesThePort") << QStringList{"quillon", "-h"} << help << ""
                                    << ""
                                    << "--port <DEVICE>" << true;
  QTest::newRow("version") << QStringList{"quillon", "--version"} << version << ""
                           << ""
                           << "quillon 1.0.0\n"
                           << true;
  QTest::newRow("unknownOption") << QStringList{"quillon", "--bogus"} << error << ""
                                 << ""
                                 << "Unknown option 'bogus'." << false;
  QTest::newRow("twoFiles") << QStringList{"quillon", "a.EAY", "b.EAY"} << error << ""
                            << ""
                            << "One project file at most, not 2." << false;
  // After "--" a file may be called anything.
  QTest::newRow("fileNamedLikeAnOption")
      << QStringList{"quillon", "--", "--help"} << start << "--help"
      << ""
      << "" << false;
}

void CommandLineTest::parse() {
  QFETCH(QStringList, arguments);
  QFETCH(int, action);
  QFETCH(QString, project);
  QFETCH(QString, port);
  QFETCH(QString, text);
  QFETCH(bool, printsOnly);
  const CommandLine line = quillon::app::parseCommandLine(arguments);
  QCOMPARE(int(line.action), action);
  QCOMPARE(line.project, project);
  QCOMPARE(line.port, port);
  QVERIFY2(line.text.contains(text), qPrintable(line.text));
  QCOMPARE(quillon::app::printsOnly(arguments), printsOnly);
}

QTEST_GUILESS_MAIN(CommandLineTest)
#include "command_line_test.moc"
