#pragma once
// A whole file as bytes, or the system's reason why not.

#include <filesystem>
#include <string>

namespace quillon {

struct FileBytes {
  std::string bytes;
  int error = 0;  // errno; 0 when the whole file was read
};

[[nodiscard]] FileBytes ReadWholeFile(const std::filesystem::path& path);

}  // namespace quillon
