// telvane-sim as a program: a real pseudo-terminal, its link, its registration and its state
// file. The test plays the PC with plain reads and writes on the terminal.

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <QSettings>
#include <QTemporaryDir>
#include <filesystem>
#include <string>

#include "sim_module.h"

namespace {

using namespace std::string_literals;
using quillon::testing::SimModule;
namespace fs = std::filesystem;

// The PC's end of the terminal, raw.
class Terminal {
 public:
  explicit Terminal(const QString& path) : m_fd(::open(qPrintable(path), O_RDWR | O_NOCTTY)) {
    termios t{};
    if (m_fd >= 0 && ::tcgetattr(m_fd, &t) == 0) {
      ::cfmakeraw(&t);
      ::tcsetattr(m_fd, TCSANOW, &t);
    }
  }
  ~Terminal() {
    if (m_fd >= 0) ::close(m_fd);
  }
  [[nodiscard]] int fd() const { return m_fd; }

  // Writes `bytes` and collects the answer until it holds `length` bytes or 5 s pass in silence.
  std::string exchange(const std::string& bytes, std::size_t length) {
    if (::write(m_fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) return {};
    std::string answer;
    char buffer[512];
    pollfd p{m_fd, POLLIN, 0};
    while (answer.size() < length && ::poll(&p, 1, 5000) == 1) {
      const ssize_t n = ::read(m_fd, buffer, sizeof buffer);
      if (n <= 0) break;
      answer.append(buffer, static_cast<std::size_t>(n));
    }
    return answer;
  }

 private:
  int m_fd;
};

// XDG_CONFIG_HOME points into the build tree for these tests (see CMakeLists.txt).
TEST(SimPty, ServesADownloadBackKeepsItInTheStateFileAndRegistersItsPort) {
  QTemporaryDir dir;
  const QStringList state = {"--state", dir.filePath("module.state")};
  const std::string image = "00"s + "\xB6" + "4711" + "\xB6" + "\xFD";  // 253 ends the image
  {
    SimModule sim("ttySIM-state", state + QStringList{"--register", "7"});
    EXPECT_EQ(QSettings("Kestrix", "Kestrix").value("Ports/COM7").toString(), sim.link());
    EXPECT_TRUE(sim.pty().startsWith("/dev/pts/")) << sim.pty().toStdString();
    EXPECT_EQ(fs::read_symlink(sim.link().toStdString()).string(), sim.pty().toStdString());
    Terminal pc(sim.link());
    ASSERT_GE(pc.fd(), 0);
    EXPECT_EQ(pc.exchange("??", 1), "\x06");
    EXPECT_EQ(pc.exchange("P0009", 1), "\x06");
    // The block's ACK and the final confirmation come separately, 50 ms apart.
    EXPECT_EQ(pc.exchange(image + "FE", 1), "\x06");
    EXPECT_EQ(pc.exchange("", 1), "\x06");
    EXPECT_EQ(sim.stop(), 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(sim.link().toStdString())));
  }
  EXPECT_FALSE(QSettings("Kestrix", "Kestrix").contains("Ports/COM7"));
  SimModule sim("ttySIM-state-again", state);
  Terminal pc(sim.link());
  EXPECT_EQ(pc.exchange("P", 5), "P0009");
  EXPECT_EQ(pc.exchange("\x06", 11), image + "FE");
}

TEST(SimPty, GivesUpExclusiveModeOnceThePcSpeaks) {
  // A PC that dies while it holds the terminal exclusively must not lock out the next one.
  SimModule sim("ttySIM-exclusive");
  Terminal pc(sim.link());
  ASSERT_EQ(::ioctl(pc.fd(), TIOCEXCL), 0);
  int exclusive = 0;
  ASSERT_EQ(::ioctl(pc.fd(), TIOCGEXCL, &exclusive), 0);
  ASSERT_EQ(exclusive, 1);
  EXPECT_EQ(pc.exchange("??", 1), "\x06");
  ASSERT_EQ(::ioctl(pc.fd(), TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
}

}  // namespace
