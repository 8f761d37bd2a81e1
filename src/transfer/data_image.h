#pragma once
// The data images: each kind of project data travels to the module as one 8-bit string with a
// fixed layout. This header builds them from the project and says how a download hands one to
// the transfer window; image_parse.h takes received images apart again. The builders show
// nothing: their warnings and panel texts come back with the image (image_notes.h).

#include <cstddef>
#include <optional>
#include <string>

#include "link/transfer.h"
#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"
#include "transfer/image_notes.h"
#include "wire/wire_format.h"

namespace quillon {

inline constexpr char kAckRequestSeparator = ' ';
inline constexpr const char* kMessagesHeader = "A;";
inline constexpr char kAckRequestRecord = 'Q';
inline constexpr const char* kConfigurationLeadingField = "00";
inline constexpr std::size_t kPhoneFieldWidth = 21;
inline constexpr std::size_t kClosingFieldWidth = 20;
inline constexpr std::size_t kSendTextCapacity = 32000;  // Sendetext; the rest goes to Sendetext2
inline constexpr int kSmallModuleLastIndex = 99;         // the text memory only binds this module
inline constexpr int kIdentifierDigits = 4;

// Kind letters: upper case announces a download, lower case requests an upload.
inline constexpr char kKindConfiguration = 'P';
inline constexpr char kKindMessages = 'M';
inline constexpr char kKindPhoneNumbers = 'T';
inline constexpr char kKindControllerData = 'Y';
inline constexpr char kRequestConfiguration = 'p';
inline constexpr char kRequestMessages = 'm';
inline constexpr char kRequestPhoneNumbers = 't';
inline constexpr char kRequestControllerData = 'y';
inline constexpr char kRequestLogger = 'l';

// Content labels shown in the transfer window.
inline constexpr const char* kLabelConfiguration = "Configuration";
inline constexpr const char* kLabelMessages = "Messages";
inline constexpr const char* kLabelPhoneNumbers = "Phone numbers";
inline constexpr const char* kLabelControllerData = "Millenium";
inline constexpr const char* kLabelLogger = "Reading Logger";

// What parsing an image may show: boxes, status-bar texts, the language's texts and the module's
// limits.
struct ImageEnv {
  UserDialog& dialog;
  StatusDisplay& status;
  const UiTexts& texts;
  const ModuleLimits& limits;
};

struct MessagesImage {
  std::string image;
  int failed = 0;  // 1: the text memory refused the image, which is then empty
  ImageNotes notes;
};

// The messages image: header, one record per message row, the acknowledgement-request record,
// one record per filter row, end mark. Warns about one-character texts; refuses an image that
// does not fit the module's text memory (see the three outcomes in the implementation).
[[nodiscard]] MessagesImage DoMeldSend(const Project& project, const UiTexts& texts,
                                       const ModuleLimits& limits);

// The error box when `image` is longer than the module's text memory, nothing when it fits. An
// image that is only the end mark always fits.
[[nodiscard]] std::optional<Box> CheckTextMemory(const std::string& image, const UiTexts& texts,
                                                 const ModuleLimits& limits);

struct PhoneImage {
  std::string image;
  ImageNotes notes;
};

// The phone-number image: SMS-centre field, one 21-character field per phone row, the closing
// field and the end mark. Normalises every number and writes it back into the project (the
// SMS-centre number, the table cells and the closing field variable `phoneSuffix`), so the
// user sees what was sent. `reportedPhoneCount` is the count the module's identity reported.
[[nodiscard]] PhoneImage DoTelSend(Project& project, const UiTexts& texts,
                                   const ModuleLimits& limits, int reportedPhoneCount);

// The configuration image: "00", 182, the PIN box text as it stands, 182, 253.
[[nodiscard]] std::string configurationImage(const std::string& pin);

// A PIN is refused when its numeric value is negative or when the input mask's placeholder
// "_" shows that digits are missing.
[[nodiscard]] bool pinRefused(const std::string& pin);

// The controller data image: one 10-character record per used flag, 182, the reception-flag
// field, 182, 253.
[[nodiscard]] std::string controllerDataImage(const FlagTable& flags);

// The image that a download of `kind` ("M", "T", "P" or "Y") sends, built with the same checks,
// warnings and write-backs. `refused` when that download would send nothing: the text memory
// refused the messages, the PIN was refused (with its "Settings" box), or the kind is unknown.
struct DownloadImage {
  std::string image;
  bool refused = false;
  ImageNotes notes;
};
[[nodiscard]] DownloadImage buildDownloadImage(char kind, Project& project, const UiTexts& texts,
                                               const ModuleLimits& limits, int reportedPhoneCount);
// The same, with its notes shown on `env` at once.
[[nodiscard]] DownloadImage buildDownloadImage(char kind, Project& project, ImageEnv& env,
                                               int reportedPhoneCount);

inline constexpr const char* kSettingsTitle = "Settings";

// Sendetext and Sendetext2: an image of more than 32000 characters is handed over in two parts.
struct SendTexts {
  std::string first;
  std::string second;
};
[[nodiscard]] SendTexts splitSendText(const std::string& image);

// Everything a download hands to the transfer window for `image` of `kind`: mode text, content
// label, the two send texts and the start identifier over the whole image.
[[nodiscard]] TransferJob downloadJob(char kind, std::string contentLabel, const std::string& image,
                                      int identifierDigits = kIdentifierDigits);

// What an upload hands to the transfer window: mode text, content label and request letter.
[[nodiscard]] TransferJob uploadJob(char request, std::string contentLabel);

}  // namespace quillon
