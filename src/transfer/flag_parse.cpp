#include <string>
#include <string_view>

#include "project/number_text.h"
#include "transfer/image_parse.h"

namespace quillon {

namespace {

inline constexpr std::size_t kRecordWidth = 10;
inline constexpr std::size_t kReceptionWidth = 2;
inline constexpr std::int64_t kLastEntry = kFlagEntries - 1;

std::int64_t hexAt(std::string_view records, std::size_t pos, std::size_t width) {
  return wire::hexPrefixValue(records.substr(pos, width));
}

void warn(ImageEnv& env, const std::string& german, const std::string& english) {
  env.dialog.tell(kMainTitle, env.texts.german() ? german : english, BoxIcon::Exclamation);
}

}  // namespace

void parseControllerData(const std::string& text, FlagTable& flags, ImageEnv& env) {
  const std::string_view all = text;
  const auto separator = all.find(wire::kPad);
  const std::string_view records =
      separator == std::string_view::npos ? std::string_view{} : all.substr(0, separator + 1);
  const std::string_view rest =
      separator == std::string_view::npos ? all : all.substr(separator + 1);
  const std::string_view reception =
      rest.size() > kReceptionWidth ? rest.substr(0, rest.size() - kReceptionWidth) : "";

  flags = FlagTable{};

  for (std::string_view left = records; left.size() > kRecordWidth - 1;
       left.remove_prefix(kRecordWidth)) {
    const std::int64_t index = hexAt(left, 0, 2);
    if (index > kLastEntry) {
      warn(env,
           "Ung\xFC"
           "ltiger Merker" +
               SignedDecimal(index) + " in der Merkertabelle.",
           "Invalid flag" + SignedDecimal(index) + " in the flag table.");
      return;
    }
    const std::int64_t message = hexAt(left, 2, 4);
    const std::int64_t phone = hexAt(left, 6, 2);
    const auto entry = static_cast<std::size_t>(index);
    flags.entries[entry] = std::to_string(message) + ";" + std::to_string(phone);
    if (index >= 1 && index <= kFlagCount) flags.used[entry] = true;
  }

  if (reception.size() != kReceptionWidth) {
    warn(env, "Das Empfangsflag-Feld der Merkertabelle ist fehlerhaft.",
         "The reception flag field of the flag table is malformed.");
  }
  const std::int64_t receptionFlag = wire::hexPrefixValue(reception);
  if (receptionFlag <= kFlagCount) {
    flags.entries[static_cast<std::size_t>(receptionFlag)] = kReceptionFlag;
  }
}

}  // namespace quillon
