#include "sim/pty_host.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "link/qt/port_names.h"
#include "project/atomic_file.h"

namespace quillon::sim {
namespace {

int g_signalPipe[2] = {-1, -1};

extern "C" void onTerminationSignal(int) {
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(g_signalPipe[1], &byte, 1);
}

std::string escaped(const std::string& bytes) {
  std::string out;
  for (char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 32 || code > 126)
      out += "<" + std::to_string(code) + ">";
    else
      out += c;
  }
  return out;
}

std::string symlinkTarget(const std::string& path) {
  char buffer[4096];
  const ssize_t length = ::readlink(path.c_str(), buffer, sizeof buffer);
  return length < 0 ? std::string() : std::string(buffer, static_cast<std::size_t>(length));
}

// Standard input ends the run when it closes; but /dev/null or a file would end it at once,
// and reading a terminal from the background would stop the process.
bool stdinEndsTheRun() {
  struct stat info {};
  if (::fstat(STDIN_FILENO, &info) != 0) return false;
  if (S_ISFIFO(info.st_mode) || S_ISSOCK(info.st_mode)) return true;
  return ::isatty(STDIN_FILENO) && ::tcgetpgrp(STDIN_FILENO) == ::getpgrp();
}

}  // namespace

PtyHost::PtyHost(const SimOptions& options, ModuleMemory& memory, TelvaneModule& module)
    : m_options(options),
      m_memory(memory),
      m_module(module),
      m_inbound(options.module.baud),
      m_outbound(options.module.baud) {
  if (options.module.splitSeed != 0) m_splitter.emplace(options.module.splitSeed);
  m_clock.start();
  m_timer.setSingleShot(true);
  m_timer.setTimerType(Qt::PreciseTimer);
  connect(&m_timer, &QTimer::timeout, this, &PtyHost::pump);
}

PtyHost::~PtyHost() {
  cleanUp();
  if (m_slave >= 0) ::close(m_slave);
  if (m_master >= 0) ::close(m_master);
}

bool PtyHost::open(std::string& error) {
  m_master = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
    error = std::string("cannot open a pseudo-terminal: ") + std::strerror(errno);
    return false;
  }
  const char* name = ::ptsname(m_master);
  if (name == nullptr) {
    error = "cannot name the pseudo-terminal";
    return false;
  }
  m_ptyPath = name;
  m_slave = ::open(m_ptyPath.c_str(), O_RDWR | O_NOCTTY);
  if (m_slave < 0) {
    error = "cannot open " + m_ptyPath + ": " + std::strerror(errno);
    return false;
  }
  // Raw from the start: an echo would send the PC's own bytes back before it sets up the port.
  termios settings{};
  if (::tcgetattr(m_slave, &settings) == 0) {
    ::cfmakeraw(&settings);
    ::tcsetattr(m_slave, TCSANOW, &settings);
  }
  ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);

  if (!m_options.link.empty()) {
    struct stat info {};
    if (::lstat(m_options.link.c_str(), &info) == 0) {
      if (!S_ISLNK(info.st_mode)) {
        error = m_options.link + " exists and is not a link";
        return false;
      }
      ::unlink(m_options.link.c_str());  // left behind by a run that was killed
    }
    if (::symlink(m_ptyPath.c_str(), m_options.link.c_str()) != 0) {
      error = "cannot create " + m_options.link + ": " + std::strerror(errno);
      return false;
    }
    m_linked = true;
  }
  if (m_options.registerAs > 0) {
    const std::string& device = m_options.link.empty() ? m_ptyPath : m_options.link;
    registerPort(m_options.registerAs, QString::fromStdString(device));
    m_registered = true;
  }

  if (g_signalPipe[0] < 0 && ::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0) {
    error = std::string("cannot watch signals: ") + std::strerror(errno);
    return false;
  }
  std::signal(SIGTERM, onTerminationSignal);
  std::signal(SIGINT, onTerminationSignal);
  std::signal(SIGHUP, onTerminationSignal);
  std::signal(SIGPIPE, SIG_IGN);
  m_signalNotifier = std::make_unique<QSocketNotifier>(g_signalPipe[0], QSocketNotifier::Read);
  connect(m_signalNotifier.get(), &QSocketNotifier::activated, this, &PtyHost::readSignal);

  m_readNotifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
  connect(m_readNotifier.get(), &QSocketNotifier::activated, this, &PtyHost::readMaster);
  m_writeNotifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Write);
  m_writeNotifier->setEnabled(false);
  connect(m_writeNotifier.get(), &QSocketNotifier::activated, this, &PtyHost::writeMaster);

  if (stdinEndsTheRun()) {
    m_stdinNotifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    connect(m_stdinNotifier.get(), &QSocketNotifier::activated, this, &PtyHost::readStdin);
  }
  pump();
  return true;
}

