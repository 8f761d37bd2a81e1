// SerialLink over a real pseudo-terminal with telvane-sim playing the module: identification, a
// round trip, the module's faults, cancel, a pulled plug, a wait across midnight, and the port
// numbers. Reply time-outs are short so that nothing waits 20 seconds.

#include "link/qt/serial_link.h"

#include <QElapsedTimer>
#include <QSettings>
#include <QtTest>
#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "await_task.h"
#include "link/qt/identify.h"
#include "link/qt/port_test.h"
#include "link/qt/serial_port_setup.h"
#include "link/qt/transfer_observer.h"
#include "link/transfer_presenter.h"
#include "scripted_dialog.h"
#include "sim_module.h"

namespace quillon {
namespace {

using testing::SimModule;
using Texts = std::vector<std::string>;

using testing::finish;
using testing::transfer;

const std::string kReady = "Telvane ready ?";
// A configuration image: 182 separates the fields, 253 ends it; its checksum is FE.
const std::string kFill = "\xB6";
const std::string kImage = "00" + kFill + "4711" + kFill + "\xFD";

// Sees the status panels and every transfer event.
class Recorder : public StatusDisplay, public TransferObserver {
 public:
  void setStatus(StatusPanel panel, const std::string& text) override {
    status.emplace_back(panel, text);
  }
  void transferStarted(const TransferJob& job) override {
    jobs.push_back(StatusTitle(TransferStatus::Active, job.direction));
  }
  void transferEvent(const TransferEvent& event) override {
    if (event.kind == TransferEvent::Kind::Log) logged.push_back(event.text2 + event.text);
    if (onEvent) onEvent(event);
  }
  std::vector<std::pair<StatusPanel, std::string>> status;
  Texts jobs;
  Texts logged;  // prefix and bytes of every traffic entry
  std::function<void(const TransferEvent&)> onEvent;
};

struct Rig {
  // Answers come within milliseconds; the default time-out only bounds a test gone wrong.
  explicit Rig(const QString& device, TimeOfDay replyTimeout = 3000) {
    link.setPort(PortId{0, device});
    link.setEngineSettings({64, replyTimeout, 0, 4});
    link.setObserver(&seen);
  }
  testing::ScriptedDialog dialog;
  Recorder seen;
  ModuleLimits limits;
  LinkSession session;
  SerialLink link{dialog};
  LinkContext context{link, dialog, seen, limits, session, 0};
};

TransferJob download(const std::string& startIdentifier, const std::string& image) {
  return {TransferDirection::Download, "Messages", image, {}, startIdentifier, '\0'};
}

TransferJob upload(char letter, const std::string& label) {
  return {TransferDirection::Upload, label, {}, {}, {}, letter};
}

}  // namespace

class SerialLinkTest : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void identifies();
  void downloadIsReadBack();
  void nakStormEndsTheDownload();
  void refusedRequestIsDenied();
  void silentModuleAcrossMidnightIsNotReady();
  void cancelOrAPulledPlugEndsATransferAtOnce();
  void transferOnAMissingPort();
  void portNumbersAndThePortTest();
  void configurePortSetsTheLiteral();
};

void SerialLinkTest::identifies() {
  struct Row {
    const char* name;
    QStringList options;
    std::string fields;
    int conflicts;
    Texts boxes;
  };
  const std::vector<Row> rows = {
      {"defaultTelvane",
       {},
       "1.23|Millenium M3|Telvane|Alarmieren|100|60|007B090300003E",
       0,
       {kReady}},
      {"wrongDevice",
       {"--device-type", "1"},
       "1.23|Millenium M3|Ombra|Alarmieren|100|60|007B090100003E",
       1,
       {kReady, "Kestrix ist auf falsches Ger\xE4t eingestellt"}},
      {"wrongPhoneCount",
       {"--phones", "20"},
       "1.23|Millenium M3|Telvane|Alarmieren|100|20|007B0903000016",
       2,
       {kReady,
        "Falsche Anzahl Telefonnummern: \nEingestellt sind  60, aber im Ger\xE4t ist Platz "
        "f\xFCr 20"}},
  };
  for (const Row& row : rows) {
    SimModule sim(QStringLiteral("ttySIM-identify-") + QLatin1String(row.name), row.options);
    Rig rig(sim.link());
    QCOMPARE(finish(IdentifyModule(rig.context)), row.conflicts == 0 ? 0 : 7);
    std::string shown;
    for (const auto& [caption, value] : IdentityFields(rig.session.identity))
      shown += (shown.empty() ? "" : "|") + value;
    QCOMPARE(shown, row.fields);
    QCOMPARE(rig.session.identity.conflicts, row.conflicts);
    QCOMPARE(rig.dialog.texts(), row.boxes);
    QVERIFY(!rig.link.isOpen());
  }
}

