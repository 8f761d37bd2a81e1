#include "project/read_file.h"

#include <cerrno>
#include <cstdio>

#include "project/system_files.h"

namespace quillon {

FileBytes ReadWholeFile(const std::filesystem::path& path) {
  FileBytes result;
  errno = 0;
  std::FILE* file = os::OpenForReading(path);
  if (file == nullptr) {
    result.error = errno != 0 ? errno : EIO;
    return result;
  }
  char buffer[1 << 16];
  std::size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) result.bytes.append(buffer, got);
  if (std::ferror(file) != 0) result.error = errno != 0 ? errno : EIO;
  std::fclose(file);
  return result;
}

}  // namespace quillon
