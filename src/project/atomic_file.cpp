#include "project/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace quillon {

namespace {

WriteResult failure(int error) { return {false, std::generic_category().message(error)}; }

// "x" makes fopen fail instead of reusing a temporary file another save is still writing.
std::FILE* openTemporary(const std::filesystem::path& target, std::filesystem::path& temporary,
                         int& error) {
  constexpr int kAttempts = 100;
  error = 0;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    temporary = target;
    temporary.replace_filename("." + target.filename().string() + ".tmp" + std::to_string(attempt));
    errno = 0;
    if (std::FILE* file = std::fopen(temporary.string().c_str(), "wbx")) return file;
    error = errno;
    if (error != EEXIST) return nullptr;
  }
  return nullptr;
}

}  // namespace

WriteResult WriteFileReplacing(const std::filesystem::path& target, std::string_view bytes) {
  std::filesystem::path temporary;
  int error = 0;
  std::FILE* file = openTemporary(target, temporary, error);
  if (file == nullptr) return failure(error != 0 ? error : EIO);

  errno = 0;
  bool ok =
      std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
  error = ok ? 0 : errno;
  // A full disk may only show when the buffers are handed over on close.
  if (std::fclose(file) != 0 && ok) {
    ok = false;
    error = errno;
  }
  if (!ok) {
    std::error_code ignored;
    std::filesystem::remove(temporary, ignored);
    return failure(error != 0 ? error : EIO);
  }

  std::error_code ec;
  std::filesystem::rename(temporary, target, ec);
  if (ec) {
    std::error_code ignored;
    std::filesystem::remove(temporary, ignored);
    return {false, ec.message()};
  }
  return {};
}

}  // namespace quillon