void SerialLinkTest::downloadIsReadBack() {
  SimModule sim(QStringLiteral("ttySIM-roundtrip"));
  Rig rig(sim.link());
  TransferOutcome outcome;
  QCOMPARE(finish(SignIn(rig.context, download("P0009", kImage), outcome)), 0);
  QCOMPARE(outcome.status, TransferStatus::Active);
  // The final confirmation arrived: no "no final confirmation" box.
  QCOMPARE(rig.dialog.texts(), Texts{kReady});

  QCOMPARE(finish(SignIn(rig.context, upload('p', "Configuration"), outcome)), 0);
  QCOMPARE(outcome.receivedText(), kImage);
  QCOMPARE(rig.seen.jobs, (Texts{"Upload active", "Download active", "Upload active"}));
}

void SerialLinkTest::nakStormEndsTheDownload() {
  SimModule sim(QStringLiteral("ttySIM-nakstorm"), {"--nak-every", "1"});
  Rig rig(sim.link());
  TransferOutcome outcome;
  QCOMPARE(finish(SignIn(rig.context, download("P0009", kImage), outcome)), 3);
  QCOMPARE(rig.dialog.texts(), (Texts{kReady, " Aborted after 5 triials "}));
  QCOMPARE(rig.dialog.boxes[1].title, std::string("Terminal"));
  QCOMPARE(rig.dialog.boxes[1].icon, BoxIcon::Critical);
  QCOMPARE(std::count(rig.seen.logged.begin(), rig.seen.logged.end(), "WRITE: " + kImage + "FE"),
           5);
}

void SerialLinkTest::refusedRequestIsDenied() {
  SimModule sim(QStringLiteral("ttySIM-refuse"), {"--refuse", "M"});
  Rig rig(sim.link());
  TransferOutcome outcome;
  QCOMPARE(finish(SignIn(rig.context, upload('m', "Messages"), outcome)), 0);
  QCOMPARE(rig.dialog.texts(), (Texts{kReady, "Option <Messages> ist nicht implementiert"}));
  QCOMPARE(outcome.receivedText(), std::string());
}

void SerialLinkTest::silentModuleAcrossMidnightIsNotReady() {
  // One second before midnight with a one-second time-out: the deadline lies past midnight, the
  // timer fires there, the engine moves its start to the new day and times out a second later.
  SimModule sim(QStringLiteral("ttySIM-midnight"), {"--silent-after", "0"});
  Rig rig(sim.link(), 1000);
  QElapsedTimer clock;
  clock.start();
  rig.link.setTimeOfDay([] { return 86'399'000; });
  QCOMPARE(finish(IdentifyModule(rig.context)), 5);
  QVERIFY2(clock.elapsed() >= 1900 && clock.elapsed() < 4000,
           qPrintable(QString::number(clock.elapsed())));
  QCOMPARE(rig.dialog.texts(), (Texts{kReady, "Timeout", "Telvane not ready"}));
  QVERIFY(!rig.session.identityRead);
}

void SerialLinkTest::cancelOrAPulledPlugEndsATransferAtOnce() {
  for (const bool pullThePlug : {false, true}) {
    // 2000 characters at 1200 baud would take 17 seconds.
    SimModule sim(pullThePlug ? "ttySIM-end-plug" : "ttySIM-end-cancel", {"--baud", "1200"});
    Rig rig(sim.link(), 20000);
    rig.session.readyConfirmed = rig.session.identityRead = true;
    rig.seen.onEvent = [&](const TransferEvent& event) {
      if (event.kind != TransferEvent::Kind::Block || !sim.running()) return;
      pullThePlug ? sim.kill() : rig.link.cancel();
    };
    QElapsedTimer clock;
    clock.start();
    TransferOutcome outcome;
    QCOMPARE(
        finish(SignIn(rig.context, download("M07D0", std::string(1999, 'x') + "\xFD"), outcome)),
        pullThePlug ? 6 : 3);
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(outcome.status, pullThePlug ? TransferStatus::NoResponse : TransferStatus::Cancel);
    // The lost link ends the wait as a time-out would: the module gives no response.
    QCOMPARE(rig.dialog.texts(), pullThePlug ? Texts{"Timeout"} : Texts{});
    QVERIFY(!rig.link.isOpen());
  }
}

