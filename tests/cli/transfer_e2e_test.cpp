// Downloads and uploads end to end: quillon-cli and the transfer procedures talking to
// telvane-sim over a real pseudo-terminal. Every transfer signs in with its one-second pause, so
// each test keeps its transfers few; reply time-outs are short.

#include <signal.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>
#include <string>
#include <vector>

#include "await_task.h"
#include "e2e_project.h"
#include "file_bytes.h"
#include "link/qt/identify.h"
#include "link/qt/serial_link.h"
#include "link/qt/transfer_observer.h"
#include "link/sign_in.h"
#include "project/project_file.h"
#include "scripted_dialog.h"
#include "sim_module.h"
#include "transfer/data_image.h"
#include "transfer/download.h"
#include "transfer/upload.h"

namespace quillon {
namespace {

using namespace testing;

const std::string kReady = "Telvane ready ?";

// The program's side for the procedures: the serial driver, a scripted dialog and English texts;
// it records the last status text and the label of every transfer.
struct Rig : StatusDisplay, TransferObserver {
  explicit Rig(const QString& device, TimeOfDay replyTimeout = 3000) {
    link.setPort(PortId{0, device});
    link.setEngineSettings(EngineSettings{.replyTimeout = replyTimeout});
    link.setObserver(this);
    texts.fill(kEnglish);
  }
  void setStatus(StatusPanel panel, const std::string& text) override {
    if (panel == StatusPanel::Transfer) status = text;
  }
  void transferStarted(const TransferJob& job) override { labels.push_back(job.contentLabel); }
  void transferEvent(const TransferEvent&) override {}
  int run(Task<> (*steps)(TransferContext&, int&), Project& project) {
    TransferContext context{linkContext, texts, project, {}};
    return finish(procedure(steps, context));
  }

  ScriptedDialog dialog;
  std::string status;
  std::vector<std::string> labels;
  ModuleLimits limits;
  LinkSession session;
  SerialLink link{dialog};
  UiTexts texts;
  LinkContext linkContext{link, dialog, *this, limits, session, kEnglish};
};

}  // namespace

class TransferE2eTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void commandLineRoundTrip();
  void ctrlCCancelsTheDownload();
  void versionConflictPrintsTheIdentification();
  void loggerPrintsItsLines();
  void nakStormStopsDownloadAll();
  void refusedKindDoesNotStopDownloadAll();
  void silentModuleWithFragmentsDeclined();
  void fourHundredMessagesRoundTrip();
  void fortyThousandCharactersInTwoParts();
};

void TransferE2eTest::commandLineRoundTrip() {
  SimModule sim(QStringLiteral("ttySIM-cli-roundtrip"), {});
  const QString rich = richFile(sim), read = sim.file("read.EAY");
  const QStringList link{"--port", sim.link(), "--yes", "--reply-timeout", "3"};

  const CliRun down = runCli(QStringList{"download"} + link + QStringList{rich});
  QCOMPARE(down.exitCode, 0);
  QCOMPARE(down.out, QByteArray());
  QCOMPARE(down.err, QByteArray(kCleaningWarnings));
  const CliRun up = runCli(QStringList{"upload", "--lang", "de"} + link + QStringList{"-o", read});
  QCOMPARE(up.exitCode, 0);
  QCOMPARE(up.err, QByteArray());

  QVERIFY(loadProject(read) == richProjectReadBack());

  // One kind read into an existing project: the rest stays as the project had it.
  const QString base = sim.file("base.EAY");
  writeFile(base,
            "M@Alt;Kommentar alt\r\nT+4930123456;SMSC\r\nL1;;04D2;Station alt\r\nE 2;5;5\r\n");
  QCOMPARE(
      runCli(QStringList{"upload", "--kind", "P", "--into", base} + link + QStringList{"-o", read})
          .exitCode,
      0);
  Project mixed = loadProject(base);
  QCOMPARE(mixed.station, std::string("Station alt"));
  mixed.pin = "4711";
  QVERIFY(loadProject(read) == mixed);
}

void TransferE2eTest::ctrlCCancelsTheDownload() {
  // At 1200 baud every block of the messages takes half a second on the line.
  SimModule sim(QStringLiteral("ttySIM-cli-ctrlc"), {"--baud", "1200"}, true);
  const QString rich = richFile(sim);
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
  SimModule sim(QStringLiteral("ttySIM-cli-conflict"), {"--device-type", "1"});
  const QString rich = richFile(sim);
  const CliRun run = runCli({"download", "--port", sim.link(), "--yes", rich});
  QCOMPARE(run.exitCode, 7);
  QCOMPARE(run.out, QByteArray());
  QCOMPARE(run.err, QByteArray("Kestrix ist auf falsches Ger\xC3\xA4t eingestellt\nVersion: 1.23\n"
                               "Bus type: Millenium M3\nDevice: Ombra\nFirmware: Alarmieren\n"
                               "Nuber of messages: 100\nNumber of phone nrs.: 60\n"
                               "Reply: 007B090100003E\n"));
}

void TransferE2eTest::loggerPrintsItsLines() {
  SimModule sim(QStringLiteral("ttySIM-cli-logger"), {});
  const CliRun run = runCli({"logger", "--port", sim.link(), "--yes", "--reply-timeout", "3"});
  QCOMPARE(run.exitCode, 0);
  QCOMPARE(run.out, QByteArray("01.03.24 07:58:12 Modul gestartet\n"
                               "01.03.24 07:58:40 GSM Netz eingebucht\n"
                               "01.03.24 09:14:05 Merker 3: SMS 12 an Telefon 5 gesendet\n"
                               "01.03.24 09:20:31 SMS empfangen, Merker 32 gesetzt\n"));
  QCOMPARE(run.err, QByteArray());
}

