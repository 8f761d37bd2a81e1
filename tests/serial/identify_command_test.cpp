// "identify" as the command line runs it, against telvane-sim on a real pseudo-terminal.

#include "serial/identify_command.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <sstream>

#include "serial/port_names.h"
#include "sim_module.h"

namespace quillon {

using testing::SimModule;

class IdentifyCommandTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void runs_data();
  void runs();
  void wrongCommandLines_data();
  void wrongCommandLines();
  void logsTheTrafficInTheCurrentDirectory();
  void theCommandLineProgram();
};

namespace {

const char* const kTelvane =
    "Version: 1.23\n"
    "Bus type: Millenium M3\n"
    "Device: Telvane\n"
    "Firmware: Alarmieren\n"
    "Nuber of messages: 100\n"
    "Number of phone nrs.: 60\n"
    "Reply: 007B090300003E<253>\n";

}  // namespace

void IdentifyCommandTest::runs_data() {
  QTest::addColumn<QStringList>("simOptions");
  QTest::addColumn<QStringList>("arguments");  // "LINK" stands for the simulator's link
  QTest::addColumn<bool>("interactive");
  QTest::addColumn<QString>("input");
  QTest::addColumn<int>("exitCode");
  QTest::addColumn<QString>("out");
  QTest::addColumn<QString>("err");

  QTest::newRow("yesAnswersTheQuestion")
      << QStringList{} << QStringList{"--port", "LINK", "--yes", "--reply-timeout", "3"} << false
      << "" << 0 << kTelvane << "";
  QTest::newRow("askedOnTheTerminal")
      << QStringList{} << QStringList{"--port=LINK", "--reply-timeout=3"} << true << "ok\n"
      << 0 << kTelvane << "Telvane ready ? [OK/cancel] ";
  QTest::newRow("cancelledOnTheTerminal")
      << QStringList{} << QStringList{"--port", "LINK"} << true << "cancel\n"
      << 2 << ""
      << "Telvane ready ? [OK/cancel] ";
  QTest::newRow("declinedWithoutATerminal")
      << QStringList{} << QStringList{"--port", "LINK"} << false << "" << 2 << ""
      << "Telvane ready ? - declined: no terminal to ask (use --yes)\n";
  QTest::newRow("wrongDeviceStillShown")
      << QStringList{"--device-type", "2"} << QStringList{"--port", "LINK", "--yes"} << false << ""
      << 7
      << "Version: 1.23\nBus type: Millenium M3\nDevice: Quessa\nFirmware: Alarmieren\n"
         "Nuber of messages: 100\nNumber of phone nrs.: 60\nReply: 007B090200003E<253>\n"
      << QString::fromUtf8("Kestrix ist auf falsches Gerät eingestellt\n");
  QTest::newRow("silentModuleInGerman")
      << QStringList{"--silent-after", "0"}
      << QStringList{"--port", "LINK", "--yes", "--reply-timeout", "0.3", "--lang", "de"} << false
      << "" << 5 << ""
      << "Timeout\nTelvane nicht bereit\n";
  QTest::newRow("portNumberFromTheSettingsStore")
      << QStringList{"--register", "6"} << QStringList{"--port", "6", "--yes"} << false << "" << 0
      << kTelvane << "";
}

void IdentifyCommandTest::runs() {
  QFETCH(QStringList, simOptions);
  QFETCH(QStringList, arguments);
  QFETCH(bool, interactive);
  QFETCH(QString, input);
  QFETCH(int, exitCode);
  QFETCH(QString, out);
  QFETCH(QString, err);

  SimModule sim(QStringLiteral("ttySIM-cli-") + QTest::currentDataTag(), simOptions);
  std::vector<std::string> args;
  for (const QString& a : arguments)
    args.push_back(QString(a).replace("LINK", sim.link()).toStdString());
  std::istringstream in(input.toStdString());
  std::ostringstream outStream;
  std::ostringstream errStream;
  Console console{in, outStream, errStream, interactive};
  QCOMPARE(RunIdentifyCommand(args, console), exitCode);
  QCOMPARE(QString::fromStdString(outStream.str()), out);
  QCOMPARE(QString::fromStdString(errStream.str()), err);
}

