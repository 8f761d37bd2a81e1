#include "project/temporary_file.h"

#include <cerrno>
#include <cstdint>
#include <random>
#include <string>
#include <system_error>

#include "project/system_files.h"
#include "project/write_target.h"

namespace quillon {

namespace {

constexpr std::string_view kMark = ".quillon-";
constexpr std::string_view kSuffix = ".tmp";
constexpr std::size_t kRandomDigits = 16;
// Long target names are cut so that the temporary name stays within the system's 255 bytes.
constexpr std::size_t kLongestNamePart = 200;
constexpr int kAttempts = 16;

// Built from the native name: on Windows a file name need not fit any narrow encoding.
std::filesystem::path temporaryName(const std::filesystem::path& target, std::uint64_t random) {
  using Native = std::filesystem::path::string_type;
  static constexpr char kHex[] = "0123456789abcdef";
  Native digits(kRandomDigits, '0');
  for (std::size_t i = 0; i < kRandomDigits; ++i) {
    digits[kRandomDigits - 1 - i] = static_cast<Native::value_type>(kHex[random & 0xF]);
    random >>= 4;
  }
  const auto ascii = [](std::string_view text) { return Native(text.begin(), text.end()); };
  return ascii(".") + target.filename().native().substr(0, kLongestNamePart) + ascii(kMark) +
         digits + ascii(kSuffix);
}

// The tail of a temporary file's name, in the name's own characters.
template <typename Char>
bool isTemporaryName(std::basic_string_view<Char> name) {
  const std::size_t tail = kMark.size() + kRandomDigits + kSuffix.size();
  if (name.size() <= tail + 1 || name.front() != Char('.')) return false;
  const std::basic_string_view<Char> end = name.substr(name.size() - tail);
  for (std::size_t i = 0; i < kMark.size(); ++i) {
    if (end[i] != static_cast<Char>(kMark[i])) return false;
  }
  for (std::size_t i = 0; i < kRandomDigits; ++i) {
    const Char c = end[kMark.size() + i];
    if (!((c >= Char('0') && c <= Char('9')) || (c >= Char('a') && c <= Char('f')))) return false;
  }
  for (std::size_t i = 0; i < kSuffix.size(); ++i) {
    if (end[kMark.size() + kRandomDigits + i] != static_cast<Char>(kSuffix[i])) return false;
  }
  return true;
}

}  // namespace

bool IsTemporaryName(std::string_view name) { return isTemporaryName(name); }

TemporaryFile CreateTemporaryBeside(const std::filesystem::path& target, unsigned mode) {
  std::random_device random;
  const std::filesystem::path folder = FolderOf(target);
  int error = EEXIST;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::uint64_t value = (std::uint64_t{random()} << 32) ^ std::uint64_t{random()};
    std::filesystem::path path = folder / temporaryName(target, value);
    os::Created created = os::CreateExclusive(path, mode);
    if (created.handle == os::kNoHandle) {
      error = created.error;
      if (error == EEXIST) continue;
      return {-1, {}, error};
    }
    if (os::ClaimForWriting(created.handle, path)) return {created.handle, std::move(path), 0};
    os::Close(created.handle);
    error = EEXIST;
  }
  return {-1, {}, error};
}

void RemoveAbandonedTemporaries(const std::filesystem::path& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
       it.increment(error)) {
    const std::filesystem::path::string_type name = it->path().filename().native();
    if (isTemporaryName<std::filesystem::path::value_type>(name)) os::RemoveIfAbandoned(it->path());
  }
}

}  // namespace quillon
