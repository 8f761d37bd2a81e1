#include "transfer/logger.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>

#include "text/code_page.h"
#include "transfer/upload.h"

namespace quillon {

namespace {

inline constexpr const char* kNoConnectionGerman = "Keine Verbindung !";
inline constexpr const char* kFragmentsGerman =
    "Beim Auslesen trat ein Fehler auf. "
    "Sollen die Datenfragmente trotzdem weiterbearbeitet werden ?";
inline constexpr const char* kReplaceQuestion = "Bestehende Datei ersetzen - ";
inline constexpr const char* kFileLineBreak = "\r\n";

}  // namespace

std::string loggerLines(std::string_view received) {
  std::string lines;
  lines.reserve(received.size() + received.size() / 16);
  for (char c : received) {
    lines += c;
    if (c == '\r') lines += '\n';
  }
  return lines;
}

void ReadLogger(TransferContext& context, std::string& monitor, int& result) {
  TransferOutcome outcome;
  result = SignIn(context.link, uploadJob(kRequestLogger, kLabelLogger), outcome);
  const Box fragments{kOptionModuleTitle, kFragmentsGerman, BoxIcon::Critical, BoxButtons::YesNo,
                      BoxAnswer::No};
  // This dialog speaks German in every language.
  if (!acceptUploadResult(context, result, kNoConnectionGerman, fragments)) return;
  // End marks frame the module's blocks; they are not characters of the logger text.
  std::string received = receivedDataText(outcome);
  if (!received.empty() && received.back() == kEndOfBlock) received.pop_back();
  monitor = loggerLines(received);
}

LoggerSave SaveLoggerText(const std::filesystem::path& path, const std::string& monitor,
                          UserDialog& dialog) {
  // Paths and system texts come as UTF-8; boxes take Windows-1252.
  const std::string shownPath = utf8ToCp1252(path.string());
  std::error_code error;
  if (std::filesystem::exists(path, error)) {
    const BoxAnswer answer =
        dialog.ask(Box{kMainTitle, kReplaceQuestion + shownPath + "?", BoxIcon::Question,
                       BoxButtons::YesNoCancel, BoxAnswer::Yes});
    if (answer != BoxAnswer::Yes) return LoggerSave::Declined;
    if (!std::filesystem::remove(path, error) || error) {
      dialog.tell(kMainTitle, utf8ToCp1252(error.message()), BoxIcon::Exclamation);
      return LoggerSave::DeleteFailed;
    }
  }
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (file.is_open()) {
    file << monitor << kFileLineBreak;
    file.close();
  }
  if (!file) {
    const int code = errno != 0 ? errno : EIO;
    dialog.tell(kMainTitle, utf8ToCp1252(std::generic_category().message(code)) + ": " + shownPath,
                BoxIcon::Exclamation);
    return LoggerSave::WriteFailed;
  }
  return LoggerSave::Saved;
}

}  // namespace quillon
