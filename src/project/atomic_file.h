#pragma once
// Replacing a file without ever leaving a half-written one: the bytes go to a temporary file in
// the target's directory, which is renamed over the target only after it was written completely.

#include <filesystem>
#include <string>
#include <string_view>

namespace quillon {

struct WriteResult {
  bool ok = true;
  std::string error;  // the system's error text when !ok
  friend bool operator==(const WriteResult&, const WriteResult&) = default;
};

// Writes `bytes` to `target`, replacing what was there. On failure the target is as it was and
// no temporary file is left behind.
[[nodiscard]] WriteResult WriteFileReplacing(const std::filesystem::path& target,
                                             std::string_view bytes);

}  // namespace quillon
