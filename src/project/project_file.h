#pragma once
// The project file "*.EAY": Windows-1252 text, one record per line, CR LF, fixed-width fields
// padded with code 182. A record is known only by its first character ("M" message, "MQ"
// acknowledgement request, "F" filter text, "T" SMS centre and phone numbers, "P" phone suffix,
// "L" PIN and station, "E" flag assignment, "V" program version). Loading is tolerant: a line it
// does not understand is skipped, and surplus records are dropped with one warning per kind.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "project/atomic_file.h"
#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"

namespace quillon {

// The version written into the "V" record.
struct ProgramVersion {
  int major = 0;
  int minor = 0;
  int revision = 0;
  friend bool operator==(const ProgramVersion&, const ProgramVersion&) = default;
};

// The version of this build.
[[nodiscard]] ProgramVersion BuildVersion();

inline constexpr int kPaddedFieldLength = 20;

// `value` padded with code 182 to 20 characters, or cut to its first 20.
[[nodiscard]] std::string PadField(std::string_view value);

// The PIN as the file holds it: a decimal PIN as four upper-case hexadecimal digits (its last
// four), anything that is not a number as "0000".
[[nodiscard]] std::string PinToFile(std::string_view pin);
// The PIN as the PIN box shows it after loading: the leading hexadecimal digits of the field as a
// decimal of at least four digits ("04D2" gives "1234").
[[nodiscard]] std::string PinFromFile(std::string_view field);

// The whole file as bytes. Cleans the phone numbers of the table on the way (their warnings go to
// `dialog`), exactly as a save does.
[[nodiscard]] std::string ProjectFileBytes(Project& project, UserDialog& dialog,
                                           const ProgramVersion& version = BuildVersion());

// Writes the project to `path`, replacing the file as a whole or not at all; the version it
// replaces is kept in the history folder beside it. Phone numbers are cleaned in the table as
// well. The changed flag is the caller's: it is left as it is.
[[nodiscard]] WriteResult ProjectFileSave(const std::filesystem::path& path, Project& project,
                                          UserDialog& dialog,
                                          const ProgramVersion& version = BuildVersion());

enum class LoadStatus : int {
  Ok = 0,
  ReadError = 1,  // the file is there but could not be read: the box shows the system's text
  FileNotFound = 9,
};

struct LoadResult {
  LoadStatus status = LoadStatus::Ok;
  std::string error;  // the system's error text for ReadError
  friend bool operator==(const LoadResult&, const LoadResult&) = default;
};

// Loads `path` into `project`. A missing file shows "File not found" and leaves the project as it
// was; so does a file that cannot be read (its box shows the system's text). When the file is
// there and the project has unsaved changes, `askChanged` runs first: it is where the caller puts
// its save prompt (AskChanged). Afterwards the changed flag is clear. Recording the path in the
// recent files and the window title are the caller's.
[[nodiscard]] LoadResult ProjectFileLoad(const std::filesystem::path& path, Project& project,
                                         const UiTexts& texts, UserDialog& dialog,
                                         const std::function<void()>& askChanged = {});

// Loads a project from the file's bytes: clears the project and reads every record. Never fails;
// whatever cannot be read is skipped.
void ProjectFileLoadBytes(std::string_view bytes, Project& project, const UiTexts& texts,
                          UserDialog& dialog);

}  // namespace quillon
