// telvane-sim as a program: a real pseudo-terminal, its link, its registration and its state
// file. The test plays the PC with plain reads and writes on the terminal.

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <QSettings>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

// Wire bytes restated: 182 fills and separates fields, 253 ends an image and every block.
const std::string F = "\xB6";
const std::string E = "\xFD";

namespace fs = std::filesystem;

// Long enough for a loaded machine, never reached when the simulator answers.
constexpr int kPatienceMs = 5000;

class SimProcess {
 public:
  explicit SimProcess(std::vector<std::string> args) {
    int in[2];
    int out[2];
    if (::pipe(in) != 0 || ::pipe(out) != 0) return;
    m_pid = ::fork();
    if (m_pid == 0) {
      ::dup2(in[0], STDIN_FILENO);
      ::dup2(out[1], STDOUT_FILENO);
      ::close(in[1]);
      ::close(out[0]);
      std::vector<char*> argv;
      argv.push_back(const_cast<char*>(TELVANE_SIM));
      for (auto& a : args) argv.push_back(a.data());
      argv.push_back(nullptr);
      ::execv(TELVANE_SIM, argv.data());
      ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    m_stdin = in[1];
    m_stdout = out[0];
  }
  ~SimProcess() { stop(); }

  // The first line of output: the terminal's path.
  std::string firstLine() {
    std::string line;
    char c = 0;
    while (waitReadable(m_stdout) && ::read(m_stdout, &c, 1) == 1 && c != '\n') line += c;
    return line;
  }

  // Closing standard input ends the simulator; returns its exit status.
  int stop() {
    if (m_pid <= 0) return -1;
    ::close(m_stdin);
    ::close(m_stdout);
    int status = 0;
    ::waitpid(m_pid, &status, 0);
    m_pid = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  static bool waitReadable(int fd) {
    pollfd p{fd, POLLIN, 0};
    return ::poll(&p, 1, kPatienceMs) == 1;
  }

 private:
  pid_t m_pid = 0;
  int m_stdin = -1;
  int m_stdout = -1;
};

class Terminal {
 public:
  explicit Terminal(const std::string& path) : m_fd(::open(path.c_str(), O_RDWR | O_NOCTTY)) {
    termios t{};
    if (m_fd >= 0 && ::tcgetattr(m_fd, &t) == 0) {
      ::cfmakeraw(&t);
      ::tcsetattr(m_fd, TCSANOW, &t);
    }
  }
  ~Terminal() {
    if (m_fd >= 0) ::close(m_fd);
  }
  [[nodiscard]] bool isOpen() const { return m_fd >= 0; }
  [[nodiscard]] int fd() const { return m_fd; }

  // Writes `bytes` and collects the answer until it holds `length` bytes.
  std::string exchange(const std::string& bytes, std::size_t length) {
    if (::write(m_fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) return {};
    std::string answer;
    char buffer[512];
    while (answer.size() < length && SimProcess::waitReadable(m_fd)) {
      const ssize_t n = ::read(m_fd, buffer, sizeof buffer);
      if (n <= 0) break;
      answer.append(buffer, static_cast<std::size_t>(n));
    }
    return answer;
  }

 private:
  int m_fd;
};

class SimPty : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/telvane-sim-test-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    m_dir = pattern;
  }
  void TearDown() override { fs::remove_all(m_dir); }
  fs::path m_dir;
};

TEST_F(SimPty, ServesADownloadBackAndKeepsItInTheStateFile) {
  const std::string link = (m_dir / "ttySIM-state").string();
  const std::string state = (m_dir / "module.state").string();
  {
    SimProcess sim({"--link", link, "--state", state});
    const std::string pty = sim.firstLine();
    EXPECT_TRUE(pty.starts_with("/dev/pts/")) << pty;
    EXPECT_EQ(fs::read_symlink(link).string(), pty);
    Terminal pc(link);
    ASSERT_TRUE(pc.isOpen());
    EXPECT_EQ(pc.exchange("??", 1), "\x06");
    EXPECT_EQ(pc.exchange("P0009", 1), "\x06");
    // The block's ACK and the final confirmation come separately, 50 ms apart.
    EXPECT_EQ(pc.exchange("00"s + F + "4711" + F + E + "FE", 1), "\x06");
    EXPECT_EQ(pc.exchange("", 1), "\x06");
    EXPECT_EQ(sim.stop(), 0);
  }
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));

  SimProcess sim({"--link", link, "--state", state});
  ASSERT_FALSE(sim.firstLine().empty());
  Terminal pc(link);
  EXPECT_EQ(pc.exchange("P", 5), "P0009");
  EXPECT_EQ(pc.exchange("\x06", 11), "00"s + F + "4711" + F + E + "FE");
}

TEST_F(SimPty, RegistersItsLinkAsAPortNumberWhileItRuns) {
  // XDG_CONFIG_HOME points into the build tree for this test (see CMakeLists.txt).
  const std::string link = (m_dir / "ttySIM-register").string();
  {
    SimProcess sim({"--link", link, "--register", "7"});
    ASSERT_FALSE(sim.firstLine().empty());
    QSettings settings("Kestrix", "Kestrix");
    EXPECT_EQ(settings.value("Ports/COM7").toString().toStdString(), link);
  }
  QSettings settings("Kestrix", "Kestrix");
  EXPECT_FALSE(settings.contains("Ports/COM7"));
}

TEST_F(SimPty, GivesUpExclusiveModeOnceThePcSpeaks) {
  // A PC that dies while it holds the terminal exclusively must not lock out the next one.
  const std::string link = (m_dir / "ttySIM-exclusive").string();
  SimProcess sim({"--link", link});
  ASSERT_FALSE(sim.firstLine().empty());
  Terminal pc(link);
  ASSERT_EQ(::ioctl(pc.fd(), TIOCEXCL), 0);
  int exclusive = 0;
  ASSERT_EQ(::ioctl(pc.fd(), TIOCGEXCL, &exclusive), 0);
  ASSERT_EQ(exclusive, 1);
  EXPECT_EQ(pc.exchange("??", 1), "\x06");
  ASSERT_EQ(::ioctl(pc.fd(), TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
}

TEST_F(SimPty, PacedLineStillAnswersEveryByte) {
  const std::string link = (m_dir / "ttySIM-baud").string();
  SimProcess sim({"--link", link, "--baud", "9600", "--device-type", "1"});
  ASSERT_FALSE(sim.firstLine().empty());
  Terminal pc(link);
  EXPECT_EQ(pc.exchange("V", 5), "V000F");
  EXPECT_EQ(pc.exchange("\x06", 17), "007B090100003E"s + E + "F6");
}

}  // namespace