void IdentifyCommandTest::wrongCommandLines_data() {
  QTest::addColumn<QStringList>("arguments");
  QTest::addColumn<int>("exitCode");
  QTest::addColumn<QString>("firstLine");

  QTest::newRow("noPort") << QStringList{"--yes"} << 64
                          << "quillon-cli identify: identify needs --port DEV";
  QTest::newRow("portWithoutValue")
      << QStringList{"--port"} << 64 << "quillon-cli identify: option --port needs a value";
  QTest::newRow("timeoutNotANumber")
      << QStringList{"--port", "/x", "--reply-timeout", "soon"} << 64
      << "quillon-cli identify: --reply-timeout needs a number of seconds, not 'soon'";
  QTest::newRow("timeoutZero") << QStringList{"--port", "/x", "--reply-timeout", "0"} << 64
                               << "quillon-cli identify: --reply-timeout needs a number of "
                                  "seconds, not '0'";
  QTest::newRow("unknownLanguage") << QStringList{"--port", "/x", "--lang", "fr"} << 64
                                   << "quillon-cli identify: unknown language 'fr': use en or de";
  QTest::newRow("unknownOption") << QStringList{"--port", "/x", "--speed", "9600"} << 64
                                 << "quillon-cli identify: unknown option '--speed'";
  QTest::newRow("yesWithValue") << QStringList{"--port", "/x", "--yes=1"} << 64
                                << "quillon-cli identify: --yes takes no value";
  QTest::newRow("missingDevice") << QStringList{"--port", "/nonexistent/ttySIM", "--yes"} << 1
                                 << "Cannot open /nonexistent/ttySIM: No such file or directory";
  QTest::newRow("unknownPortNumber")
      << QStringList{"--port", "COM15", "--yes"} << 1 << "No device for port COM15";
}

void IdentifyCommandTest::wrongCommandLines() {
  QFETCH(QStringList, arguments);
  QFETCH(int, exitCode);
  QFETCH(QString, firstLine);

  // Port 15 must name nothing, whatever ports the machine has.
  QSettings(kSettingsOrganisation, kSettingsApplication).setValue("Ports/COM15", "");
  std::vector<std::string> args;
  for (const QString& a : arguments) args.push_back(a.toStdString());
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  Console console{in, out, err, false};
  QCOMPARE(RunIdentifyCommand(args, console), exitCode);
  QCOMPARE(QString::fromStdString(out.str()), QString());
  QCOMPARE(QString::fromStdString(err.str()).section('\n', 0, 0), firstLine);
}

void IdentifyCommandTest::logsTheTrafficInTheCurrentDirectory() {
  SimModule sim(QStringLiteral("ttySIM-cli-log"));
  QTemporaryDir dir;
  const QString before = QDir::currentPath();
  QDir::setCurrent(dir.path());
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  Console console{in, out, err, false};
  const int result =
      RunIdentifyCommand({"--port", sim.link().toStdString(), "--yes", "--log"}, console);
  QDir::setCurrent(before);
  QCOMPARE(result, 0);

  const QStringList logs = QDir(dir.path()).entryList({"*.LOG"}, QDir::Files);
  QCOMPARE(logs.size(), 1);
  QVERIFY2(QRegularExpression("^\\d{4}_\\d{2}_\\d{2}\\d{1,5}\\.LOG$").match(logs[0]).hasMatch(),
           qPrintable(logs[0]));
  QCOMPARE(QString::fromStdString(err.str()),
           "Log file " + logs[0] + "  in directory: " + dir.path() + "\n");
  QFile file(dir.path() + "/" + logs[0]);
  QVERIFY(file.open(QIODevice::ReadOnly));
  QCOMPARE(file.readLine(), QByteArray("WRITE: ??\r\n"));
}

void IdentifyCommandTest::theCommandLineProgram() {
  SimModule sim(QStringLiteral("ttySIM-cli-program"), {"--messages", "400"});
  QProcess cli;
  cli.start(QStringLiteral(QUILLON_CLI),
            {"identify", "--lang", "de", "--yes", "--port", sim.link(), "--reply-timeout", "3"});
  QVERIFY(cli.waitForFinished(10000));
  QCOMPARE(cli.exitCode(), 0);
  QCOMPARE(QString::fromUtf8(cli.readAllStandardOutput()),
           QString("Version: 1.23\nBus type: Millenium M3\nDevice: Telvane\nFirmware: Alarmieren\n"
                   "Nuber of messages: 400\nNumber of phone nrs.: 60\n"
                   "Reply: 007B090301003E<253>\n"));
  QCOMPARE(cli.readAllStandardError(), QByteArray());

  cli.start(QStringLiteral(QUILLON_CLI), {"identify", "--port", sim.link(), "--colour"});
  QVERIFY(cli.waitForFinished(10000));
  QCOMPARE(cli.exitCode(), 64);
  QVERIFY(cli.readAllStandardError().startsWith("quillon-cli identify: unknown option '--colour'"));
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::IdentifyCommandTest)
#include "identify_command_test.moc"