void SerialLinkTest::transferOnAMissingPort() {
  Rig rig(QStringLiteral("/nonexistent/ttySIM-missing"));
  QCOMPARE(finish(transfer(rig.link, upload('v', "Version"))).status, TransferStatus::NoConnection);
  // First the port layer's own words, then the window's sign-in failure.
  QVERIFY(!rig.link.portErrorText().empty());
  QCOMPARE(rig.dialog.texts(), (Texts{rig.link.portErrorText(), "Interface not active"}));
  QCOMPARE(rig.dialog.boxes[0].title, std::string("Terminal"));
  QVERIFY(!rig.link.isOpen());
}

void SerialLinkTest::portNumbersAndThePortTest() {
  SimModule three(QStringLiteral("ttySIM-port3"), {"--register", "3"});
  SimModule five(QStringLiteral("ttySIM-port5"), {"--register", "5"});
  QSettings settings(kSettingsOrganisation, kSettingsApplication);
  // Every other number names a device that is not there, whatever the machine has.
  for (int n = 1; n <= 16; ++n)
    if (n != 3 && n != 5) settings.setValue(QStringLiteral("Ports/COM%1").arg(n), "/nonexistent");
  settings.sync();

  QCOMPARE(resolvePort(QStringLiteral("3"))->number, 3);
  QCOMPARE(resolvePort(QStringLiteral("3"))->device, three.link());
  QCOMPARE(resolvePort(QStringLiteral("COM5"))->device, five.link());
  QCOMPARE(resolvePort(QStringLiteral("/dev/ttyUSB7"))->number, 0);
  QCOMPARE(resolvePort(five.link())->number, 5);

  std::vector<int> tried;
  QCOMPARE(RunPortTest([&](int n) { tried.push_back(n); }),
           std::string(" COM 3 verf\xFCgbar!\r COM 5 verf\xFCgbar!\r"));
  QCOMPARE(tried.size(), std::size_t{16});
  for (int n = 1; n <= 16; ++n) settings.remove(QStringLiteral("Ports/COM%1").arg(n));

  // What the settings dialog saves.
  SaveSerialConfiguration("19200,E,7,2", 4, 2);
  settings.sync();
  QCOMPARE(settings.value("Configuration/Configuration").toString(), QString("19200,E,7,2"));
  QCOMPARE(settings.value("Configuration/ComNr").toInt(), 4);
  QCOMPARE(settings.value("Configuration/Handshaking").toInt(), 2);
}

void SerialLinkTest::configurePortSetsTheLiteral() {
  SimModule sim(QStringLiteral("ttySIM-configure"));
  testing::ScriptedDialog dialog;
  Recorder seen;
  SerialLink link(dialog);
  link.setStatusDisplay(&seen);
  link.setPort(PortId{4, sim.link()});
  link.setSettingsString("19200,E,7,2");
  link.setHandshaking(3);
  QCOMPARE(link.configurePort(), 0);
  QCOMPARE(link.settingsString(), std::string("9600, N ,8 ,1"));
  QCOMPARE(seen.status.size(), std::size_t{1});
  QCOMPARE(seen.status[0].second, std::string("COM 4,9600, N ,8 ,1 , XON-RTS not active"));
  QVERIFY(!link.isOpen());
  QCOMPARE(link.openLinkPort(), 0);
  QCOMPARE(link.portStatusText(), std::string("COM 4,9600, N ,8 ,1 , XON-RTS active"));
  link.closeLinkPort();
}

}  // namespace quillon

QTEST_GUILESS_MAIN(quillon::SerialLinkTest)
#include "serial_link_test.moc"
