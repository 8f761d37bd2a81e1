// quillon-cli as scripts run it, on real files: what a save over a file keeps of it, what it
// refuses to replace, a full disk, and the previous versions of a project file.

#include <sys/stat.h>

#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <random>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "file_bytes.h"
#include "small_file_system.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

struct Ran {
  int code = -1;
  std::string out;
  std::string err;
};

Ran runCli(const std::vector<std::string>& arguments) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  QProcess process;
  process.start(QStringLiteral(QUILLON_CLI), list);
  if (!process.waitForFinished(60000)) return {};
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          process.readAllStandardOutput().toStdString(),
          process.readAllStandardError().toStdString()};
}

// Messages 1 and 2, a phone number and a PIN: every command has something to write.
const std::string kProject =
    "M@Pumpe 1 St\xF6rung;Halle\r\n"
    "MATor offen;\r\n"
    "T+491722270333\xB6;SMSC\r\n"
    "T+4930123456;Wartung\r\n"
    "L1;;04D2;Nord\r\n"
    "V1.0.0\r\n";
const std::string kOld = "alt\r\n";

mode_t modeOf(const fs::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::set<std::string> namesIn(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

class SafeWriteTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(m_dir);
    writeBytes(m_project, kProject);
  }
  void TearDown() override { fs::remove_all(m_dir); }

  const fs::path m_dir =
      fs::temp_directory_path() / ("quillon-safe-write-" + std::to_string(std::random_device{}()));
  const fs::path m_project = m_dir / "Anlage.EAY";
};

// Each command that writes a file the user names. IN and OUT stand for the project and the
// output file.
struct Writer {
  const char* outputName;
  std::vector<std::string> arguments;
  // What the new file begins with; none: all that the command prints without "-o OUT".
  const char* begins;
};

const Writer kWriters[] = {
    {"Aus.EAY", {"resave", "IN", "OUT"}, "M@Pumpe 1 St\xF6rung;Halle\r\nMATor offen;\r\nM@;\r\n"},
    {"M.img", {"image", "M", "IN", "-o", "OUT"}, nullptr},
    {"Liste.txt", {"print", "IN", "-o", "OUT"}, nullptr},
    {"Liste.pdf", {"print", "IN", "-o", "OUT"}, "%PDF-"},
};

// The command line of `writer`; without an output, without "-o OUT".
std::vector<std::string> commandLine(const Writer& writer, const fs::path& project,
                                     const fs::path& output) {
  std::vector<std::string> line;
  for (const std::string& argument : writer.arguments) {
    if (output.empty() && (argument == "-o" || argument == "OUT")) continue;
    line.push_back(argument == "IN"    ? project.string()
                   : argument == "OUT" ? output.string()
                                       : argument);
  }
  return line;
}

// What is in the way of the output file, and what must come of it.
struct Situation {
  const char* name;
  std::function<void(const fs::path& output)> prepare;
  int exitCode;
  std::string error;  // in the error output; empty for none
  mode_t mode;        // of the file that holds the result afterwards
};

// Every writer goes through the safe writer; links, pipes and devices are atomic_file_test's.
TEST_F(SafeWriteTest, SavesKeepWhatTheyReplaceAndRefuseWhatIsNoFile) {
  const Situation situations[] = {
      {"privateFileStaysPrivate",
       [](const fs::path& o) {
         writeBytes(o, kOld);
         fs::permissions(o, fs::perms(0600));
       },
       0, "", 0600},
      {"readOnlyFileIsLeftAlone",
       [](const fs::path& o) {
         writeBytes(o, kOld);
         fs::permissions(o, fs::perms(0444));
       },
       73, "Permission denied", 0444},
      {"folderIsNoFile", [](const fs::path& o) { fs::create_directory(o); }, 73, "Is a directory",
       0},
  };
  for (const Writer& writer : kWriters) {
    const std::string printed =
        writer.begins == nullptr ? runCli(commandLine(writer, m_project, {})).out : "";
    const bool keepsHistory = writer.arguments[0] == "resave";

    for (const Situation& situation : situations) {
      SCOPED_TRACE(std::string(writer.outputName) + " " + situation.name);
      const fs::path folder = m_dir / (std::string(writer.outputName) + "-" + situation.name);
      fs::create_directory(folder);
      const fs::path output = folder / writer.outputName;
      situation.prepare(output);
      const fs::file_type typeBefore = fs::symlink_status(output).type();
      const std::set<std::string> before = namesIn(folder);

      const Ran ran = runCli(commandLine(writer, m_project, output));

      EXPECT_EQ(ran.code, situation.exitCode) << ran.err;
      EXPECT_EQ(fs::symlink_status(output).type(), typeBefore);
      if (situation.exitCode == 0) {
        const std::string written = readBytes(output);
        EXPECT_TRUE(writer.begins != nullptr ? written.starts_with(writer.begins)
                                             : !printed.empty() && written == printed)
            << written.substr(0, 80);
      } else {
        EXPECT_NE(ran.err.find("cannot write " + output.string() + ": " + situation.error),
                  std::string::npos)
            << ran.err;
        if (fs::is_regular_file(output)) {
          EXPECT_EQ(readBytes(output), kOld);
        }
      }
      if (situation.mode != 0) {
        EXPECT_EQ(modeOf(output), situation.mode);
      }
      // No temporary file anywhere; a project save adds its history beside the file.
      std::set<std::string> expected = before;
      if (situation.exitCode == 0 && keepsHistory) expected.insert(".quillon-history");
      EXPECT_EQ(namesIn(folder), expected);
    }
  }
}

