// quillon-cli against telvane-sim playing what a real module on a real line may do: noise in
// front of its replies, the last ACK and the final confirmation in one write, an odd answer to
// the start identifier, an end mark in every block, replies cut into pieces, a version request
// left unanswered, refusals, silence and endless bad blocks. Each case runs the real commands
// over a real pseudo-terminal; what the module stored is read back with the same misbehaviour.

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>
#include <string>

#include "e2e_project.h"
#include "sim_module.h"

namespace quillon {
namespace {

using namespace testing;

const QByteArray kFinalMissing = "Timeout\nTransfer ok, but no final confirmation \n";
const QByteArray kVersionUnanswered = "Timeout\nOption <Version> ist nicht implementiert\n";

QStringList linkTo(const SimModule& sim) {
  return {"--port", sim.link(), "--yes", "--reply-timeout", "1"};
}

}  // namespace

class RealLineE2eTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void roundTrip_data();
  void roundTrip();
  void endMarkInEveryBlockKeepsLoggerAndIdentity();
  void unansweredRepeatOfTheStartIdentifier();
  void unansweredVersionRequest();
  void refusalsExitWithTheirOwnStatus();
  void failedReadAllWritesNothing();
  void maxTimeBoundsAnEndlessRead();
  void refusedImageOpensNoPort();
};

void RealLineE2eTest::roundTrip_data() {
  QTest::addColumn<QStringList>("simOptions");
  QTest::addColumn<QByteArray>("downloadErrors");
  const QByteArray cleaning(kCleaningWarnings);
  QTest::newRow("noiseBeforeReplies") << QStringList{"--reply-noise", "3"} << cleaning;
  // Every kind waits for its confirmation in vain and still counts as done.
  QTest::newRow("mergedFinalAck") << QStringList{"--merged-final-ack"}
                                  << kFinalMissing + cleaning + kFinalMissing + kFinalMissing +
                                         kFinalMissing;
  QTest::newRow("oddStartReply") << QStringList{"--odd-start-reply"} << cleaning;
  QTest::newRow("endMarkInEveryBlock") << QStringList{"--end-every-block"} << cleaning;
  QTest::newRow("splitWrites") << QStringList{"--split-writes", "11"} << cleaning;
}

// "Download all" and "Read all" of a whole project through the misbehaving module: the module
// keeps every kind exactly once, so everything that travels comes back as it was.
void RealLineE2eTest::roundTrip() {
  QFETCH(QStringList, simOptions);
  QFETCH(QByteArray, downloadErrors);
  SimModule sim(QStringLiteral("ttySIM-line-") + QTest::currentDataTag(), simOptions);
  const QString rich = richFile(sim), read = sim.file("read.EAY");

  const CliRun down = runCli(QStringList{"download"} + linkTo(sim) + QStringList{rich});
  QCOMPARE(down.exitCode, 0);
  QCOMPARE(down.err, downloadErrors);
  const CliRun up = runCli(QStringList{"upload"} + linkTo(sim) + QStringList{"-o", read});
  QCOMPARE(up.exitCode, 0);
  QCOMPARE(up.err, QByteArray());
  QVERIFY(loadProject(read) == richProjectReadBack());
}

void RealLineE2eTest::endMarkInEveryBlockKeepsLoggerAndIdentity() {
  // 150 characters: three blocks, each ended by the module's end mark.
  std::string logger;
  for (int line = 1; line <= 10; ++line) logger += "Meldung " + std::to_string(line) + " a\r";
  logger += std::string(150 - logger.size() - 1, '.') + "\r";
  QTemporaryDir dir;
  const QString loggerFile = dir.path() + "/logger.txt";
  writeFile(loggerFile, logger);
  SimModule sim(QStringLiteral("ttySIM-line-endmarks"),
                {"--end-every-block", "--logger", loggerFile});

  const CliRun read = runCli(QStringList{"logger"} + linkTo(sim));
  QCOMPARE(read.exitCode, 0);
  std::string lines = logger;
  for (char& c : lines) c = c == '\r' ? '\n' : c;
  QCOMPARE(read.out, QByteArray::fromStdString(lines));

  const CliRun identity = runCli(QStringList{"identify"} + linkTo(sim));
  QCOMPARE(identity.exitCode, 0);
  QVERIFY(identity.out.endsWith("Reply: 007B090300003E\n"));
}

void RealLineE2eTest::unansweredRepeatOfTheStartIdentifier() {
  // The blocks follow the repeat whatever its answer; the module took them, and the silence it
  // kept is reported as "No response".
  QTemporaryDir dir;
  const QString state = dir.path() + "/module.state";
  SimModule sim(QStringLiteral("ttySIM-line-mute"),
                {"--odd-start-reply", "--mute-start-repeat", "--state", state});
  const QString rich = richFile(sim);
  const CliRun down =
      runCli(QStringList{"download", "--kind", "P"} + linkTo(sim) + QStringList{rich});
  QCOMPARE(down.exitCode, 6);
  QCOMPARE(down.err, QByteArray("Timeout\n"));
  QVERIFY(readBytes(state.toStdString())
              .find("P 9\n00\xB6"
                    "4711\xB6\xFD\n") != std::string::npos);
}

