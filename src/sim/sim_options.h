#pragma once
// The command line of telvane-sim.

#include <string>
#include <vector>

#include "sim/module_config.h"

namespace quillon::sim {

struct SimOptions {
  ModuleConfig module;
  std::string link;        // --link: a symbolic link to the pseudo-terminal
  int registerAs = 0;      // --register: port number to register as; 0 none
  std::string loggerFile;  // --logger: the logger text served on "L"
  std::string stateFile;   // --state: the module's memory across runs
  bool trace = false;      // --trace: every byte both ways on stderr
  bool help = false;
  bool version = false;
};

// args excludes the program name. Accepts "--name value" and "--name=value".
[[nodiscard]] bool parseSimOptions(const std::vector<std::string>& args, SimOptions& options,
                                   std::string& error);

[[nodiscard]] std::string simUsage();

}  // namespace quillon::sim