TEST_F(SafeWriteTest, FullDiskKeepsTheOldFileAndLeavesNoTemporary) {
  const testing::SmallFileSystem disk;
  if (!disk.mounted()) GTEST_SKIP() << "cannot mount a small file system here";
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.outputName);
    const fs::path output = disk.path() / writer.outputName;
    writeBytes(output, kOld);
    disk.fill();
    const Ran ran = runCli(commandLine(writer, m_project, output));
    EXPECT_EQ(ran.code, 73);
    EXPECT_NE(ran.err.find("No space left on device"), std::string::npos) << ran.err;
    EXPECT_EQ(readBytes(output), kOld);
    fs::remove(disk.path() / "filler");
  }
  std::set<std::string> expected;
  for (const Writer& writer : kWriters) expected.insert(writer.outputName);
  EXPECT_EQ(namesIn(disk.path()), expected);
}

TEST_F(SafeWriteTest, HistoryRoundTrip) {
  const fs::path output = m_dir / "Ziel.EAY";
  std::string firstSaved;
  for (const char* text : {"Alpha", "Bravo", "Gamma"}) {
    const fs::path input = m_dir / (std::string(text) + ".EAY");
    writeBytes(input, "M@" + std::string(text) + ";\r\n");
    ASSERT_EQ(runCli({"resave", input.string(), output.string()}).code, 0);
    if (firstSaved.empty()) firstSaved = readBytes(output);
  }
  ASSERT_TRUE(firstSaved.starts_with("M@Alpha;\r\nM@;\r\n"));

  const std::regex line(
      "([0-9])  [0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} +([0-9]+) bytes  "
      "Ziel\\.EAY\\.[0-9]{4}-[0-9]{2}-[0-9]{2}_[0-9]{2}-[0-9]{2}-[0-9]{2}(\\.[0-9]+)?\n");
  const Ran listed = runCli({"history", output.string()});
  ASSERT_EQ(listed.code, 0) << listed.err;
  std::vector<std::string> numbers;
  for (std::sregex_iterator it(listed.out.begin(), listed.out.end(), line), end; it != end; ++it) {
    numbers.push_back((*it)[1]);
    EXPECT_EQ((*it)[2], std::to_string(firstSaved.size()));  // the texts are equally long
  }
  ASSERT_EQ(numbers, (std::vector<std::string>{"1", "2"})) << listed.out;

  // 2 is the older of the two: the file as the first save wrote it.
  ASSERT_EQ(runCli({"restore", output.string(), "2"}).code, 0);
  EXPECT_EQ(readBytes(output), firstSaved);
  const std::string relisted = runCli({"history", output.string()}).out;
  EXPECT_EQ(std::count(relisted.begin(), relisted.end(), '\n'), 3);

  const Ran missing = runCli({"restore", output.string(), "7"});
  EXPECT_EQ(missing.code, 66);
  EXPECT_NE(missing.err.find("has no previous version '7'"), std::string::npos) << missing.err;
  EXPECT_EQ(readBytes(output), firstSaved);
  const Ran none = runCli({"history", m_project.string()});
  EXPECT_EQ(none.code, 0);
  EXPECT_EQ(none.out, "");
  EXPECT_EQ(none.err, "No previous versions of " + m_project.string() + "\n");
}

}  // namespace
}  // namespace quillon