void TransferE2eTest::nakStormStopsDownloadAll() {
  SimModule sim(QStringLiteral("ttySIM-e2e-nakstorm"), {"--nak-every", "1"});
  Rig rig(sim.link());
  Project project;
  project.messages.setCell(1, kMessageTextColumn, "Pumpe aus");
  project.pin = "1234";
  QCOMPARE(rig.run(DownloadAll, project), 3);
  QCOMPARE(rig.dialog.texts(), (std::vector<std::string>{kReady, " Aborted after 5 triials "}));
  // The phone numbers, the configuration and the flag table never went out.
  QCOMPARE(rig.labels, (std::vector<std::string>{"Version", "Messages"}));
  QCOMPARE(rig.status, std::string("Error occurred  while downloading"));
}

void TransferE2eTest::refusedKindDoesNotStopDownloadAll() {
  QTemporaryDir dir;
  const QString state = dir.path() + "/module.state";
  SimModule sim(QStringLiteral("ttySIM-e2e-refuse"), {"--refuse", "T", "--state", state});
  Rig rig(sim.link());
  Project project;
  project.smsCentre = "+491710760000";
  project.phones.setCell(1, kPhoneNumberColumn, "0171555");
  project.pin = "1234";
  project.flags.entries[3] = "12;5";
  QCOMPARE(rig.run(DownloadAll, project), 0);
  QCOMPARE(rig.dialog.texts(),
           (std::vector<std::string>{kReady, "Option <Phone numbers> is not implemented"}));
  QCOMPARE(rig.labels, (std::vector<std::string>{"Version", "Messages", "Phone numbers",
                                                 "Configuration", "Millenium"}));
  // The module kept the configuration and the flag table after the refusal.
  const std::string kept = testing::readBytes(state.toStdString());
  QVERIFY(kept.find("P 9\n00\xB6"
                    "1234\xB6\xFD\n") != std::string::npos);
  QVERIFY(kept.find("Y 15\n03000C0500\xB6"
                    "00\xB6\xFD\n") != std::string::npos);
  QVERIFY(kept.find("0171555") == std::string::npos);
}

void TransferE2eTest::silentModuleWithFragmentsDeclined() {
  // The version block is the last one the module answers; a wait of 1.5 s counts from the whole
  // second it began in, which gives the module its chance.
  SimModule sim(QStringLiteral("ttySIM-e2e-silent"), {"--silent-after", "1"});
  Rig rig(sim.link(), 1500);
  Project project;
  project.messages.setCell(1, kAckColumn, "x");
  project.messages.setCell(1, kMessageTextColumn, "Bleibt stehen");
  project.filters.setCell(1, kFilterTextColumn, "STATUS");
  project.ack = {"*T#", "Danke"};
  const Project before = project;
  QCOMPARE(rig.run(UploadMessages, project), 4);
  QCOMPARE(rig.dialog.texts(), (std::vector<std::string>{kReady, "Timeout",
                                                         "An error occurred  during reading\r"
                                                         "Process data fragments anyway?"}));
  QCOMPARE(rig.dialog.boxes.back().defaultAnswer, BoxAnswer::No);
  QVERIFY(project == before);
}

void TransferE2eTest::fourHundredMessagesRoundTrip() {
  SimModule sim(QStringLiteral("ttySIM-e2e-400"), {"--messages", "400"});
  Rig rig(sim.link());
  QCOMPARE(finish(IdentifyModule(rig.linkContext)), 0);
  QCOMPARE(rig.limits.lastMessageIndex, 399);

  // 400 texts of 28 to 32 characters: about 12600 characters, within the text memory.
  Project project(rig.limits);
  for (int row = 1; row <= 400; ++row) {
    const std::string number = std::to_string(row - 1);
    project.messages.setCell(row, kMessageTextColumn,
                             "St\xF6rung Anlage " + number + ": Motor " + number + " \xD6l");
    if (row % 2 == 0) project.messages.setCell(row, kAckColumn, "x");
    if (row % 3 == 0) project.messages.setCell(row, kCallBackColumn, "x");
  }
  QCOMPARE(rig.run(DownloadMessages, project), 0);
  Project back(rig.limits);
  QCOMPARE(rig.run(UploadMessages, back), 0);
  QCOMPARE(rig.dialog.texts(), std::vector<std::string>{kReady});
  QCOMPARE(back.messages.rows(), 400);
  QVERIFY(back.messages == project.messages);
}

void TransferE2eTest::fortyThousandCharactersInTwoParts() {
  // More than the text memory lets the messages download build, so the window is handed the
  // hand-over of such an image directly.
  SimModule sim(QStringLiteral("ttySIM-e2e-40000"), {"--messages", "400"});
  Rig rig(sim.link());
  // Numbered pieces, so that a block lost, doubled or out of order shows.
  std::string image;
  for (int piece = 0; image.size() < 39999; ++piece) image += "<" + std::to_string(piece) + ">";
  image.resize(39999);
  image += '\xFD';
  const TransferJob send = downloadJob('M', "Messages", image);
  QCOMPARE(send.sendText2.size(), std::size_t{8000});
  QCOMPARE(finish(transfer(rig.link, send)).status, TransferStatus::Active);
  const TransferOutcome outcome = finish(transfer(rig.link, uploadJob('m', "Messages")));
  QCOMPARE(outcome.status, TransferStatus::Active);
  QCOMPARE(outcome.received[0].size(), std::size_t{16000});
  QCOMPARE(outcome.received[2].size(), std::size_t{8000});
  QVERIFY(outcome.receivedText() == image);
  QCOMPARE(rig.dialog.texts(), std::vector<std::string>{});
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::TransferE2eTest)
#include "transfer_e2e_test.moc"
