#include "cli/link_options.h"

#include <charconv>
#include <cmath>

namespace quillon::cli {

namespace {

constexpr double kLongestReplyTimeout = 86'400;  // the engine's clock wraps at midnight

std::optional<TimeOfDay> parseSeconds(const std::string& text) {
  double seconds = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (ec != std::errc{} || end != text.data() + text.size() || !(seconds > 0) ||
      seconds > kLongestReplyTimeout) {
    return std::nullopt;
  }
  return static_cast<TimeOfDay>(std::llround(seconds * 1000));
}

}  // namespace

std::optional<std::string> readLinkOptions(const ParsedOptions& parsed, const std::string& command,
                                           LinkOptions& options) {
  const auto port = parsed.value(kPortOption.name);
  if (!port || port->empty()) return command + " needs --port DEV";
  options.port = *port;
  options.yes = parsed.has(kYesOption.name);
  options.log = parsed.has(kLogOption.name);
  options.logFile = parsed.value(kLogOption.name).value_or("");
  if (const auto timeout = parsed.value(kReplyTimeoutOption.name)) {
    const auto milliseconds = parseSeconds(*timeout);
    if (!milliseconds) return "--reply-timeout needs a number of seconds, not '" + *timeout + "'";
    options.replyTimeout = *milliseconds;
  }
  if (const auto bound = parsed.value(kMaxTimeOption.name)) {
    options.maxTime = parseSeconds(*bound);
    if (!options.maxTime) return "--max-time needs a number of seconds, not '" + *bound + "'";
  }
  return std::nullopt;
}

}  // namespace quillon::cli