void PtyHost::readMaster() {
  char buffer[4096];
  bool heard = false;
  for (;;) {
    const ssize_t n = ::read(m_master, buffer, sizeof buffer);
    if (n > 0) {
      m_inbound.push(std::string_view(buffer, static_cast<std::size_t>(n)), now());
      heard = true;
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    break;  // EAGAIN: all read. The held slave keeps EIO (hang-up) away.
  }
  // The PC opens the terminal in exclusive mode. Since the held slave keeps the terminal open,
  // a PC that dies without closing would leave it exclusive and every later open would fail;
  // the PC's first bytes are the moment to give it up again.
  if (heard) ::ioctl(m_slave, TIOCNXCL);
  pump();
}

void PtyHost::writeMaster() {
  while (!m_unwritten.empty()) {
    const ssize_t n = ::write(m_master, m_unwritten.data(), m_unwritten.size());
    if (n > 0) {
      m_unwritten.erase(0, static_cast<std::size_t>(n));
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    break;  // the PC's input queue is full; the write notifier calls again
  }
  m_writeNotifier->setEnabled(!m_unwritten.empty());
}

void PtyHost::readStdin() {
  char buffer[256];
  const ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
  if (n == 0 || (n < 0 && errno != EINTR && errno != EAGAIN)) {
    m_stdinNotifier->setEnabled(false);
    QCoreApplication::quit();
  }
}

void PtyHost::readSignal() {
  char byte = 0;
  [[maybe_unused]] const auto n = ::read(g_signalPipe[0], &byte, 1);
  QCoreApplication::quit();
}

void PtyHost::pump() {
  // Several steps can fall due at the same moment (a byte arrives and completes a command whose
  // answer is due at once); serve them all before sleeping again.
  for (int round = 0; round < 16; ++round) {
    const SimTime t = now();
    bool moved = false;
    if (const std::string in = m_inbound.take(t); !in.empty()) {
      trace("PC  >", in);
      m_module.onBytes(in, t);
      moved = true;
    }
    if (const auto due = m_module.deadline(); due && *due <= t) {
      m_module.onDeadline(t);
      moved = true;
    }
    if (const std::string out = m_module.takeOutgoing(); !out.empty()) {
      m_outbound.push(out, t);
      moved = true;
    }
    if (m_module.takeMemoryChanged()) saveState();
    if (const std::string sent = m_outbound.take(t); !sent.empty()) {
      if (m_splitter)
        m_splitter->push(sent);
      else
        send(sent);
      moved = true;
    }
    if (m_splitter) {
      if (const std::string piece = m_splitter->take(t); !piece.empty()) {
        send(piece);
        moved = true;
      }
    }
    if (!moved) break;
  }
  std::optional<SimTime> next = m_module.deadline();
  const auto split = m_splitter ? m_splitter->deadline() : std::nullopt;
  for (const auto& line : {m_inbound.deadline(), m_outbound.deadline(), split}) {
    if (line && (!next || *line < *next)) next = line;
  }
  if (next)
    m_timer.start(static_cast<int>(std::clamp<SimTime>(*next - now(), 0, 24 * 3600 * 1000)));
  else
    m_timer.stop();
}

void PtyHost::send(const std::string& bytes) {
  trace("SIM <", bytes);
  m_unwritten += bytes;
  writeMaster();
}

void PtyHost::trace(const char* direction, const std::string& bytes) const {
  if (!m_options.trace) return;
  const SimTime t = now();
  std::fprintf(stderr, "%7lld.%03lld %s %s\n", static_cast<long long>(t / 1000),
               static_cast<long long>(t % 1000), direction, escaped(bytes).c_str());
  std::fflush(stderr);
}

void PtyHost::saveState() {
  if (m_options.stateFile.empty()) return;
  const WriteResult written = WriteFileReplacing(m_options.stateFile, m_memory.serialize());
  if (!written.ok) {
    std::fprintf(stderr, "telvane-sim: cannot save %s: %s\n", m_options.stateFile.c_str(),
                 written.error.c_str());
  }
}

void PtyHost::cleanUp() {
  if (m_registered) {
    const std::string& device = m_options.link.empty() ? m_ptyPath : m_options.link;
    unregisterPort(m_options.registerAs, QString::fromStdString(device));
    m_registered = false;
  }
  if (m_linked && symlinkTarget(m_options.link) == m_ptyPath) ::unlink(m_options.link.c_str());
  m_linked = false;
}

}  // namespace quillon::sim
