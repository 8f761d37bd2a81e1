#include "sim/sim_options.h"

#include <cctype>
#include <charconv>
#include <functional>
#include <map>

namespace quillon::sim {
namespace {

bool parseNumber(const std::string& text, int low, int high, int& value) {
  int parsed = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (ec != std::errc{} || end != text.data() + text.size() || parsed < low || parsed > high)
    return false;
  value = parsed;
  return true;
}

struct NumberOption {
  int low;
  int high;
  int ModuleConfig::*field;
};

const std::map<std::string, NumberOption>& numberOptions() {
  static const std::map<std::string, NumberOption> options = {
      {"--device-type", {0, 255, &ModuleConfig::deviceType}},
      {"--bus", {0, 255, &ModuleConfig::bus}},
      {"--phones", {0, 253, &ModuleConfig::phones}},
      {"--firmware", {0, 65535, &ModuleConfig::firmware}},
      {"--baud", {0, 4'000'000, &ModuleConfig::baud}},
      {"--nak-every", {0, 1'000'000, &ModuleConfig::nakEvery}},
      {"--corrupt-every", {0, 1'000'000, &ModuleConfig::corruptEvery}},
      {"--silent-after", {0, 1'000'000, &ModuleConfig::silentAfter}},
      {"--reply-noise", {0, 1000, &ModuleConfig::replyNoise}},
  };
  return options;
}

const std::map<std::string, bool ModuleConfig::*>& flagOptions() {
  static const std::map<std::string, bool ModuleConfig::*> options = {
      {"--merged-final-ack", &ModuleConfig::mergedFinalAck},
      {"--odd-start-reply", &ModuleConfig::oddStartReply},
      {"--mute-start-repeat", &ModuleConfig::muteStartRepeat},
      {"--end-every-block", &ModuleConfig::endEveryBlock},
      {"--ignore-version", &ModuleConfig::ignoreVersion},
  };
  return options;
}

}  // namespace

bool parseSimOptions(const std::vector<std::string>& args, SimOptions& options,
                     std::string& error) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string name = args[i];
    std::string value;
    bool hasValue = false;
    if (const auto eq = name.find('='); name.starts_with("--") && eq != std::string::npos) {
      value = name.substr(eq + 1);
      name.resize(eq);
      hasValue = true;
    }
    const auto flag = flagOptions().find(name);
    if (name == "--trace" || name == "--help" || name == "-h" || name == "--version" ||
        flag != flagOptions().end()) {
      if (hasValue) {
        error = name + " takes no value";
        return false;
      }
      if (flag != flagOptions().end())
        options.module.*(flag->second) = true;
      else if (name == "--version")
        options.version = true;
      else
        (name == "--trace" ? options.trace : options.help) = true;
      continue;
    }
    const bool known = numberOptions().contains(name) || name == "--link" || name == "--register" ||
                       name == "--split-writes" || name == "--messages" || name == "--logger" ||
                       name == "--refuse" || name == "--state";
    if (!known) {
      error = "unknown option " + name;
      return false;
    }
    if (!hasValue) {
      if (i + 1 >= args.size()) {
        error = name + " needs a value";
        return false;
      }
      value = args[++i];
    }
    const std::string bad = "bad value for " + name + ": " + value;
    if (const auto it = numberOptions().find(name); it != numberOptions().end()) {
      if (!parseNumber(value, it->second.low, it->second.high,
                       options.module.*(it->second.field))) {
        error = bad;
        return false;
      }
    } else if (name == "--messages") {
      if (value != "100" && value != "400") {
        error = bad;
        return false;
      }
      options.module.messages = value == "400" ? 400 : 100;
    } else if (name == "--register") {
      if (!parseNumber(value, 1, 255, options.registerAs)) {
        error = bad;
        return false;
      }
    } else if (name == "--split-writes") {
      int seed = 0;
      if (!parseNumber(value, 1, 1'000'000'000, seed)) {
        error = bad;
        return false;
      }
      options.module.splitSeed = static_cast<unsigned>(seed);
    } else if (name == "--refuse") {
      std::string letters;
      for (char c : value) {
        if (!std::isalpha(static_cast<unsigned char>(c))) {
          error = bad;
          return false;
        }
        letters += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
      }
      options.module.refuse = letters;
    } else if (value.empty()) {
      error = bad;
      return false;
    } else if (name == "--link") {
      options.link = value;
    } else if (name == "--logger") {
      options.loggerFile = value;
    } else {
      options.stateFile = value;
    }
  }
  return true;
}

std::string simUsage() {
  return "Usage: telvane-sim [options]\n"
         "Plays a Telvane alarm module on a pseudo-terminal; prints the terminal's path first.\n"
         "\n"
         "  --link PATH           a symbolic link to the pseudo-terminal\n"
         "  --register N          registers the terminal as port number N (removed on exit)\n"
         "  --device-type N       device type in the version reply (default 3, Telvane)\n"
         "  --bus N               bus type (default 9)\n"
         "  --messages 100|400    size of the message table (default 100)\n"
         "  --phones N            phone-number places (default 60)\n"
         "  --firmware N          firmware version times 100 (default 123)\n"
         "  --logger FILE         the logger text served on request\n"
         "  --baud N              paces the line as 8N1 at N baud (default 0, unpaced)\n"
         "  --nak-every N         answers every Nth block received with NAK\n"
         "  --corrupt-every N     sends every Nth block with a wrong checksum\n"
         "  --silent-after N      answers nothing after N blocks\n"
         "  --refuse LETTERS      answers NAK to these start identifiers and request letters\n"
         "\n"
         "What a real line and module may do:\n"
         "  --reply-noise N       N noise bytes in front of every ACK, NAK and count, in the\n"
         "                        same write\n"
         "  --merged-final-ack    the last block's ACK and the final confirmation in one write\n"
         "  --odd-start-reply     answers a start identifier first with a character that is\n"
         "                        neither ACK nor NAK, and takes the PC's one repeat\n"
         "  --mute-start-repeat   with --odd-start-reply: takes the repeat without an answer\n"
         "  --end-every-block     ends every block it sends with 253, not only the last\n"
         "  --split-writes SEED   cuts what it writes into pieces at random points\n"
         "                        (reproducible for a SEED from 1 up)\n"
         "  --ignore-version      leaves the version request unanswered\n"
         "\n"
         "  --state FILE          keeps the module's memory across runs\n"
         "  --trace               every byte both ways on stderr\n"
         "  --version             prints the version and exits\n"
         "\n"
         "Runs until it is killed or its standard input closes.\n";
}

}  // namespace quillon::sim
