#pragma once
// The user's own substitution table, kept by the editor dialog in "Umlaut.ini": one line, "U"
// followed by the cells, each row as character ";" substitute, rows separated by ";". The fixed
// conversions of substitution.h never read it.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "project/user_dialog.h"

namespace quillon {

// One row of the editor grid: the PC character and what is sent in its place.
using UmlautRow = std::pair<std::string, std::string>;
using UmlautRows = std::vector<UmlautRow>;

enum class UmlautFileStatus { Ok, CannotOpen, CannotWrite };

struct UmlautFile {
  UmlautFileStatus status = UmlautFileStatus::Ok;
  UmlautRows rows;
};

inline constexpr const char* kUninterpretableLine = "String nicht interpretierbar";

// "C:\temp\Umlaut.ini" on Windows, where the file has always been; elsewhere the file in the
// user's own configuration folder `configFolder`, where no other user can plant one.
[[nodiscard]] std::filesystem::path umlautPathIn(const std::filesystem::path& configFolder);

// Reads every line; a line that does not start with "U" is dropped, the others add their rows.
// However many lines are dropped, one exclamation box says so and names the file. A substitute
// that is itself ";" is written as ";;;" between rows and read back as such; a PC character ";"
// cannot be kept. A row without a substitute at the end of a line is dropped. A file that cannot
// be opened, or a folder of that name, gives CannotOpen and no rows, without a box.
[[nodiscard]] UmlautFile loadUmlautFile(const std::filesystem::path& path, UserDialog& dialog);

// Replaces the file with the one line "U" + the rows, ended by CR LF; no rows give "U". The file
// is replaced as a whole or, when that fails (CannotWrite), left as it was.
[[nodiscard]] UmlautFileStatus saveUmlautFile(const std::filesystem::path& path,
                                              const UmlautRows& rows);

// The line as saveUmlautFile writes it, without the line end.
[[nodiscard]] std::string umlautLine(const UmlautRows& rows);

// In the substitute column a code is typed as exactly three decimal digits ("231"); they stand
// for the one character of that code. Anything else, or a code above 255, is no code.
[[nodiscard]] std::optional<char> substituteFromDigits(std::string_view digits);

}  // namespace quillon
