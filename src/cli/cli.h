#pragma once
// quillon-cli as a function, so that tests run it like the shell does.

#include <ostream>
#include <string>
#include <vector>

namespace quillon::cli {

// Runs the command line `arguments` (without the program name) and returns the exit code.
[[nodiscard]] int RunCli(const std::vector<std::string>& arguments, std::ostream& out,
                         std::ostream& err);

}  // namespace quillon::cli
