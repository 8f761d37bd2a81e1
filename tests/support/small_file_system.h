#pragma once
// A file system of a few kilobytes (tmpfs) on a fresh folder, for filling a disk on purpose.
// Mounting needs the right to do so; where that is missing (an unprivileged CI runner) mounted()
// is false and the test skips.

#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace quillon::testing {

class SmallFileSystem {
 public:
  explicit SmallFileSystem(const std::string& size = "64k")
      : m_path(std::filesystem::temp_directory_path() /
               ("quillon-full-" + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directories(m_path);
    const std::string options = "size=" + size + ",mode=0777";
    m_mounted = ::mount("tmpfs", m_path.c_str(), "tmpfs", 0, options.c_str()) == 0;
  }
  ~SmallFileSystem() {
    if (m_mounted) ::umount2(m_path.c_str(), MNT_DETACH);
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  SmallFileSystem(const SmallFileSystem&) = delete;
  SmallFileSystem& operator=(const SmallFileSystem&) = delete;

  [[nodiscard]] bool mounted() const { return m_mounted; }
  [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

  // Takes up every free block with a file of its own, which stays.
  void fill() const {
    std::ofstream filler(m_path / "filler", std::ios::binary);
    const std::string block(4096, 'f');
    while (filler.write(block.data(), static_cast<std::streamsize>(block.size()))) filler.flush();
  }

 private:
  std::filesystem::path m_path;
  bool m_mounted = false;
};

}  // namespace quillon::testing
