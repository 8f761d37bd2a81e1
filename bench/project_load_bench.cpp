// How long loading a huge project file takes: 10 MB of random bytes, and a file of lines of 1 MB
// in every record kind. Each load must take less than a second and leave a usable project: the
// table sizes of the module, a PIN of digits or placeholders, every flag in use yellow.
//
//   project_load_bench [limit-ms]

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "project/flag_assignment.h"
#include "project/number_text.h"
#include "project/project_file.h"

namespace {

namespace fs = std::filesystem;
using namespace quillon;

class CountingDialog : public UserDialog {
 public:
  BoxAnswer ask(const Box& box) override {
    ++boxes;
    return box.defaultAnswer;
  }
  int boxes = 0;
};

bool usable(const Project& project) {
  const std::string& pin = project.pin;
  bool ok = project.messages.rows() == 100 && project.filters.rows() == 10 &&
            project.phones.rows() == 60 && !project.changed &&
            (pin == "____" || (pin.size() >= 4 && pin.size() <= 5 &&
                               pin.find_first_not_of("0123456789") == std::string::npos));
  for (int flag = 1; flag <= 32; ++flag) {
    ok = ok && (LabelColour(project, flag - 1) == FlagColour::Yellow) ==
                   (NumericValue(project.flags.entries[static_cast<std::size_t>(flag)]) > 0);
  }
  return ok;
}

// Loads `bytes` from a real file; false when it takes `limitMs` or more or leaves no usable
// project.
bool loadWithin(const fs::path& path, const std::string& bytes, long limitMs, Project& project) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<long>(bytes.size()));
  UiTexts texts;
  texts.fill(kEnglish);
  CountingDialog dialog;
  const auto start = std::chrono::steady_clock::now();
  const LoadResult result = ProjectFileLoad(path, project, texts, dialog);
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::steady_clock::now() - start)
                      .count();
  const bool ok = result.status == LoadStatus::Ok && usable(project) && ms < limitMs;
  std::printf("%-10s %9zu bytes  %5lld ms  %d box(es)  %s\n", path.filename().c_str(), bytes.size(),
              static_cast<long long>(ms), dialog.boxes, ok ? "ok" : "FAILED");
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  const long limitMs = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 1000;
  const fs::path dir =
      fs::temp_directory_path() / ("quillon-load-bench-" + std::to_string(::getpid()));
  fs::create_directories(dir);

  std::mt19937 random(20240611);
  std::string noise(10U << 20, '\0');
  for (char& c : noise) c = static_cast<char>(random() & 0xFF);
  Project fromNoise;
  bool ok = loadWithin(dir / "random.EAY", noise, limitMs, fromNoise);

  const std::string line(1U << 20, 'q');  // not a hexadecimal digit
  Project fromLines;
  ok = loadWithin(dir / "long.EAY",
                  "M@" + line + ";" + line + "\r\nF01" + line + "\r\nT" + line + "\r\nT" + line +
                      ";" + line + "\r\nL1;;" + line + "\r\nE 3;" + line + "\r\nE" +
                      std::string(1U << 20, '9') + ";1;1\r\n",
                  limitMs, fromLines) &&
       ok;
  // The long lines are kept whole, and the PIN field of no hexadecimal digit is zero.
  ok = ok && fromLines.messages.cell(1, 4).size() == line.size() &&
       fromLines.phones.cell(1, 2).size() == line.size() && fromLines.pin == "0000";
  fs::remove_all(dir);
  return ok ? 0 : 1;
}