void RealLineE2eTest::unansweredVersionRequest() {
  // The identity read gives "No response", which does not stop a transfer: each one asks
  // again (the command once more in front of them) and then goes on.
  SimModule sim(QStringLiteral("ttySIM-line-noversion"), {"--ignore-version"});
  const QString rich = richFile(sim), read = sim.file("read.EAY");
  const CliRun down =
      runCli(QStringList{"download", "--kind", "P"} + linkTo(sim) + QStringList{rich});
  QCOMPARE(down.exitCode, 0);
  QCOMPARE(down.err, kVersionUnanswered + kVersionUnanswered);
  const CliRun up =
      runCli(QStringList{"upload", "--kind", "P"} + linkTo(sim) + QStringList{"-o", read});
  QCOMPARE(up.exitCode, 0);
  QCOMPARE(loadProject(read).pin, std::string("4711"));
}

void RealLineE2eTest::refusalsExitWithTheirOwnStatus() {
  QTemporaryDir dir;
  const QString state = dir.path() + "/module.state";
  SimModule sim(QStringLiteral("ttySIM-line-refuse"), {"--refuse", "TPL", "--state", state});
  const QString rich = richFile(sim), kept = sim.file("kept.EAY");
  const std::string before = "M@bleibt;wie es war\r\n";
  writeFile(kept, before);

  // A refused kind does not stop "Download all"; the command still says it was refused.
  const CliRun down = runCli(QStringList{"download"} + linkTo(sim) + QStringList{rich});
  QCOMPARE(down.exitCode, 8);
  QCOMPARE(down.err, QByteArray(kCleaningWarnings) +
                         "Option <Phone numbers> is not implemented\n"
                         "Option <Configuration> is not implemented\n");
  const std::string stored = readBytes(state.toStdString());
  QVERIFY(stored.find("Y 45\n01000101000300030300") != std::string::npos);
  QVERIFY(stored.find("4711") == std::string::npos);

  // A refused read leaves the file the user named as it was.
  const CliRun up =
      runCli(QStringList{"upload", "--kind", "P"} + linkTo(sim) + QStringList{"-o", kept});
  QCOMPARE(up.exitCode, 8);
  // The configuration is parsed from nothing, as after any refusal, and says so.
  QCOMPARE(up.err, QByteArray("Option <Configuration> ist nicht implementiert\n"
                              "An error occurred  during loading configuration data Please "
                              "correct data\n"));
  const CliRun logger = runCli(QStringList{"logger"} + linkTo(sim) + QStringList{"-o", kept});
  QCOMPARE(logger.exitCode, 8);
  QCOMPARE(logger.err, QByteArray("Option <Reading Logger> ist nicht implementiert\n"));
  QCOMPARE(readBytes(kept.toStdString()), before);
}

void RealLineE2eTest::failedReadAllWritesNothing() {
  // The module answers the version block and the four blocks of its (empty) messages image,
  // then falls silent in the middle of the phone numbers.
  const std::string before = "M@bleibt;wie es war\r\n";
  for (const bool fragments : {false, true}) {
    SimModule sim(
        fragments ? QStringLiteral("ttySIM-line-fragments") : QStringLiteral("ttySIM-line-silent"),
        {"--silent-after", "5"});
    const QString out = sim.file("out.EAY");
    writeFile(out, before);
    QStringList arguments =
        QStringList{"upload", "--into", out} + linkTo(sim) + QStringList{"-o", out};
    if (fragments) arguments << "--fragments";
    const CliRun up = runCli(arguments);
    QCOMPARE(up.exitCode, 4);
    if (!fragments) {
      QCOMPARE(readBytes(out.toStdString()), before);
      continue;
    }
    // --fragments writes what came in: the module's empty messages; the comment never travels.
    const Project written = loadProject(out);
    QCOMPARE(written.messages.cell(1, kMessageTextColumn), std::string());
    QCOMPARE(written.messages.cell(1, kMessageCommentColumn), std::string("wie es war"));
  }
}

void RealLineE2eTest::maxTimeBoundsAnEndlessRead() {
  // Every block arrives with a wrong checksum: reading asks again without end.
  SimModule sim(QStringLiteral("ttySIM-line-endless"), {"--corrupt-every", "1"});
  const QString out = sim.file("never.EAY");
  QElapsedTimer clock;
  clock.start();
  const CliRun up = runCli(QStringList{"upload", "--kind", "P", "--max-time", "2"} + linkTo(sim) +
                           QStringList{"-o", out, "--fragments"});
  QVERIFY2(clock.elapsed() < 6000, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(up.exitCode, 4);
  QVERIFY(up.err.startsWith("quillon-cli: --max-time has passed; no output file is written\n"));
  QVERIFY(!QFile::exists(out));
  // The port was closed: the next command gets it.
  QCOMPARE(runCli(QStringList{"identify", "--max-time", "2"} + linkTo(sim)).exitCode, 4);
}

void RealLineE2eTest::refusedImageOpensNoPort() {
  // No station record: the PIN box keeps its placeholders, so the configuration is refused on
  // any module. Nothing is asked and no port is opened, not even this one that does not exist.
  QTemporaryDir dir;
  const QString project = dir.path() + "/nopin.EAY";
  writeFile(project, "M@Pumpe;\r\n");
  const CliRun down =
      runCli({"download", "--kind", "P", "--port", dir.path() + "/no-such-tty", project});
  QCOMPARE(down.exitCode, 65);
  QCOMPARE(down.err, QByteArray("PIN is not valid. Download of the PIN is cancelled\n"));
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::RealLineE2eTest)
#include "real_line_e2e_test.moc"
