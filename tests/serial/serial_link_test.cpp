// SerialLink over a real pseudo-terminal with telvane-sim playing the module: identification,
// downloads and uploads, the module's faults, cancel, a pulled plug, the traffic log and a wait
// across midnight. Reply time-outs are short so that nothing waits 20 seconds.

#include "serial/serial_link.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>
#include <string>
#include <vector>

#include "link/traffic_log.h"
#include "scripted_dialog.h"
#include "serial/identify.h"
#include "serial/port_test.h"
#include "serial/serial_port_setup.h"
#include "serial/transfer_observer.h"
#include "sim_module.h"

namespace quillon {
namespace {

using testing::SimModule;

// Answers come within milliseconds; this only bounds a test that has gone wrong.
constexpr TimeOfDay kGenerous = 3000;
constexpr TimeOfDay kShort = 300;
// A wait counts from the whole second it began in, so a limit below a second may pass at once;
// where the module must get its chance to answer first, the limit is longer.
constexpr TimeOfDay kShortButFair = 1500;

class StatusRecorder : public StatusDisplay {
 public:
  void setStatus(StatusPanel panel, const std::string& text) override {
    texts.emplace_back(panel, text);
  }
  std::vector<std::pair<StatusPanel, std::string>> texts;
};

class EventRecorder : public TransferObserver {
 public:
  void transferStarted(const TransferJob& job) override { jobs.push_back(job.title); }
  void transferEvent(const TransferEvent& event) override {
    events.push_back(event);
    if (onEvent) onEvent(event);
  }
  std::vector<std::string> jobs;
  std::vector<TransferEvent> events;
  std::function<void(const TransferEvent&)> onEvent;
};

struct Rig {
  explicit Rig(const QString& device, TimeOfDay replyTimeout = kGenerous) {
    link.setPort(PortId{0, device});
    EngineSettings settings;
    settings.replyTimeout = replyTimeout;
    link.setEngineSettings(settings);
    link.setObserver(&observer);
  }
  [[nodiscard]] std::vector<std::string> boxTexts() const { return dialog.texts(); }

  testing::ScriptedDialog dialog;
  StatusRecorder status;
  ModuleLimits limits;
  LinkSession session;
  SerialLink link{dialog};
  EventRecorder observer;
  LinkContext context{link, dialog, status, limits, session, 0};
};

TransferJob download(const std::string& kind, const std::string& image, const std::string& label) {
  TransferJob job;
  job.title = kDownloadActive;
  job.contentLabel = label;
  job.sendText = image;
  char digits[5];
  std::snprintf(digits, sizeof digits, "%04zX", image.size());
  job.startIdentifier = kind + digits;
  return job;
}

TransferJob upload(char letter, const std::string& label) {
  TransferJob job;
  job.title = kUploadActive;
  job.contentLabel = label;
  job.requestLetter = letter;
  return job;
}

const std::string kReady = "Telvane ready ?";

}  // namespace

class SerialLinkTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void identifies_data();
  void identifies();
  void downloadIsReadBack();
  void corruptBlocksAreReadAgain();
  void nakStormEndsTheDownload();
  void refusedRequestIsDenied();
  void silentModuleIsNotReady();
  void moduleFallingSilentTimesOut();
  void cancelEndsATransferAtOnce();
  void pulledPlugEndsATransferAtOnce();
  void trafficLogOfAnIdentification();
  void waitAcrossMidnightEnds();
  void transferOnAMissingPort();
  void portNumbersAndThePortTest();
  void configurePortSetsTheLiteral();
  void settingsDialogKeys();
};

