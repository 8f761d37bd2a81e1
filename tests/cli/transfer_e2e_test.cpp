// Downloads and uploads end to end: quillon-cli and the transfer procedures talking to
// telvane-sim over a real pseudo-terminal. Every transfer signs in with its one-second pause, so
// each test keeps its transfers few; reply time-outs are short.

#include <signal.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <string>
#include <vector>

#include "link/sign_in.h"
#include "project/project_file.h"
#include "scripted_dialog.h"
#include "serial/identify.h"
#include "serial/serial_link.h"
#include "serial/transfer_observer.h"
#include "sim_process.h"
#include "transfer/download.h"
#include "transfer/upload.h"

namespace quillon {
namespace {

using testing::ScriptedDialog;
using testing::SimProcess;

const std::string kReady = "Telvane ready ?";
// Long enough for a loaded machine; the simulator answers within milliseconds.
constexpr TimeOfDay kReplyTimeout = 3000;
// A wait counts from the whole second it began in; this one gives the module its chance.
constexpr TimeOfDay kShortButFair = 1500;

// A project as a user writes it: every option combination, umlauts, the acknowledgement pair,
// filters, an SMS centre and phone numbers that need cleaning, a PIN, flags and a reception flag,
// and what stays on the PC: comments, names, the station name, the ring option.
const char kRichProject[] =
    "M@Pumpe l\xE4uft;Kommentar 0\r\n"
    "MA\xDC"
    "berdruck Kessel;K1\r\n"
    "MBSt\xF6rung F\xF6rderband;K2\r\n"
    "MCT\xFCr offen \x96 Halle Stra\xDF"
    "e;K3\r\n"
    "MDNur Klingeln \xE4\xF6\xFC;K4\r\n"
    "MEKlingeln und Quittung \xC4\xD6\xDC;K5\r\n"
    "MFKlingeln und R\xFC"
    "ckruf;K6\r\n"
    "MGAlle drei Optionen;K7\r\n"
    "MQ*T#;Vielen Dank\r\n"
    "F01PUMPE1 EIN;setzt M20\r\n"
    "F02STATUS \xDC"
    "bersicht;Kommentar\r\n"
    "T+49 172 2270333;SMSC\r\n"
    "T0171/5551234;Meier\r\n"
    "T+49 (0)160 9001;Sch\xE4"
    "fer\r\n"
    "T(0)7531 12345;Leitstelle\r\n"
    "T12;zu kurz\r\n"
    "T+41791234567;Bodensee\r\n"
    "L1;;1267;Pumpstation M\xFChlbach\r\n"
    "E 1;1;1\r\n"
    "E 3;3;3\r\n"
    "E 7;7;60\r\n"
    "E12;20;10\r\n"
    "E16;-2;-1\r\n"
    "V1.0.0\r\n";

// What the phone download says about the numbers it cleans, one line per box.
const char kCleaningWarnings[] =
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. +49 172 2270333 wird gefiltert! \n"
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. 0171/5551234 wird gefiltert! \n"
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. +49 (0)160 9001 wird gefiltert! \n"
    "1. Zeichen der Telefonnummer nur Ziffer oder '+'. (0)7531 12345\n"
    "Telefonnummer enth\xC3\xA4lt ung\xC3\xBCltiges Zeichen. (0)7531 12345 wird gefiltert! \n";

struct MessageRow {
  std::string ack;
  std::string callBack;
  std::string ring;
  std::string text;
  std::string comment;
  friend bool operator==(const MessageRow&, const MessageRow&) = default;
};

MessageRow messageRow(const Project& project, int row) {
  const Table& m = project.messages;
  return {m.cell(row, kAckColumn), m.cell(row, kCallBackColumn), m.cell(row, kRingColumn),
          m.cell(row, kMessageTextColumn), m.cell(row, kMessageCommentColumn)};
}

std::vector<std::string> column(const Table& table, int column) {
  std::vector<std::string> cells;
  for (int row = 1; row <= table.rows(); ++row) cells.push_back(table.cell(row, column));
  return cells;
}

std::vector<std::string> flagEntries(const Project& project) {
  return {project.flags.entries.begin() + 1, project.flags.entries.begin() + 1 + kFlagCount};
}

bool writeFile(const QString& path, const std::string& bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) &&
         file.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
             static_cast<qint64>(bytes.size());
}

QByteArray readFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Project loadProject(const QString& path) {
  ScriptedDialog dialog;
  UiTexts texts;
  texts.fill(kEnglish);
  Project project;
  [[maybe_unused]] const LoadResult loaded =
      ProjectFileLoad(path.toStdString(), project, texts, dialog);
  return project;
}

struct CliRun {
  int exitCode = -1;
  QByteArray out;
  QByteArray err;
};

CliRun runCli(const QStringList& arguments) {
  QProcess cli;
  cli.start(QStringLiteral(QUILLON_CLI), arguments);
  CliRun run;
  if (!cli.waitForFinished(30000)) return run;
  run.exitCode = cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1;
  run.out = cli.readAllStandardOutput();
  run.err = cli.readAllStandardError();
  return run;
}

class StatusRecorder : public StatusDisplay {
 public:
  void setStatus(StatusPanel panel, const std::string& text) override {
    if (panel == StatusPanel::Transfer) transfer.push_back(text);
  }
  std::vector<std::string> transfer;
};

class JobRecorder : public TransferObserver {
 public:
  void transferStarted(const TransferJob& job) override { labels.push_back(job.contentLabel); }
  void transferEvent(const TransferEvent&) override {}
  std::vector<std::string> labels;
};

// The program's side for the procedures: the serial driver, a scripted dialog and English texts.
struct Rig {
  explicit Rig(const QString& device, TimeOfDay replyTimeout = kReplyTimeout) {
    link.setPort(PortId{0, device});
    EngineSettings settings;
    settings.replyTimeout = replyTimeout;
    link.setEngineSettings(settings);
    link.setObserver(&jobs);
    texts.fill(kEnglish);
  }
  TransferContext context(Project& project) { return {linkContext, texts, project, {}}; }

