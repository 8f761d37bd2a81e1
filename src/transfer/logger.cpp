#include "transfer/logger.h"

#include <algorithm>
#include <system_error>

#include "project/atomic_file.h"
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

Task<> ReadLogger(TransferContext& context, std::string& monitor, int& result) {
  TransferOutcome outcome;
  result = co_await SignIn(context.link, uploadJob(kRequestLogger, kLabelLogger), outcome);
  const Box fragments{kOptionModuleTitle, kFragmentsGerman, BoxIcon::Critical, BoxButtons::YesNo,
                      BoxAnswer::No};
  // This dialog speaks German in every language.
  if (!acceptUploadResult(context, result, kNoConnectionGerman, fragments)) co_return;
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
  }
  // The old file goes only in the rename that puts the new one in its place: a save that fails
  // leaves it as it was.
  const WriteResult written = WriteFileReplacing(path, monitor + kFileLineBreak);
  if (written.ok) return LoggerSave::Saved;
  dialog.tell(kMainTitle, utf8ToCp1252(written.error) + ": " + shownPath, BoxIcon::Exclamation);
  return written.targetRefused ? LoggerSave::DeleteFailed : LoggerSave::WriteFailed;
}

}  // namespace quillon