void SerialLinkTest::identifies_data() {
  QTest::addColumn<QStringList>("options");
  QTest::addColumn<int>("result");
  QTest::addColumn<QStringList>("fields");
  QTest::addColumn<int>("lastMessageIndex");
  QTest::addColumn<QStringList>("boxes");

  const QString ready = QString::fromStdString(kReady);
  QTest::newRow("defaultTelvane") << QStringList{} << 0
                                  << QStringList{"1.23",
                                                 "Millenium M3",
                                                 "Telvane",
                                                 "Alarmieren",
                                                 "100",
                                                 "60",
                                                 QString::fromLatin1("007B090300003E\xFD")}
                                  << 99 << QStringList{ready};
  QTest::newRow("fourHundredMessagesUnreadableVersion")
      << QStringList{"--messages", "400", "--firmware", "2", "--bus", "4"} << 0
      << QStringList{"2 (nicht lesbar)",
                     "EASY400",
                     "Telvane",
                     "Alarmieren",
                     "400",
                     "60",
                     QString::fromLatin1("0002040301003E\xFD")}
      << 399 << QStringList{ready};
  QTest::newRow("wrongDevice")
      << QStringList{"--device-type", "1"} << 7
      << QStringList{"1.23",
                     "Millenium M3",
                     "Ombra",
                     "Alarmieren",
                     "100",
                     "60",
                     QString::fromLatin1("007B090100003E\xFD")}
      << 99
      << QStringList{ready, QString::fromLatin1("Kestrix ist auf falsches Ger\xE4t eingestellt")};
  QTest::newRow("wrongPhoneCount")
      << QStringList{"--phones", "20"} << 7
      << QStringList{"1.23",
                     "Millenium M3",
                     "Telvane",
                     "Alarmieren",
                     "100",
                     "20",
                     QString::fromLatin1("007B0903000016\xFD")}
      << 99
      << QStringList{ready,
                     QString::fromLatin1("Falsche Anzahl Telefonnummern: \nEingestellt sind  60, "
                                         "aber im Ger\xE4t ist Platz f\xFCr 20")};
}

void SerialLinkTest::identifies() {
  QFETCH(QStringList, options);
  QFETCH(int, result);
  QFETCH(QStringList, fields);
  QFETCH(int, lastMessageIndex);
  QFETCH(QStringList, boxes);

  SimModule sim(QStringLiteral("ttySIM-identify-") + QTest::currentDataTag(), options);
  Rig rig(sim.link());
  QCOMPARE(IdentifyModule(rig.context), result);

  QStringList shown;
  for (const auto& [caption, value] : IdentityFields(rig.session.identity))
    shown << QString::fromLatin1(value.c_str());
  QCOMPARE(shown, fields);
  QCOMPARE(rig.limits.lastMessageIndex, lastMessageIndex);
  QStringList texts;
  for (const auto& text : rig.boxTexts()) texts << QString::fromLatin1(text.c_str());
  QCOMPARE(texts, boxes);
  QCOMPARE(rig.session.identity.conflicts,
           result == 7 ? (options.contains("--phones") ? 2 : 1) : 0);
  QVERIFY(!rig.link.isOpen());
}

void SerialLinkTest::downloadIsReadBack() {
  SimModule sim(QStringLiteral("ttySIM-roundtrip"));
  Rig rig(sim.link());
  const std::string image =
      "00\xB6"
      "4711\xB6\xFD";
  TransferOutcome outcome;
  QCOMPARE(SignIn(rig.context, download("P", image, "Configuration"), outcome), 0);
  QCOMPARE(outcome.title, std::string(kDownloadActive));
  // The final confirmation arrived: no "no final confirmation" box.
  QCOMPARE(rig.boxTexts(), std::vector<std::string>{kReady});

  QCOMPARE(SignIn(rig.context, upload('p', "Configuration"), outcome), 0);
  QCOMPARE(outcome.receivedText(), image);
  QCOMPARE(rig.observer.jobs,
           (std::vector<std::string>{"Upload active", "Download active", "Upload active"}));
  const auto& last = rig.status.texts.back();
  QCOMPARE(last.first, StatusPanel::Port);
  QCOMPARE(last.second, "COM " + sim.link().toStdString() + ",9600, N ,8 ,1 not active");
}

