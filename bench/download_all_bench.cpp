// How close "Download all" of a 100-message project comes to the time the line itself needs:
// SerialLink talks to telvane-sim --baud 9600, which paces both directions like a real 8N1 line.
// The floor is every byte that crossed the line (ten bits each, counted from the simulator's
// trace) plus the waits the protocol prescribes: the one-second pause after "??" at each sign-in
// and the simulator's 50 ms before each final confirmation.
//
//   download_all_bench [baud]

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "link/qt/serial_link.h"
#include "link/qt/transfer_observer.h"
#include "link/sign_in.h"
#include "transfer/download.h"

namespace {

using namespace quillon;

constexpr double kSignInPause = 1.0;
constexpr double kFinalConfirmationDelay = 0.050;
constexpr double kAllowedExcess = 0.10;

class PrintingDialog : public UserDialog {
 public:
  BoxAnswer ask(const Box& box) override {
    if (box.text != kReadyQuestion) std::printf("box: %s\n", box.text.c_str());
    return box.defaultAnswer;
  }
};

class NoStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel, const std::string&) override {}
};

// When each transfer started and ended, and how many sign-ins it made.
class Timeline : public TransferObserver {
 public:
  explicit Timeline(const QElapsedTimer& clock) : m_clock(clock) {}
  void transferStarted(const TransferJob& job) override {
    entries.push_back({job.contentLabel, m_clock.nsecsElapsed(), 0});
  }
  void transferEvent(const TransferEvent& event) override {
    if (event.kind == TransferEvent::Kind::Log && event.text2 == "WRITE: " && event.text == "??")
      ++signIns;
    if (event.kind == TransferEvent::Kind::Finished && !entries.empty())
      entries.back().end = m_clock.nsecsElapsed();
  }
  struct Entry {
    std::string label;
    qint64 start;
    qint64 end;
  };
  std::vector<Entry> entries;
  int signIns = 0;

 private:
  const QElapsedTimer& m_clock;
};

// Bytes in the simulator's trace lines of one direction: every character stands for itself
// except "<n>", one unprintable byte. The project below holds no "<".
long traceBytes(const QByteArray& trace, const QByteArray& direction) {
  long bytes = 0;
  for (const QByteArray& line : trace.split('\n')) {
    const qsizetype at = line.indexOf(direction);
    if (at < 0) continue;
    const QByteArray data = line.mid(at + direction.size() + 1);
    for (qsizetype i = 0; i < data.size(); ++i) {
      if (data[i] == '<') {
        const qsizetype close = data.indexOf('>', i);
        if (close > i) i = close;
      }
      ++bytes;
    }
  }
  return bytes;
}

Project benchProject() {
  Project project;
  const char* const parts[] = {"Pumpe", "Motorschutz", "Hochwasser", "Netzausfall", "T\xFCr"};
  for (int row = 1; row <= 100; ++row) {
    const std::string n = std::to_string(row);
    project.messages.setCell(row, kMessageTextColumn,
                             std::string(parts[row % 5]) + " " + n + ": St\xF6rung in Anlage " + n +
                                 ", bitte Bereitschaft verst\xE4ndigen");
    if (row % 2 == 0) project.messages.setCell(row, kAckColumn, "x");
    if (row % 3 == 0) project.messages.setCell(row, kCallBackColumn, "x");
  }
  for (int row = 1; row <= kFilterRows; ++row)
    project.filters.setCell(row, kFilterTextColumn, "FILTER " + std::to_string(row));
  project.ack = {"*T#", "Vielen Dank"};
  project.smsCentre = "+491722270333";
  for (int row = 1; row <= 20; ++row)
    project.phones.setCell(row, kPhoneNumberColumn, "+4917155501" + std::to_string(100 + row));
  project.pin = "4711";
  for (int flag = 1; flag <= 20; ++flag)
    project.flags.entries[static_cast<std::size_t>(flag)] =
        std::to_string(flag) + ";" + std::to_string(flag % 20 + 1);
  project.flags.entries[32] = kReceptionFlag;
  return project;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const int baud = argc > 1 ? std::atoi(argv[1]) : 9600;

  QTemporaryDir dir;
  const QString link = dir.path() + QStringLiteral("/ttySIM-bench");
  QProcess sim;
  sim.start(QStringLiteral(TELVANE_SIM),
            {"--link", link, "--baud", QString::number(baud), "--trace"});
  while (sim.state() != QProcess::NotRunning && !sim.canReadLine()) sim.waitForReadyRead(5000);
  if (sim.readLine().isEmpty()) {
    std::fprintf(stderr, "telvane-sim did not start\n");
    return 1;
  }

  PrintingDialog dialog;
  NoStatus status;
  SerialLink serial(dialog);
  serial.setPort(PortId{0, link});
  QElapsedTimer clock;
  Timeline timeline(clock);
  serial.setObserver(&timeline);
  ModuleLimits limits;
  LinkSession session;
  LinkContext linkContext{serial, dialog, status, limits, session, 0};
  UiTexts texts;
  texts.fill(kEnglish);
  Project project = benchProject();
  TransferContext context{linkContext, texts, project, {}};

  int result = 0;
  clock.start();
  bool ended = false;
  StartTask(DownloadAll(context, result), [&ended] {
    ended = true;
    QCoreApplication::quit();
  });
  if (!ended) QCoreApplication::exec();
  const double measured = static_cast<double>(clock.nsecsElapsed()) / 1e9;

  sim.closeWriteChannel();
  sim.waitForFinished(5000);
  const QByteArray trace = sim.readAllStandardError();
  const long toModule = traceBytes(trace, "PC  >");
  const long fromModule = traceBytes(trace, "SIM <");
  const int downloads = static_cast<int>(timeline.entries.size()) - 1;  // after the identity

  const double wire = static_cast<double>(toModule + fromModule) * 10.0 / baud;
  const double pauses = timeline.signIns * kSignInPause;
  const double confirmations = downloads * kFinalConfirmationDelay;
  const double floor = wire + pauses + confirmations;

  std::printf("result %d at %d baud\n", result, baud);
  for (const auto& entry : timeline.entries) {
    std::printf("  %-14s %7.3f s .. %7.3f s\n", entry.label.c_str(),
                static_cast<double>(entry.start) / 1e9, static_cast<double>(entry.end) / 1e9);
  }
  std::printf("bytes on the line: %ld to the module, %ld from it = %.3f s\n", toModule, fromModule,
              wire);
  std::printf("sign-in pauses: %d x 1 s; final confirmations: %d x 50 ms\n", timeline.signIns,
              downloads);
  std::printf("floor %.3f s, measured %.3f s, %+.1f %%\n", floor, measured,
              100.0 * (measured - floor) / floor);
  return result == 0 && measured <= floor * (1 + kAllowedExcess) ? 0 : 1;
}
