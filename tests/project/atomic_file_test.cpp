// The safe writer on real files: what it keeps of the file it replaces, what it refuses to
// replace, and that no temporary file outlives a save, not even one of a writer that was killed.
// The full disk is safe_write_test's, through the real program. Permission bits, owners, pipes,
// devices, symbolic links and locks exist only on POSIX systems; the tests of those are POSIX-only.

#include "project/atomic_file.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <cstdio>
#include <functional>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "file_bytes.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

class AtomicFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(m_dir);
#ifndef _WIN32  // the bits of new files are the umask's only on POSIX
    m_umask = ::umask(022);
#endif
  }
  void TearDown() override {
#ifndef _WIN32
    ::umask(m_umask);
#endif
    clear();
    std::error_code ignored;
    fs::remove(m_dir, ignored);
  }

  // Empties the test's folder; Windows deletes no read-only file, so they are made writable first.
  void clear() {
    m_living.discard();
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(m_dir, ignored)) {
      fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, ignored);
    }
    fs::remove_all(m_dir, ignored);
    fs::create_directories(m_dir);
  }

  // The names in the test's folder, links and hidden files included.
  [[nodiscard]] std::set<std::string> names() const {
    std::set<std::string> found;
    for (const auto& entry : fs::directory_iterator(m_dir)) {
      found.insert(entry.path().filename().string());
    }
    return found;
  }

  const fs::path m_dir =
      fs::temp_directory_path() /
      ("quillon-atomic-" +
       std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + "-" +
       std::to_string(std::random_device{}()));
#ifndef _WIN32
  mode_t m_umask = 0;
#endif
  FileReplacement m_living;  // a writer that is still at work
};

// The rules every system keeps, Windows included: a refused target stays as it was, no failure
// leaves a temporary file behind, and the temporary files of dead writers go with the next save
// while those of living writers stay.
TEST_F(AtomicFileTest, RefusalsFailuresAndLeftOversOnEverySystem) {
  // A rename over a folder: POSIX reports the folder, Windows denies the access.
#ifdef _WIN32
  const std::string renameOverFolder = "Permission denied";
#else
  const std::string renameOverFolder = "Is a directory";
#endif
  const std::string folder = "<folder>";
  const auto saveOverA = [](const fs::path& d) { return WriteFileReplacing(d / "a.EAY", "neu"); };
  struct Row {
    const char* name;
    std::function<void(const fs::path&)> prepare;
    std::function<WriteResult(const fs::path&)> save;
    WriteResult result;
    std::map<std::string, std::string> files;  // all there is afterwards, with the bytes
    bool readOnlyStays;
  };
  const Row rows[] = {
      {"readOnlyTargetIsRefused",
       [](const fs::path& d) {
         writeBytes(d / "a.EAY", "alt");
         fs::permissions(d / "a.EAY", fs::perms(0444));
       },
       saveOverA,
       WriteResult{false, "Permission denied", true},
       {{"a.EAY", "alt"}},
       true},
      {"folderIsRefused",
       [](const fs::path& d) { fs::create_directory(d / "a.EAY"); },
       saveOverA,
       WriteResult{false, "Is a directory", true},
       {{"a.EAY", folder}},
       false},
      {"missingFolderCreatesNothing",
       [](const fs::path&) {},
       [](const fs::path& d) { return WriteFileReplacing(d / "fehlt" / "a.EAY", "neu"); },
       WriteResult{false, "No such file or directory"},
       {},
       false},
      {"renameThatFailsTakesItsTemporaryAlong",
       [](const fs::path& d) { writeBytes(d / "a.EAY", "alt"); },
       [](const fs::path& d) {
         FileReplacement replacement;
         const WriteResult begun = replacement.begin(d / "a.EAY");
         EXPECT_TRUE(begun.ok) << begun.error;
         EXPECT_TRUE(replacement.append("neu"));
         fs::remove(d / "a.EAY");
         fs::create_directory(d / "a.EAY");
         return replacement.commit();
       },
       WriteResult{false, renameOverFolder},
       {{"a.EAY", folder}},
       false},
      // More than enough left-overs to have blocked a writer that numbered its temporary files.
      {"abandonedTemporariesGo",
       [](const fs::path& d) {
         writeBytes(d / "a.EAY", "alt");
         writeBytes(d / "b.EAY", "b");
         for (int i = 0; i < 150; ++i) {
           char digits[17];
           std::snprintf(digits, sizeof digits, "%016x", 0xabc000 + i);
           writeBytes(d / (".a.EAY.quillon-" + std::string(digits) + ".tmp"), "halb");
         }
         writeBytes(d / ".b.EAY.quillon-fedcba9876543210.tmp", "halb");
       },
       saveOverA,
       WriteResult{},
       {{"a.EAY", "neu"}, {"b.EAY", "b"}},
       false},
      {"theTemporaryOfALivingWriterStays",
       [this](const fs::path& d) {
         writeBytes(d / "a.EAY", "alt");
         writeBytes(d / "b.EAY", "b alt");
         ASSERT_TRUE(m_living.begin(d / "b.EAY").ok);
         ASSERT_TRUE(m_living.append("b neu"));
       },
       saveOverA,
       WriteResult{},
       {{"a.EAY", "neu"}, {"b.EAY", "b neu"}},
       false},
      {"namesOfOthersStay",
       [](const fs::path& d) {
         writeBytes(d / ".a.EAY.tmp0", "fremd");
         writeBytes(d / ".a.EAY.quillon-nothex.tmp", "fremd");
       },
       saveOverA,
       WriteResult{},
       {{"a.EAY", "neu"}, {".a.EAY.tmp0", "fremd"}, {".a.EAY.quillon-nothex.tmp", "fremd"}},
       false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    clear();
    row.prepare(m_dir);

    EXPECT_EQ(row.save(m_dir), row.result);
    // The living writer finishes only now: its save works when its temporary file is still there.
    if (m_living.isOpen()) {
      EXPECT_EQ(m_living.commit(), WriteResult{});
    }

    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(m_dir)) {
      files[entry.path().filename().string()] =
          entry.is_directory() ? folder : readBytes(entry.path());
    }
    EXPECT_EQ(files, row.files);
    if (row.readOnlyStays) {
      EXPECT_EQ(fs::status(m_dir / "a.EAY").permissions() & fs::perms::owner_write,
                fs::perms::none);
    }
  }
}