void SerialLinkTest::corruptBlocksAreReadAgain() {
  // Every second block from the module has a wrong checksum: the version block passes, then
  // each of the four blocks of the messages image is answered NAK once and read again.
  SimModule sim(QStringLiteral("ttySIM-corrupt"), {"--corrupt-every", "2"});
  Rig rig(sim.link());
  TransferOutcome outcome;
  QCOMPARE(SignIn(rig.context, upload('m', "Messages"), outcome), 0);
  std::string image = "A;\xB6";
  for (int i = 0; i < 100; ++i) image += "@\xB6";
  image += "Q \xB6" + std::string(10, '\xB6') + "\xFD";
  QCOMPARE(outcome.receivedText(), image);
  int naks = 0;
  for (const auto& event : rig.observer.events)
    if (event.kind == TransferEvent::Kind::Log && event.text2 == "SCHREIBEN: " &&
        event.text == "\x15")
      ++naks;
  QCOMPARE(naks, 4);
}

void SerialLinkTest::nakStormEndsTheDownload() {
  SimModule sim(QStringLiteral("ttySIM-nakstorm"), {"--nak-every", "1"});
  Rig rig(sim.link());
  TransferOutcome outcome;
  QCOMPARE(SignIn(rig.context,
                  download("P",
                           "00\xB6"
                           "1234\xB6\xFD",
                           "Configuration"),
                  outcome),
           3);
  QCOMPARE(rig.dialog.boxes.size(), std::size_t{2});
  const Box& box = rig.dialog.boxes[1];
  QCOMPARE(box.title, std::string("Terminal"));
  QCOMPARE(box.text, std::string(" Aborted after 5 triials "));
  QCOMPARE(box.icon, BoxIcon::Critical);
  int writes = 0;
  for (const auto& event : rig.observer.events)
    if (event.kind == TransferEvent::Kind::Log && event.text2 == "WRITE: " &&
        event.text ==
            "00\xB6"
            "1234\xB6\xFD"
            "F9")
      ++writes;
  QCOMPARE(writes, 5);
}

void SerialLinkTest::refusedRequestIsDenied() {
  SimModule sim(QStringLiteral("ttySIM-refuse"), {"--refuse", "M"});
  Rig rig(sim.link());
  TransferOutcome outcome;
  QCOMPARE(SignIn(rig.context, upload('m', "Messages"), outcome), 0);
  QCOMPARE(rig.boxTexts(),
           (std::vector<std::string>{kReady, "Option <Messages> ist nicht implementiert"}));
  QCOMPARE(outcome.receivedText(), std::string());
}

