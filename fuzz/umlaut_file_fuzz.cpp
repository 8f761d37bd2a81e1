// libFuzzer target of Umlaut.ini: any file loads without a crash and with at most one box, and
// the table the editor saves from it loads back as the format allows.

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "fuzz_support.h"
#include "text/umlaut_file.h"

namespace {

using quillon::fuzz::require;

const std::filesystem::path& filePath() {
  static const std::filesystem::path kPath = [] {
    // In memory where the system offers it: the file is written four times per input.
    std::error_code error;
    const auto base = std::filesystem::is_directory("/dev/shm", error)
                          ? std::filesystem::path("/dev/shm")
                          : std::filesystem::temp_directory_path();
    const auto folder = base / ("quillon-umlaut-fuzz-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    return folder / "Umlaut.ini";
  }();
  return kPath;
}

quillon::UmlautFile loadBytes(const std::string& bytes, quillon::fuzz::RecordingDialog& dialog) {
  {
    std::ofstream out(filePath(), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  return quillon::loadUmlautFile(filePath(), dialog);
}

void requireWellFormed(const quillon::UmlautRows& rows) {
  for (const auto& [character, substitute] : rows) {
    // A line ends a row, and a ";" can only be a whole substitute.
    require(character.find('\n') == std::string::npos);
    require(substitute.find('\n') == std::string::npos);
    require(character.find(';') == std::string::npos);
    require(substitute == ";" || substitute.find(';') == std::string::npos);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  quillon::fuzz::RecordingDialog dialog;
  quillon::UmlautFile file = loadBytes(bytes, dialog);
  require(file.status == quillon::UmlautFileStatus::Ok);
  require(dialog.boxes.size() <= 1);
  requireWellFormed(file.rows);

  // The editor writes the table as one line. Read back, a table from several lines may change
  // where the format cannot tell an empty substitute before a row without a PC character from
  // a ";" substitute; from then on only the last row may be lost (a short row at the end of a
  // line), every other row comes back as it was, and the table never grows.
  quillon::UmlautRows rows = file.rows;
  for (int round = 0;; ++round) {
    quillon::fuzz::RecordingDialog quiet;
    const quillon::UmlautFile again = loadBytes(quillon::umlautLine(rows) + "\r\n", quiet);
    require(quiet.boxes.empty());
    requireWellFormed(again.rows);
    require(again.rows.size() <= rows.size());
    if (round > 0) {
      require(again.rows.size() + 1 >= rows.size());
      require(std::equal(again.rows.begin(), again.rows.end(), rows.begin()));
    }
    if (again.rows == rows) break;
    rows = again.rows;
  }
  return 0;
}
