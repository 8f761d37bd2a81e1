// quillon-cli as scripts run it, on real files: what a save over a file keeps of it, what it
// refuses to replace, a full disk, and the previous versions of a project file.

#include <sys/stat.h>
#include <unistd.h>

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

// Each command that writes a file the user names, and how to tell its new content.
struct Writer {
  const char* name;
  const char* outputName;
  std::vector<std::string> (*arguments)(const std::string& project, const std::string& output);
  // The same command printing to the standard output; none for resave.
  std::vector<std::string> (*printing)(const std::string& project);
  // True for what the command writes; `printed` is what `printing` printed.
  bool (*isNew)(const std::string& written, const std::string& printed);
};

bool sameAsPrinted(const std::string& written, const std::string& printed) {
  return !printed.empty() && written == printed;
}

const Writer kWriters[] = {
    {"resave", "Aus.EAY",
     [](const std::string& p, const std::string& o) {
       return std::vector<std::string>{"resave", p, o};
     },
     nullptr,
     [](const std::string& written, const std::string&) {
       return written.starts_with("M@Pumpe 1 St\xF6rung;Halle\r\nMATor offen;\r\nM@;\r\n");
     }},
    {"image", "M.img",
     [](const std::string& p, const std::string& o) {
       return std::vector<std::string>{"image", "M", p, "-o", o};
     },
     [](const std::string& p) {
       return std::vector<std::string>{"image", "M", p};
     },
     sameAsPrinted},
    {"printText", "Liste.txt",
     [](const std::string& p, const std::string& o) {
       return std::vector<std::string>{"print", p, "-o", o};
     },
     [](const std::string& p) {
       return std::vector<std::string>{"print", p};
     },
     sameAsPrinted},
    {"printPdf", "Liste.pdf",
     [](const std::string& p, const std::string& o) {
       return std::vector<std::string>{"print", p, "-o", o};
     },
     nullptr,
     [](const std::string& written, const std::string&) {
       return written.starts_with("%PDF-") && written.find("%%EOF") != std::string::npos;
     }},
};

// What is in the way of the output file, and what must come of it.
struct Situation {
  const char* name;
  std::function<void(const fs::path& output)> prepare;
  int exitCode;
  std::string error;  // in the error output; empty for none
  mode_t mode;        // of the file that holds the result afterwards
};

TEST_F(SafeWriteTest, SavesKeepWhatTheyReplaceAndRefuseWhatIsNoFile) {
  const Situation situations[] = {
      {"privateFileStaysPrivate",
       [](const fs::path& o) {
         writeBytes(o, kOld);
         fs::permissions(o, fs::perms(0600));
       },
       0, "", 0600},
      {"linkIsWrittenThrough",
       [](const fs::path& o) {
         fs::create_directory(o.parent_path() / "real");
         writeBytes(o.parent_path() / "real" / o.filename(), kOld);
         fs::permissions(o.parent_path() / "real" / o.filename(), fs::perms(0640));
         fs::create_symlink(fs::path("real") / o.filename(), o);
       },
       0, "", 0640},
      {"readOnlyFileIsLeftAlone",
       [](const fs::path& o) {
         writeBytes(o, kOld);
         fs::permissions(o, fs::perms(0444));
       },
       73, "Permission denied", 0444},
      {"namedPipeIsNoFile", [](const fs::path& o) { ASSERT_EQ(::mkfifo(o.c_str(), 0600), 0); }, 73,
       "Is a named pipe, not a file", 0600},
      {"folderIsNoFile", [](const fs::path& o) { fs::create_directory(o); }, 73, "Is a directory",
       0},
  };
  for (const Writer& writer : kWriters) {
    const std::string printed =
        writer.printing != nullptr ? runCli(writer.printing(m_project.string())).out : "";
    const bool keepsHistory = writer.name == std::string("resave");

    for (const Situation& situation : situations) {
      SCOPED_TRACE(std::string(writer.name) + " " + situation.name);
      const fs::path folder = m_dir / (std::string(writer.name) + "-" + situation.name);
      fs::create_directory(folder);
      const fs::path output = folder / writer.outputName;
      situation.prepare(output);
      const fs::file_type typeBefore = fs::symlink_status(output).type();
      std::error_code ignored;
      const fs::path holder = fs::weakly_canonical(output, ignored);
      const std::set<std::string> before = namesIn(folder);
      const std::set<std::string> holderBefore = namesIn(holder.parent_path());

      const Ran ran = runCli(writer.arguments(m_project.string(), output.string()));

      EXPECT_EQ(ran.code, situation.exitCode) << ran.err;
      EXPECT_EQ(fs::symlink_status(output).type(), typeBefore);
      if (situation.exitCode == 0) {
        EXPECT_TRUE(writer.isNew(readBytes(holder), printed)) << readBytes(holder).substr(0, 80);
      } else {
        EXPECT_NE(ran.err.find("cannot write " + output.string() + ": " + situation.error),
                  std::string::npos)
            << ran.err;
        if (fs::is_regular_file(output)) {
          EXPECT_EQ(readBytes(output), kOld);
        }
      }
      if (situation.mode != 0) {
        EXPECT_EQ(modeOf(holder), situation.mode);
      }
      // No temporary file anywhere; a project save adds its history beside the real file.
      std::set<std::string> expected = holderBefore;
      if (situation.exitCode == 0 && keepsHistory) expected.insert(".quillon-history");
      EXPECT_EQ(namesIn(holder.parent_path()), expected);
      if (holder.parent_path() != folder) {
        EXPECT_EQ(namesIn(folder), before);
      }
    }
  }
}

TEST_F(SafeWriteTest, OwnerOfTheReplacedFileStays) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can give a file away";
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    const fs::path output = m_dir / writer.outputName;
    writeBytes(output, kOld);
    ASSERT_EQ(::chown(output.c_str(), 4242, 4343), 0);
    ASSERT_EQ(runCli(writer.arguments(m_project.string(), output.string())).code, 0);
    struct stat status {};
    ASSERT_EQ(::stat(output.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 4242U);
    EXPECT_EQ(status.st_gid, 4343U);
  }
}

TEST_F(SafeWriteTest, FullDiskKeepsTheOldFileAndLeavesNoTemporary) {
  const testing::SmallFileSystem disk;
  if (!disk.mounted()) GTEST_SKIP() << "cannot mount a small file system here";
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    const fs::path output = disk.path() / writer.outputName;
    writeBytes(output, kOld);
    disk.fill();
    const Ran ran = runCli(writer.arguments(m_project.string(), output.string()));
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