void SerialLinkTest::silentModuleIsNotReady() {
  SimModule sim(QStringLiteral("ttySIM-silent"), {"--silent-after", "0"});
  Rig rig(sim.link(), kShort);
  QElapsedTimer clock;
  clock.start();
  QCOMPARE(IdentifyModule(rig.context), 5);
  QVERIFY2(clock.elapsed() < 2500, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(rig.boxTexts(), (std::vector<std::string>{kReady, "Timeout", "Telvane not ready"}));
  QVERIFY(!rig.session.identityRead);
}

void SerialLinkTest::moduleFallingSilentTimesOut() {
  // The version block is the only one answered; the upload's first block never comes.
  SimModule sim(QStringLiteral("ttySIM-falls-silent"), {"--silent-after", "1"});
  Rig rig(sim.link(), kShortButFair);
  TransferOutcome outcome;
  QCOMPARE(SignIn(rig.context, upload('t', "Phone numbers"), outcome), 4);
  QCOMPARE(outcome.title, std::string("Timeout"));
  QCOMPARE(rig.boxTexts(), (std::vector<std::string>{kReady, "Timeout"}));
}

void SerialLinkTest::cancelEndsATransferAtOnce() {
  // 2000 characters at 1200 baud would take 17 seconds.
  SimModule sim(QStringLiteral("ttySIM-cancel"), {"--baud", "1200"});
  Rig rig(sim.link());
  rig.session.readyConfirmed = true;
  rig.session.identityRead = true;
  rig.observer.onEvent = [&](const TransferEvent& event) {
    if (event.kind == TransferEvent::Kind::Block) rig.link.cancel();
  };
  QElapsedTimer clock;
  clock.start();
  TransferOutcome outcome;
  QCOMPARE(SignIn(rig.context, download("M", std::string(1999, 'x') + "\xFD", "Messages"), outcome),
           3);
  QVERIFY2(clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(outcome.title, std::string("Cancel"));
  QVERIFY(!rig.link.isOpen());
  QVERIFY(rig.boxTexts().empty());
}

void SerialLinkTest::pulledPlugEndsATransferAtOnce() {
  SimModule sim(QStringLiteral("ttySIM-unplugged"), {"--baud", "1200"});
  Rig rig(sim.link(), 20000);
  rig.session.readyConfirmed = true;
  rig.session.identityRead = true;
  rig.observer.onEvent = [&](const TransferEvent& event) {
    if (event.kind == TransferEvent::Kind::Block && sim.running()) sim.kill();
  };
  QElapsedTimer clock;
  clock.start();
  TransferOutcome outcome;
  // The lost link ends the wait as a time-out would, and a time-out while sending is "Cancel".
  QCOMPARE(SignIn(rig.context, download("M", std::string(1999, 'x') + "\xFD", "Messages"), outcome),
           3);
  QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(outcome.title, std::string("Cancel"));
  QCOMPARE(rig.boxTexts(), std::vector<std::string>{"Timeout"});
  QVERIFY(!rig.link.isOpen());
}

void SerialLinkTest::trafficLogOfAnIdentification() {
  SimModule sim(QStringLiteral("ttySIM-log"));
  QTemporaryDir dir;
  TrafficLog log;
  QVERIFY(log.open(dir.path().toStdString(), "2024_01_0345296.LOG"));
  Rig rig(sim.link());
  rig.link.setTrafficLog(&log);
  QCOMPARE(IdentifyModule(rig.context), 0);
  log.close();

  QFile file(dir.path() + "/2024_01_0345296.LOG");
  QVERIFY(file.open(QIODevice::ReadOnly));
  QCOMPARE(file.readAll(), QByteArray("WRITE: ??\r\n"
                                      "READ: <6>\r\n"
                                      "WRITE: V\r\n"
                                      "READ: V000F\r\n"
                                      "WRITE: <6>\r\n"
                                      // A block's read ends at its end-of-block character;
                                      // the checksum behind it is taken without a read.
                                      "READ: 007B090300003E<253>\r\n"
                                      "LESEN: 007B090300003E<253>F4\r\n"
                                      "SCHREIBEN: <6>\r\n"));
}

void SerialLinkTest::waitAcrossMidnightEnds() {
  // One second before midnight with a one-second time-out: the deadline lies past midnight, the
  // timer fires there, the engine moves its start to the new day and times out a second later.
  SimModule sim(QStringLiteral("ttySIM-midnight"), {"--silent-after", "0"});
  Rig rig(sim.link(), 1000);
  QElapsedTimer clock;
  clock.start();
  rig.link.setClock([&clock] { return (86'399'000 + clock.elapsed()) % 86'400'000; });
  QCOMPARE(IdentifyModule(rig.context), 5);
  QVERIFY2(clock.elapsed() >= 1900 && clock.elapsed() < 4000,
           qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(rig.boxTexts(), (std::vector<std::string>{kReady, "Timeout", "Telvane not ready"}));
}

void SerialLinkTest::transferOnAMissingPort() {
  Rig rig(QStringLiteral("/nonexistent/ttySIM-missing"));
  const TransferOutcome outcome = rig.link.runTransfer(upload('v', "Version"));
  QCOMPARE(outcome.title, std::string("No connection"));
  // First the port layer's own words, then the window's sign-in failure.
  QCOMPARE(rig.dialog.boxes.size(), std::size_t{2});
  QCOMPARE(rig.dialog.boxes[0].title, std::string("Terminal"));
  QCOMPARE(rig.dialog.boxes[0].text, rig.link.portErrorText());
  QVERIFY(!rig.link.portErrorText().empty());
  QCOMPARE(rig.dialog.boxes[1].text, std::string("Interface not active"));
  QVERIFY(!rig.link.isOpen());
}

void SerialLinkTest::portNumbersAndThePortTest() {
  SimModule three(QStringLiteral("ttySIM-port3"), {"--register", "3"});
  SimModule five(QStringLiteral("ttySIM-port5"), {"--register", "5"});
  QSettings settings(kSettingsOrganisation, kSettingsApplication);
  // Every other number names a device that is not there, whatever the machine has.
  for (int n = 1; n <= 16; ++n)
    if (n != 3 && n != 5)
      settings.setValue(QStringLiteral("Ports/COM%1").arg(n), "/nonexistent/tty");
  settings.sync();

  const auto port = resolvePort(QStringLiteral("3"));
  QVERIFY(port);
  QCOMPARE(port->number, 3);
  QCOMPARE(port->device, three.link());
  QCOMPARE(resolvePort(QStringLiteral("COM5"))->device, five.link());
  QCOMPARE(resolvePort(QStringLiteral("/dev/ttyUSB7"))->number, 0);
  QCOMPARE(resolvePort(five.link())->number, 5);

  std::vector<int> tried;
  QCOMPARE(RunPortTest([&](int n) { tried.push_back(n); }),
           std::string(" COM 3 verf\xFCgbar!\r COM 5 verf\xFCgbar!\r"));
  QCOMPARE(tried.size(), std::size_t{16});

  for (int n = 1; n <= 16; ++n) settings.remove(QStringLiteral("Ports/COM%1").arg(n));
}

void SerialLinkTest::configurePortSetsTheLiteral() {
  SimModule sim(QStringLiteral("ttySIM-configure"));
  testing::ScriptedDialog dialog;
  StatusRecorder status;
  SerialLink link(dialog);
  link.setStatusDisplay(&status);
  link.setPort(PortId{4, sim.link()});
  link.setSettingsString("19200,E,7,2");
  link.setHandshaking(3);
  QCOMPARE(link.configurePort(), 0);
  QCOMPARE(link.settingsString(), std::string("9600, N ,8 ,1"));
  QCOMPARE(status.texts.size(), std::size_t{1});
  QCOMPARE(status.texts[0].second, std::string("COM 4,9600, N ,8 ,1 , XON-RTS not active"));
  QVERIFY(!link.isOpen());

  QCOMPARE(link.openLinkPort(), 0);
  QCOMPARE(link.portStatusText(), std::string("COM 4,9600, N ,8 ,1 , XON-RTS active"));
  link.closeLinkPort();

  link.setPort(PortId{9, QStringLiteral("/nonexistent/ttySIM")});
  QCOMPARE(link.configurePort(), 1);
  QVERIFY(!link.portErrorText().empty());
}

void SerialLinkTest::settingsDialogKeys() {
  SaveSerialConfiguration("19200,E,7,2", 4, 2);
  const QSettings settings(kSettingsOrganisation, kSettingsApplication);
  QCOMPARE(settings.value("Configuration/Configuration").toString(), QString("19200,E,7,2"));
  QCOMPARE(settings.value("Configuration/ComNr").toInt(), 4);
  QCOMPARE(settings.value("Configuration/Handshaking").toInt(), 2);
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::SerialLinkTest)
#include "serial_link_test.moc"
