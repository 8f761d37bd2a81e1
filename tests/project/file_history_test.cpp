// Previous versions on real files: which are kept under which names, the newest twenty, and
// bringing one back. Permission bits and symbolic links are checked on POSIX systems only.

#include "project/file_history.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <random>

#include <gtest/gtest.h>

#include "file_bytes.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;
using testing::readBytes;
using testing::writeBytes;

constexpr std::time_t kTenOClock = 1718100000;  // 2024-06-11 10:00:00 UTC

class FileHistoryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(m_dir);
    // The names carry local time; UTC makes them the same on every machine.
#ifdef _WIN32
    ::_putenv("TZ=UTC");
    ::_tzset();
#else
    ::setenv("TZ", "UTC", 1);
    ::tzset();
#endif
  }
  void TearDown() override {
    // Windows deletes no read-only file.
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(m_dir, ignored)) {
      fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, ignored);
    }
    fs::remove_all(m_dir, ignored);
  }

  // Saves `bytes` over a.EAY and dates the result as saved at `saved`.
  void save(const std::string& bytes, std::time_t saved) {
    ASSERT_EQ(WriteKeepingHistory(m_file, bytes), WriteResult{});
    date(saved);
  }
  void date(std::time_t saved) {
    fs::last_write_time(
        m_file, fs::file_time_type::clock::from_sys(std::chrono::system_clock::from_time_t(saved)));
  }

  const fs::path m_dir =
      fs::temp_directory_path() /
      ("quillon-history-" +
       std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) + "-" +
       std::to_string(std::random_device{}()));
  const fs::path m_file = m_dir / "a.EAY";
  const fs::path m_history = m_dir / ".quillon-history";
};

TEST_F(FileHistoryTest, KeepsTheNewestTwentyNamedWhenTheyWereSaved) {
  for (int i = 0; i < 25; ++i) save("v" + std::to_string(i), kTenOClock + 60 * i);
  // v0 to v23 were replaced; v24 is the file.
  std::vector<FileVersion> expected;
  for (int i = 4; i < 24; ++i) {
    const std::string minute = (i < 10 ? "0" : "") + std::to_string(i);
    expected.push_back({"a.EAY.2024-06-11_10-" + minute + "-00", "2024-06-11 10:" + minute + ":00",
                        i < 10 ? 2U : 3U});
  }
  EXPECT_EQ(ListVersions(m_file), expected);
  EXPECT_EQ(readBytes(m_history / "a.EAY.2024-06-11_10-04-00"), "v4");
  EXPECT_EQ(readBytes(m_file), "v24");
}

TEST_F(FileHistoryTest, SameSecondCountsOnAndUnchangedContentKeepsNothing) {
  save("eins", kTenOClock);
  save("zwei", kTenOClock);
  save("drei", kTenOClock);
  save("drei", kTenOClock);
  writeBytes(m_history / "b.EAY.2024-06-11_10-00-00", "another file's");
  writeBytes(m_history / "a.EAY.2024-06-11_10-00-00.01", "no name of ours");
  EXPECT_EQ(ListVersions(m_file),
            (std::vector<FileVersion>{{"a.EAY.2024-06-11_10-00-00", "2024-06-11 10:00:00", 4},
                                      {"a.EAY.2024-06-11_10-00-00.2", "2024-06-11 10:00:00", 4}}));
  EXPECT_EQ(readBytes(m_history / "a.EAY.2024-06-11_10-00-00.2"), "zwei");
}

TEST_F(FileHistoryTest, RestoreBringsAVersionBackAndKeepsTheCurrentFile) {
  writeBytes(m_file, "first");
  fs::permissions(m_file, fs::perms(0600));
  date(kTenOClock);
  save("second", kTenOClock + 1);
  save("third", kTenOClock + 2);
  const std::vector<FileVersion> versions = ListVersions(m_file);
  ASSERT_EQ(versions.size(), 2U);
#ifndef _WIN32  // Windows has no permission bits for others
  struct stat status {};
  ASSERT_EQ(::stat((m_history / versions[0].name).c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);  // the PIN stays as private as it was
#endif

  ASSERT_EQ(RestoreVersion(m_file, versions[0].name), WriteResult{});
  EXPECT_EQ(readBytes(m_file), "first");
  const std::vector<FileVersion> after = ListVersions(m_file);
  ASSERT_EQ(after.size(), 3U);
  EXPECT_EQ(after[2].name, "a.EAY.2024-06-11_10-00-02");
  EXPECT_EQ(readBytes(m_history / after[2].name), "third");

  // Only names of the list are read: none leads out of the history folder.
  for (const char* name : {"../a.EAY", "a.EAY.2024-06-11_10-00-09", ""}) {
    EXPECT_EQ(RestoreVersion(m_file, name),
              (WriteResult{false, "No such version: " + std::string(name)}));
  }
  EXPECT_EQ(readBytes(m_file), "first");
}

#ifndef _WIN32  // symbolic links need a privilege on Windows
TEST_F(FileHistoryTest, LinksKeepTheirHistoryBesideTheRealFile) {
  fs::create_directory(m_dir / "real");
  writeBytes(m_dir / "real" / "a.EAY", "alt");
  fs::create_symlink("real/a.EAY", m_dir / "link.EAY");
  ASSERT_TRUE(WriteKeepingHistory(m_dir / "link.EAY", "neu").ok);
  EXPECT_TRUE(fs::is_symlink(m_dir / "link.EAY"));
  EXPECT_EQ(ListVersions(m_dir / "link.EAY"), ListVersions(m_dir / "real" / "a.EAY"));
  ASSERT_EQ(ListVersions(m_dir / "link.EAY").size(), 1U);
  EXPECT_FALSE(fs::exists(m_history));
}
#endif

TEST_F(FileHistoryTest, ASaveThatCannotHappenKeepsNothing) {
  writeBytes(m_file, "alt");
  fs::permissions(m_file, fs::perms(0444));
  EXPECT_EQ(WriteKeepingHistory(m_file, "neu"), (WriteResult{false, "Permission denied", true}));
  EXPECT_FALSE(fs::exists(m_history));
}

}  // namespace
}  // namespace quillon
