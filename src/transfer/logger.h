#pragma once
// The module's logger: read through the transfer window as request "l", shown line by line,
// and saved to a text file on request.

#include <filesystem>
#include <string>
#include <string_view>

#include "transfer/transfer_context.h"

namespace quillon {

inline constexpr const char* kLoggerSaveTitle = "Monitordaten speichern";

// Reads the logger. On result 0, or on a failed read whose fragments the user wants, `monitor`
// is replaced by the received lines; otherwise it keeps its text. The boxes of this read-out are
// German in every language.
Task<> ReadLogger(TransferContext& context, std::string& monitor, int& result);

// The received text with a line feed after every carriage return.
[[nodiscard]] std::string loggerLines(std::string_view received);

enum class LoggerSave {
  Saved,
  Declined,      // the overwrite question was not answered Yes; the old file is untouched
  DeleteFailed,  // the old file may not be replaced: a folder, a pipe, a device (box shown)
  WriteFailed,   // the file could not be written (box shown); an old one is untouched
};

// Saves `monitor` followed by a line break to `path`, asking first when the file exists. The old
// file is replaced as a whole, only once the new one is complete.
[[nodiscard]] LoggerSave SaveLoggerText(const std::filesystem::path& path,
                                        const std::string& monitor, UserDialog& dialog);

}  // namespace quillon