  ScriptedDialog dialog;
  StatusRecorder status;
  ModuleLimits limits;
  LinkSession session;
  SerialLink link{dialog};
  JobRecorder jobs;
  UiTexts texts;
  LinkContext linkContext{link, dialog, status, limits, session, kEnglish};
};

TransferJob job(const std::string& title, const std::string& label) {
  TransferJob j;
  j.title = title;
  j.contentLabel = label;
  return j;
}

}  // namespace

class TransferE2eTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void commandLineRoundTrip();
  void ctrlCCancelsTheDownload();
  void versionConflictPrintsTheIdentification();
  void loggerPrintsItsLines();
  void refusedPinSendsNothing();
  void nakStormStopsDownloadAll();
  void refusedKindDoesNotStopDownloadAll();
  void silentModuleWithFragmentsDeclined();
  void fourHundredMessagesRoundTrip();
  void fortyThousandCharactersInTwoParts();
};

void TransferE2eTest::commandLineRoundTrip() {
  SimProcess sim(QStringLiteral("ttySIM-cli-roundtrip"), {});
  const QString rich = sim.file("rich.EAY");
  const QString read = sim.file("read.EAY");
  QVERIFY(writeFile(rich, kRichProject));
  const QStringList link{"--port", sim.link(), "--yes", "--reply-timeout", "3"};

  const CliRun down = runCli(QStringList{"download"} + link + QStringList{rich});
  QCOMPARE(down.exitCode, 0);
  QCOMPARE(down.out, QByteArray());
  QCOMPARE(down.err, QByteArray(kCleaningWarnings));

  const CliRun up = runCli(QStringList{"upload", "--lang", "de"} + link + QStringList{"-o", read});
  QCOMPARE(up.exitCode, 0);
  QCOMPARE(up.err, QByteArray());

  const Project back = loadProject(read);
  const std::vector<MessageRow> messages{
      {"", "", "", "Pumpe l\xE4uft", ""},
      {"x", "", "",
       "\xDC"
       "berdruck Kessel",
       ""},
      {"", "x", "", "St\xF6rung F\xF6rderband", ""},
      {"x", "x", "",
       "T\xFCr offen \x96 Halle Stra\xDF"
       "e",
       ""},
      // The ring option never travels.
      {"", "", "", "Nur Klingeln \xE4\xF6\xFC", ""},
      {"x", "", "", "Klingeln und Quittung \xC4\xD6\xDC", ""},
      {"", "x", "",
       "Klingeln und R\xFC"
       "ckruf",
       ""},
      {"x", "x", "", "Alle drei Optionen", ""},
  };
  QCOMPARE(back.messages.rows(), 100);
  for (int row = 1; row <= 100; ++row) {
    const MessageRow expected =
        row <= 8 ? messages[static_cast<std::size_t>(row - 1)] : MessageRow{};
    QVERIFY2(messageRow(back, row) == expected, qPrintable(QString("message row %1").arg(row)));
  }
  QCOMPARE(back.ack, (AckRequest{"*T#", "Vielen Dank"}));
  std::vector<std::string> filters(kFilterRows);
  filters[0] = "PUMPE1 EIN";
  filters[1] =
      "STATUS \xDC"
      "bersicht";
  QCOMPARE(column(back.filters, kFilterTextColumn), filters);
  QCOMPARE(column(back.filters, kFilterCommentColumn), std::vector<std::string>(kFilterRows));

  QCOMPARE(back.smsCentre, std::string("+491722270333"));
  std::vector<std::string> phones(60);
  phones[0] = "01715551234";
  phones[1] = "+4901609001";
  phones[2] = "0753112345";
  phones[4] = "+41791234567";
  QCOMPARE(column(back.phones, kPhoneNumberColumn), phones);
  QCOMPARE(column(back.phones, kPhoneNameColumn), std::vector<std::string>(60));
  QCOMPARE(back.pin, std::string("4711"));
  QCOMPARE(back.station, std::string());
  std::vector<std::string> flags(kFlagCount, "-1;-1");
  flags[0] = "1;1";
  flags[2] = "3;3";
  flags[6] = "7;60";
  flags[11] = "20;10";
  flags[15] = "-2;-1";
  QCOMPARE(flagEntries(back), flags);

  // One kind read into an existing project: the rest stays as the project had it.
  const QString base = sim.file("base.EAY");
  const QString merged = sim.file("merged.EAY");
  QVERIFY(writeFile(base,
                    "M@Alt;Kommentar alt\r\n"
                    "T+4930123456;SMSC\r\n"
                    "L1;;04D2;Station alt\r\n"
                    "E 2;5;5\r\n"));
  const CliRun pin = runCli(QStringList{"upload", "--kind", "P", "--into", base} + link +
                            QStringList{"-o", merged});
  QCOMPARE(pin.exitCode, 0);
  const Project mixed = loadProject(merged);
  QCOMPARE(mixed.pin, std::string("4711"));
  QVERIFY(messageRow(mixed, 1) == (MessageRow{"", "", "", "Alt", "Kommentar alt"}));
  QCOMPARE(mixed.smsCentre, std::string("+4930123456"));
  QCOMPARE(mixed.station, std::string("Station alt"));
  QCOMPARE(mixed.flags.entries[2], std::string("5;5"));
}

