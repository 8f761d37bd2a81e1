#include "project/temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <random>
#include <string>
#include <system_error>

#include "project/write_target.h"

namespace quillon {

namespace {

constexpr std::string_view kMark = ".quillon-";
constexpr std::string_view kSuffix = ".tmp";
constexpr std::size_t kRandomDigits = 16;
// Long target names are cut so that the temporary name stays within the system's 255 bytes.
constexpr std::size_t kLongestNamePart = 200;
constexpr int kAttempts = 16;

std::string temporaryName(const std::filesystem::path& target, std::uint64_t random) {
  static constexpr char kHex[] = "0123456789abcdef";
  std::string digits(kRandomDigits, '0');
  for (std::size_t i = 0; i < kRandomDigits; ++i) {
    digits[kRandomDigits - 1 - i] = kHex[random & 0xF];
    random >>= 4;
  }
  return "." + target.filename().string().substr(0, kLongestNamePart) + std::string(kMark) +
         digits + std::string(kSuffix);
}

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Locks the new file and checks that it is still the one under `path`: a clean-up that ran
// between the creation and the lock may have taken it for an abandoned one.
bool lockedAndStillThere(int fd, const std::filesystem::path& path) {
  if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    // Where the file system has no locks, nobody can remove the file as abandoned either.
    if (errno == EWOULDBLOCK) return false;
  }
  struct stat opened {};
  struct stat named {};
  return ::fstat(fd, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 && sameFile(opened, named);
}

void removeIfAbandoned(const std::filesystem::path& path) {
  // Opened for writing: where locks are emulated (NFS), an exclusive lock needs it.
  const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (fd < 0) return;
  struct stat opened {};
  struct stat named {};
  // The lock is free only when the writer that held it is gone.
  if (::fstat(fd, &opened) == 0 && S_ISREG(opened.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0 &&
      ::lstat(path.c_str(), &named) == 0 && sameFile(opened, named)) {
    ::unlink(path.c_str());
  }
  ::close(fd);
}

}  // namespace

bool IsTemporaryName(std::string_view name) {
  const std::size_t tail = kMark.size() + kRandomDigits + kSuffix.size();
  if (name.size() <= tail + 1 || name.front() != '.' || !name.ends_with(kSuffix)) return false;
  const std::string_view end = name.substr(name.size() - tail);
  if (!end.starts_with(kMark)) return false;
  for (char c : end.substr(kMark.size(), kRandomDigits)) {
    if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'))) return false;
  }
  return true;
}

TemporaryFile CreateTemporaryBeside(const std::filesystem::path& target, unsigned mode) {
  std::random_device random;
  const std::filesystem::path folder = FolderOf(target);
  int error = EEXIST;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::uint64_t value = (std::uint64_t{random()} << 32) ^ std::uint64_t{random()};
    std::filesystem::path path = folder / temporaryName(target, value);
    const int fd =
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, static_cast<mode_t>(mode));
    if (fd < 0) {
      error = errno;
      if (error == EEXIST) continue;
      return {-1, {}, error};
    }
    if (lockedAndStillThere(fd, path)) return {fd, std::move(path), 0};
    ::close(fd);
    error = EEXIST;
  }
  return {-1, {}, error};
}

void RemoveAbandonedTemporaries(const std::filesystem::path& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
       it.increment(error)) {
    if (IsTemporaryName(it->path().filename().string())) removeIfAbandoned(it->path());
  }
}

}  // namespace quillon
