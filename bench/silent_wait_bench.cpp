// How much CPU a transfer costs while it waits for a module that never answers: SerialLink signs
// in to telvane-sim --silent-after 0 and waits out the full reply time-out (20 s by default).
// The driver sleeps in the event loop until its one timer fires, so the figure should be far
// below 1 % of one core.
//
//   silent_wait_bench [timeout-ms]

#include <sys/resource.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "link/qt/serial_link.h"
#include "link/transfer_presenter.h"

namespace {

class AnsweringDialog : public quillon::UserDialog {
 public:
  quillon::BoxAnswer ask(const quillon::Box& box) override {
    std::printf("box: %s\n", box.text.c_str());
    return box.defaultAnswer;
  }
};

double cpuSeconds(int who) {
  rusage usage{};
  getrusage(who, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const long timeout = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 20000;

  QTemporaryDir dir;
  const QString link = dir.path() + QStringLiteral("/ttySIM-bench");
  QProcess sim;
  sim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  sim.start(QStringLiteral(TELVANE_SIM), {QStringLiteral("--link"), link,
                                          QStringLiteral("--silent-after"), QStringLiteral("0")});
  while (sim.state() != QProcess::NotRunning && !sim.canReadLine()) sim.waitForReadyRead(5000);
  if (sim.readLine().isEmpty()) {
    std::fprintf(stderr, "telvane-sim did not start\n");
    return 1;
  }

  AnsweringDialog dialog;
  quillon::SerialLink serial(dialog);
  serial.setPort(quillon::PortId{0, link});
  quillon::EngineSettings settings;
  settings.replyTimeout = timeout;
  serial.setEngineSettings(settings);
  quillon::TransferJob job;
  job.direction = quillon::TransferDirection::Upload;
  job.contentLabel = "Version";
  job.requestLetter = 'v';

  QElapsedTimer wall;
  const double cpuBefore = cpuSeconds(RUSAGE_SELF);
  wall.start();
  quillon::TransferOutcome outcome;
  serial.startTransfer(job, [&outcome](quillon::TransferOutcome ended) {
    outcome = std::move(ended);
    QCoreApplication::quit();
  });
  QCoreApplication::exec();
  const double elapsed = static_cast<double>(wall.elapsed()) / 1000.0;
  const double cpu = cpuSeconds(RUSAGE_SELF) - cpuBefore;

  sim.closeWriteChannel();
  sim.waitForFinished(5000);
  const double simCpu = cpuSeconds(RUSAGE_CHILDREN);

  std::printf("outcome: %s\n",
              quillon::StatusTitle(outcome.status, quillon::TransferDirection::Upload).c_str());
  std::printf("waited %.3f s, driver CPU %.4f s = %.4f %% of one core\n", elapsed, cpu,
              100.0 * cpu / elapsed);
  std::printf("telvane-sim CPU over its whole run: %.4f s\n", simCpu);
  return 100.0 * cpu / elapsed < 1.0 ? 0 : 1;
}
