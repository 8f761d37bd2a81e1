// telvane-sim: plays a Telvane alarm module on a pseudo-terminal.

#include <QCoreApplication>
#include <QFile>
#include <cstdio>
#include <string>
#include <vector>

#include "sim/module_memory.h"
#include "sim/pty_host.h"
#include "sim/sim_options.h"
#include "sim/telvane_module.h"

namespace {

// Served when no --logger file is given; the module ends its lines with a carriage return.
constexpr const char* kSampleLogger =
    "01.03.24 07:58:12 Modul gestartet\r"
    "01.03.24 07:58:40 GSM Netz eingebucht\r"
    "01.03.24 09:14:05 Merker 3: SMS 12 an Telefon 5 gesendet\r"
    "01.03.24 09:20:31 SMS empfangen, Merker 32 gesetzt\r";

bool readFile(const std::string& path, std::string& contents) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly)) return false;
  const QByteArray bytes = file.readAll();
  contents.assign(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace quillon::sim;
  const std::vector<std::string> args(argv + 1, argv + argc);
  SimOptions options;
  std::string error;
  if (!parseSimOptions(args, options, error)) {
    std::fprintf(stderr, "telvane-sim: %s\n%s", error.c_str(), simUsage().c_str());
    return 2;
  }
  if (options.help) {
    std::fputs(simUsage().c_str(), stdout);
    return 0;
  }
  if (options.version) {
    std::printf("telvane-sim %d.%d.%d\n", QUILLON_VERSION_MAJOR, QUILLON_VERSION_MINOR,
                QUILLON_VERSION_PATCH);
    return 0;
  }
  QCoreApplication app(argc, argv);

  std::string logger = kSampleLogger;
  if (!options.loggerFile.empty() && !readFile(options.loggerFile, logger)) {
    std::fprintf(stderr, "telvane-sim: cannot read %s\n", options.loggerFile.c_str());
    return 2;
  }
  ModuleMemory memory(options.module.messages, options.module.phones);
  if (std::string state;
      !options.stateFile.empty() && QFile::exists(QString::fromStdString(options.stateFile))) {
    if (!readFile(options.stateFile, state) || !memory.deserialize(state, error)) {
      std::fprintf(stderr, "telvane-sim: %s: %s\n", options.stateFile.c_str(),
                   error.empty() ? "cannot read" : error.c_str());
      return 2;
    }
  }

  TelvaneModule module(options.module, memory, logger);
  PtyHost host(options, memory, module);
  if (!host.open(error)) {
    std::fprintf(stderr, "telvane-sim: %s\n", error.c_str());
    return 1;
  }
  std::printf("%s\n", host.ptyPath().c_str());
  std::fflush(stdout);
  return QCoreApplication::exec();
}