// POSIX-only from here: permission bits, owners, pipes, devices, symbolic links and locks.
#ifndef _WIN32

mode_t modeOf(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

TEST_F(AtomicFileTest, KeepsPermissionsAndWritesThroughLinks) {
  struct Row {
    const char* name;
    std::function<void(const fs::path&)> prepare;
    const char* written;   // the name given to the writer
    const char* lands;     // the file that must hold the new bytes
    mode_t mode;           // its permission bits afterwards
    const char* stayLink;  // a link that must still be a link, or none
  };
  const Row rows[] = {
      {"privateFileStaysPrivate",
       [](const fs::path& d) {
         writeBytes(d / "a.EAY", "alt");
         fs::permissions(d / "a.EAY", fs::perms(0600));
       },
       "a.EAY", "a.EAY", 0600, nullptr},
      {"groupBitsKept",
       [](const fs::path& d) {
         writeBytes(d / "a.EAY", "alt");
         fs::permissions(d / "a.EAY", fs::perms(0664));
       },
       "a.EAY", "a.EAY", 0664, nullptr},
      {"newFileAsAnyNewFile", [](const fs::path&) {}, "a.EAY", "a.EAY", 0644, nullptr},
      {"relativeLink",
       [](const fs::path& d) {
         fs::create_directory(d / "echt");
         writeBytes(d / "echt" / "a.EAY", "alt");
         fs::permissions(d / "echt" / "a.EAY", fs::perms(0600));
         fs::create_symlink("echt/a.EAY", d / "link.EAY");
       },
       "link.EAY", "echt/a.EAY", 0600, "link.EAY"},
      {"chainOfAbsoluteLinks",
       [](const fs::path& d) {
         writeBytes(d / "a.EAY", "alt");
         fs::create_symlink(d / "a.EAY", d / "b.EAY");
         fs::create_symlink(d / "b.EAY", d / "c.EAY");
       },
       "c.EAY", "a.EAY", 0644, "b.EAY"},
      {"danglingLinkCreatesItsFile",
       [](const fs::path& d) { fs::create_symlink("neu.EAY", d / "link.EAY"); }, "link.EAY",
       "neu.EAY", 0644, "link.EAY"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
    row.prepare(m_dir);
    const std::set<std::string> before = names();

    ASSERT_EQ(WriteFileReplacing(m_dir / row.written, "neu\r\n"), WriteResult{});

    EXPECT_EQ(readBytes(m_dir / row.lands), "neu\r\n");
    EXPECT_EQ(modeOf(m_dir / row.lands), row.mode);
    if (row.stayLink != nullptr) {
      EXPECT_TRUE(fs::is_symlink(m_dir / row.stayLink));
    }
    std::set<std::string> expected = before;
    expected.insert(fs::path(row.lands).begin()->string());
    EXPECT_EQ(names(), expected);  // nothing else, no temporary file
  }
}

TEST_F(AtomicFileTest, RefusesWhatIsNoPlainWritableFile) {
  struct Row {
    const char* name;
    std::function<void(const fs::path&)> prepare;
    std::string error;
    bool refused;
  };
  const fs::path target = m_dir / "a.EAY";
  const Row rows[] = {
      {"namedPipe", [](const fs::path& t) { ASSERT_EQ(::mkfifo(t.c_str(), 0644), 0); },
       "Is a named pipe, not a file", true},
      {"linkToADevice", [](const fs::path& t) { fs::create_symlink("/dev/null", t); },
       "Is a device, not a file", true},
      {"linkLoop",
       [](const fs::path& t) {
         fs::create_symlink("b.EAY", t);
         fs::create_symlink("a.EAY", t.parent_path() / "b.EAY");
       },
       "Too many levels of symbolic links", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(m_dir);
    fs::create_directories(m_dir);
    row.prepare(target);
    const fs::file_status before = fs::symlink_status(target);
    const std::set<std::string> namesBefore = names();

    EXPECT_EQ(WriteFileReplacing(target, "neu"), (WriteResult{false, row.error, row.refused}));

    EXPECT_EQ(fs::symlink_status(target).type(), before.type());
    EXPECT_EQ(names(), namesBefore);
  }
}

TEST_F(AtomicFileTest, KeepsTheOwnerWhereTheSystemLetsIt) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can give a file away";
  const fs::path target = m_dir / "a.EAY";
  writeBytes(target, "alt");
  ASSERT_EQ(::chown(target.c_str(), 4242, 4343), 0);
  fs::permissions(target, fs::perms(0640));
  ASSERT_TRUE(WriteFileReplacing(target, "neu").ok);
  struct stat status {};
  ASSERT_EQ(::stat(target.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 4242U);
  EXPECT_EQ(status.st_gid, 4343U);
  EXPECT_EQ(status.st_mode & 07777, 0640U);

  // A file that is new takes what it is told to take after.
  ASSERT_TRUE(WriteFileReplacing(m_dir / "b.EAY", "neu", {target}).ok);
  ASSERT_EQ(::stat((m_dir / "b.EAY").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 4242U);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

#endif  // _WIN32

}  // namespace
}  // namespace quillon