void TransferE2eTest::ctrlCCancelsTheDownload() {
  // At 1200 baud every block of the messages takes half a second on the line.
  SimProcess sim(QStringLiteral("ttySIM-cli-ctrlc"), {"--baud", "1200"}, true);
  const QString rich = sim.file("rich.EAY");
  QVERIFY(writeFile(rich, kRichProject));
  QProcess cli;
  cli.start(QStringLiteral(QUILLON_CLI), {"download", "--kind", "M", "--port", sim.link(), "--yes",
                                          "--reply-timeout", "3", rich});
  QVERIFY(cli.waitForStarted());
  // The start identifier has reached the module: the blocks are on their way.
  QVERIFY(sim.waitForTrace("PC  > M", 10000));
  QElapsedTimer clock;
  clock.start();
  QCOMPARE(::kill(static_cast<pid_t>(cli.processId()), SIGINT), 0);
  QVERIFY(cli.waitForFinished(5000));
  QVERIFY2(clock.elapsed() < 1500, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(cli.exitStatus(), QProcess::NormalExit);
  QCOMPARE(cli.exitCode(), 3);
  QCOMPARE(cli.readAllStandardError(), QByteArray());
}

void TransferE2eTest::versionConflictPrintsTheIdentification() {
  SimProcess sim(QStringLiteral("ttySIM-cli-conflict"), {"--device-type", "1"});
  const QString rich = sim.file("rich.EAY");
  QVERIFY(writeFile(rich, kRichProject));
  const CliRun run = runCli({"download", "--port", sim.link(), "--yes", rich});
  QCOMPARE(run.exitCode, 7);
  QCOMPARE(run.out, QByteArray());
  QCOMPARE(run.err, QByteArray("Kestrix ist auf falsches Ger\xC3\xA4t eingestellt\n"
                               "Version: 1.23\n"
                               "Bus type: Millenium M3\n"
                               "Device: Ombra\n"
                               "Firmware: Alarmieren\n"
                               "Nuber of messages: 100\n"
                               "Number of phone nrs.: 60\n"
                               "Reply: 007B090100003E<253>\n"));
}

void TransferE2eTest::loggerPrintsItsLines() {
  SimProcess sim(QStringLiteral("ttySIM-cli-logger"), {});
  const CliRun run = runCli({"logger", "--port", sim.link(), "--yes", "--reply-timeout", "3"});
  QCOMPARE(run.exitCode, 0);
  QCOMPARE(run.out, QByteArray("01.03.24 07:58:12 Modul gestartet\n"
                               "01.03.24 07:58:40 GSM Netz eingebucht\n"
                               "01.03.24 09:14:05 Merker 3: SMS 12 an Telefon 5 gesendet\n"
                               "01.03.24 09:20:31 SMS empfangen, Merker 32 gesetzt\n"));
  QCOMPARE(run.err, QByteArray());
}

void TransferE2eTest::refusedPinSendsNothing() {
  SimProcess sim(QStringLiteral("ttySIM-cli-nopin"), {});
  const QString noPin = sim.file("nopin.EAY");
  QVERIFY(writeFile(noPin, "M@Pumpe aus;\r\n"));
  const CliRun run = runCli({"download", "--kind", "P", "--port", sim.link(), "--yes", noPin});
  QCOMPARE(run.exitCode, 65);
  QCOMPARE(run.err, QByteArray("PIN is not valid. Download of the PIN is cancelled\n"));
}

void TransferE2eTest::nakStormStopsDownloadAll() {
  SimProcess sim(QStringLiteral("ttySIM-e2e-nakstorm"), {"--nak-every", "1"});
  Rig rig(sim.link());
  Project project;
  project.messages.setCell(1, kMessageTextColumn, "Pumpe aus");
  project.pin = "1234";
  TransferContext context = rig.context(project);
  int result = 0;
  DownloadAll(context, result);

  QCOMPARE(result, 3);
  QCOMPARE(rig.dialog.texts(), (std::vector<std::string>{kReady, " Aborted after 5 triials "}));
  // The phone numbers, the configuration and the flag table never went out.
  QCOMPARE(rig.jobs.labels, (std::vector<std::string>{"Version", "Messages"}));
  QCOMPARE(rig.status.transfer.back(), std::string("Error occurred  while downloading"));
}

void TransferE2eTest::refusedKindDoesNotStopDownloadAll() {
  QTemporaryDir dir;
  const QString state = dir.path() + "/module.state";
  SimProcess sim(QStringLiteral("ttySIM-e2e-refuse"), {"--refuse", "T", "--state", state});
  Rig rig(sim.link());
  Project project;
  project.smsCentre = "+491710760000";
  project.phones.setCell(1, kPhoneNumberColumn, "0171555");
  project.pin = "1234";
  project.flags.entries[3] = "12;5";
  TransferContext context = rig.context(project);
  int result = 0;
  DownloadAll(context, result);

  QCOMPARE(result, 0);
  QCOMPARE(rig.dialog.texts(),
           (std::vector<std::string>{kReady, "Option <Phone numbers> is not implemented"}));
  QCOMPARE(rig.jobs.labels, (std::vector<std::string>{"Version", "Messages", "Phone numbers",
                                                      "Configuration", "Millenium"}));
  // The module kept the configuration and the flag table after the refusal.
  const QByteArray kept = readFile(state);
  QVERIFY(
      kept.contains(QByteArray("P 9\n00\xB6"
                               "1234\xB6\xFD\n")));
  QVERIFY(
      kept.contains(QByteArray("Y 15\n03000C0500\xB6"
                               "00\xB6\xFD\n")));
  QVERIFY(!kept.contains("0171555"));
}

void TransferE2eTest::silentModuleWithFragmentsDeclined() {
  // The version block is the last one the module answers.
  SimProcess sim(QStringLiteral("ttySIM-e2e-silent"), {"--silent-after", "1"});
  Rig rig(sim.link(), kShortButFair);
  Project project;
  project.messages.setCell(1, kAckColumn, "x");
  project.messages.setCell(1, kMessageTextColumn, "Bleibt stehen");
  project.filters.setCell(1, kFilterTextColumn, "STATUS");
  project.ack = {"*T#", "Danke"};
  const Project before = project;
  TransferContext context = rig.context(project);
  int result = 0;
  UploadMessages(context, result);

  QCOMPARE(result, 4);
  QCOMPARE(rig.dialog.texts(), (std::vector<std::string>{kReady, "Timeout",
                                                         "An error occurred  during reading\r"
                                                         "Process data fragments anyway?"}));
  QCOMPARE(rig.dialog.boxes.back().defaultAnswer, BoxAnswer::No);
  QVERIFY(project == before);
}

void TransferE2eTest::fourHundredMessagesRoundTrip() {
  SimProcess sim(QStringLiteral("ttySIM-e2e-400"), {"--messages", "400"});
  Rig rig(sim.link());
  QCOMPARE(IdentifyModule(rig.linkContext), 0);
  QCOMPARE(rig.limits.lastMessageIndex, 399);

  // 400 texts of 33 to 40 characters: about 15500 characters, within the text memory.
  Project project(rig.limits);
  for (int row = 1; row <= 400; ++row) {
    const std::string number = std::to_string(row - 1);
    project.messages.setCell(row, kMessageTextColumn,
                             "St\xF6rung Anlage " + number + ": Motor " + number + " \xFC" + "ber");
    if (row % 2 == 0) project.messages.setCell(row, kAckColumn, "x");
    if (row % 3 == 0) project.messages.setCell(row, kCallBackColumn, "x");
  }
  TransferContext down = rig.context(project);
  int result = 0;
  DownloadMessages(down, result);
  QCOMPARE(result, 0);

  Project back(rig.limits);
  TransferContext up = rig.context(back);
  UploadMessages(up, result);
  QCOMPARE(result, 0);
  QCOMPARE(rig.dialog.texts(), std::vector<std::string>{kReady});
  QCOMPARE(back.messages.rows(), 400);
  QVERIFY(back.messages == project.messages);
  QCOMPARE(back.messages.cell(400, kMessageTextColumn),
           std::string("St\xF6rung Anlage 399: Motor 399 \xFC"
                       "ber"));
}

void TransferE2eTest::fortyThousandCharactersInTwoParts() {
  // More than the text memory lets the messages download build, so the window is handed the
  // two parts directly, as the download would hand them.
  SimProcess sim(QStringLiteral("ttySIM-e2e-40000"), {"--messages", "400"});
  Rig rig(sim.link());
  // Numbered pieces, so that a block lost, doubled or out of order shows.
  std::string image;
  for (int piece = 0; image.size() < 39999; ++piece) image += "<" + std::to_string(piece) + ">";
  image.resize(39999);
  image += '\xFD';
  TransferJob send = job(kDownloadActive, "Messages");
  send.sendText = image.substr(0, 32000);
  send.sendText2 = image.substr(32000);
  send.startIdentifier = "M9C40";
  QCOMPARE(rig.link.runTransfer(send).title, std::string(kDownloadActive));

  TransferJob read = job(kUploadActive, "Messages");
  read.requestLetter = 'm';
  const TransferOutcome outcome = rig.link.runTransfer(read);
  QCOMPARE(outcome.title, std::string(kUploadActive));
  QCOMPARE(outcome.received[0].size(), std::size_t{16000});
  QCOMPARE(outcome.received[2].size(), std::size_t{8000});
  QVERIFY(outcome.receivedText() == image);
  QCOMPARE(rig.dialog.texts(), std::vector<std::string>{});
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::TransferE2eTest)
#include "transfer_e2e_test.moc"
