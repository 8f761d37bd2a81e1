#include <string>
#include <string_view>

#include "project/number_text.h"
#include "transfer/data_image.h"

namespace quillon {

namespace {

inline constexpr const char* kRecordTail = "00";
inline constexpr const char* kNoReceptionFlag = "00";
inline constexpr std::int64_t kUnusedValue = -1;
inline constexpr std::int64_t kReceptionValue = -2;

}  // namespace

std::string controllerDataImage(const FlagTable& flags) {
  std::string records;
  std::string reception = kNoReceptionFlag;
  for (int i = 1; i <= kFlagCount; ++i) {
    // The image reads an entry the way the project file reads its records, not as the flag
    // page shows it: an entry without ";" has no message number.
    const wire::SemicolonSplit parts =
        wire::splitProjectRecord(flags.entries[static_cast<std::size_t>(i)]);
    const std::int64_t message = NumericValue(parts.before);
    if (message <= kUnusedValue) {
      // Several reception entries: the last one wins.
      if (message == kReceptionValue) reception = wire::hexField(i, 2);
      continue;
    }
    records += wire::hexField(i, 2);
    records += wire::hexField(message, 4);
    records += wire::hexField(NumericValue(parts.after), 2);
    records += kRecordTail;
  }
  std::string image = records;
  image += wire::kPad;
  image += reception;
  image += wire::kPad;
  image += wire::kEndMark;
  return image;
}

}  // namespace quillon
