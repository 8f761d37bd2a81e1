// "identify" as the command line runs it, against telvane-sim on a real pseudo-terminal, with
// its traffic log.

#include "cli/identify_command.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <sstream>

#include "cli/cli.h"
#include "link/qt/port_names.h"
#include "sim_module.h"

namespace quillon {

using testing::SimModule;

class IdentifyCommandTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void runs_data();
  void runs();
  void wrongCommandLines();
  void logsTheTrafficInTheCurrentDirectoryByteForByte();
};

namespace {

const char* const kTelvane =
    "Version: 1.23\nBus type: Millenium M3\nDevice: Telvane\nFirmware: Alarmieren\n"
    "Nuber of messages: 100\nNumber of phone nrs.: 60\nReply: 007B090300003E\n";

struct Ran {
  int exitCode;
  QString out;
  QString err;
};

Ran runIdentify(const QStringList& arguments, bool interactive = false, const QString& input = {}) {
  std::vector<std::string> args;
  for (const QString& a : arguments) args.push_back(a.toStdString());
  std::istringstream in(input.toStdString());
  std::ostringstream out;
  std::ostringstream err;
  int exitCode = 0;
  if (interactive) {
    // Only a console of the test's own has a person at the terminal.
    UiTexts texts;
    texts.fill(kEnglish);
    Console console{in, out, err, true};
    exitCode = cli::RunIdentify({args, texts, out, err}, console);
  } else {
    args.insert(args.begin(), "identify");
    exitCode = cli::RunCli(args, out, err);
  }
  return {exitCode, QString::fromStdString(out.str()), QString::fromStdString(err.str())};
}

}  // namespace

void IdentifyCommandTest::runs_data() {
  QTest::addColumn<QStringList>("simOptions");
  QTest::addColumn<QStringList>("arguments");  // "LINK" stands for the simulator's link
  QTest::addColumn<QString>("input");          // typed on a terminal; none: no terminal
  QTest::addColumn<int>("exitCode");
  QTest::addColumn<QString>("out");
  QTest::addColumn<QString>("err");

  QTest::newRow("askedOnTheTerminal")
      << QStringList{} << QStringList{"--port=LINK", "--reply-timeout=3"} << "ok\n"
      << 0 << kTelvane << "Telvane ready ? [OK/cancel] ";
  QTest::newRow("cancelledOnTheTerminal")
      << QStringList{} << QStringList{"--port", "LINK"} << "cancel\n"
      << 2 << ""
      << "Telvane ready ? [OK/cancel] ";
  QTest::newRow("declinedWithoutATerminal")
      << QStringList{} << QStringList{"--port", "LINK"} << "" << 2 << ""
      << "Telvane ready ? - declined: no terminal to ask (use --yes)\n";
  QTest::newRow("silentModuleInGerman")
      << QStringList{"--silent-after", "0"}
      << QStringList{"--port", "LINK", "--yes", "--reply-timeout", "0.3", "--lang", "de"} << "" << 5
      << ""
      << "Timeout\nTelvane nicht bereit\n";
  QTest::newRow("portNumberFromTheSettingsStore")
      << QStringList{"--register", "6"} << QStringList{"--port", "6", "--yes"} << "" << 0
      << kTelvane << "";
}

void IdentifyCommandTest::runs() {
  QFETCH(QStringList, simOptions);
  QFETCH(QStringList, arguments);
  QFETCH(QString, input);
  QFETCH(int, exitCode);
  QFETCH(QString, out);
  QFETCH(QString, err);

  SimModule sim(QStringLiteral("ttySIM-cli-") + QTest::currentDataTag(), simOptions);
  const Ran ran =
      runIdentify(arguments.replaceInStrings("LINK", sim.link()), !input.isEmpty(), input);
  QCOMPARE(ran.exitCode, exitCode);
  QCOMPARE(ran.out, out);
  QCOMPARE(ran.err, err);
}

void IdentifyCommandTest::wrongCommandLines() {
  // Registered ports that name no device: never a fall-back to another device, never a crash.
  QSettings settings(kSettingsOrganisation, kSettingsApplication);
  settings.setValue("Ports/COM15", "");
  settings.setValue("Ports/COM4", QByteArray("\0\0", 2));
  settings.sync();
  const QString usage = "64 quillon-cli identify: ";
  const std::vector<std::pair<QStringList, QString>> rows = {
      {{"--yes"}, usage + "identify needs --port DEV"},
      {{"--port"}, usage + "option --port needs a value"},
      {{"--port", "/x", "--reply-timeout", "soon"},
       usage + "--reply-timeout needs a number of seconds, not 'soon'"},
      {{"--port", "/nonexistent/ttySIM", "--yes"},
       "1 Cannot open /nonexistent/ttySIM: No such file or directory"},
      {{"--port", "COM15", "--yes"},
       "1 No device for port 'COM15': the settings value Ports/COM15 in " + settings.fileName() +
           " is not a device name"},
      {{"--port", "4", "--yes"},
       "1 No device for port '4': the settings value Ports/COM4 in " + settings.fileName() +
           " is not a device name"},
      {{"--port", " ", "--yes"}, "1 No device for port ' ': not a device name"},
      {{"--port", "tty\x01S0", "--yes"}, "1 No device for port 'tty<1>S0': not a device name"}};
  // Twice: a refused name leaves nothing behind that could trouble the next run.
  for (int run = 0; run < 2; ++run) {
    for (const auto& [arguments, exitAndFirstLine] : rows) {
      const Ran ran = runIdentify(arguments);
      QCOMPARE(QString::number(ran.exitCode) + " " + ran.err.section('\n', 0, 0), exitAndFirstLine);
      QCOMPARE(ran.out, QString());
    }
  }
}

void IdentifyCommandTest::logsTheTrafficInTheCurrentDirectoryByteForByte() {
  SimModule sim(QStringLiteral("ttySIM-cli-log"), {});
  QTemporaryDir dir;
  const QString before = QDir::currentPath();
  QDir::setCurrent(dir.path());
  const Ran ran = runIdentify({"--port", sim.link(), "--yes", "--log"});
  QDir::setCurrent(before);
  QCOMPARE(ran.exitCode, 0);

  const QStringList logs = QDir(dir.path()).entryList({"*.LOG"}, QDir::Files);
  QCOMPARE(logs.size(), 1);
  QVERIFY2(QRegularExpression("^\\d{4}_\\d{2}_\\d{2}\\d{1,5}\\.LOG$").match(logs[0]).hasMatch(),
           qPrintable(logs[0]));
  QCOMPARE(ran.err, "Log file " + logs[0] + "  in directory: " + dir.path() + "\n");
  QFile file(dir.path() + "/" + logs[0]);
  QVERIFY(file.open(QIODevice::ReadOnly));
  QCOMPARE(file.readAll(), QByteArray("WRITE: ??\r\n"
                                      "READ: <6>\r\n"
                                      "WRITE: V\r\n"
                                      "READ: V000F\r\n"
                                      "WRITE: <6>\r\n"
                                      // A block's read ends at its end-of-block character;
                                      // the checksum behind it is taken without a read.
                                      "READ: 007B090300003E<253>F4\r\n"
                                      "LESEN: 007B090300003E<253>F4\r\n"
                                      "SCHREIBEN: <6>\r\n"));
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::IdentifyCommandTest)
#include "identify_command_test.moc"
