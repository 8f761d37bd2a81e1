#include <string>
#include <string_view>

#include "project/number_text.h"
#include "transfer/data_image.h"
#include "transfer/field_text.h"

namespace quillon {

namespace {

inline constexpr const char* kRecordTail = "00";
inline constexpr const char* kNoReceptionFlag = "00";
inline constexpr std::int64_t kUnusedValue = -1;
inline constexpr std::int64_t kReceptionValue = -2;

struct EntryParts {
  std::string first;
  std::string rest;
};

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  const auto end = text.find_last_not_of(' ');
  return text.substr(begin, end - begin + 1);
}

// Splits a flag entry at its first ";" the way the project file splits its records.
EntryParts splitEntry(std::string_view entry) {
  if (entry.size() <= 1) return {};
  const auto pos = entry.find(';');
  if (pos == std::string_view::npos) return {{}, std::string(entry)};
  return {std::string(trimmed(entry.substr(0, pos))), std::string(entry.substr(pos + 1))};
}

}  // namespace

std::string controllerDataImage(const FlagTable& flags) {
  std::string records;
  std::string reception = kNoReceptionFlag;
  for (int i = 1; i <= kFlagCount; ++i) {
    const EntryParts parts = splitEntry(flags.entries[static_cast<std::size_t>(i)]);
    const std::int64_t message = NumericValue(parts.first);
    if (message <= kUnusedValue) {
      // Several reception entries: the last one wins.
      if (message == kReceptionValue) reception = field::hexField(i, 2);
      continue;
    }
    records += field::hexField(i, 2);
    records += field::hexField(message, 4);
    records += field::hexField(NumericValue(parts.rest), 2);
    records += kRecordTail;
  }
  std::string image = records;
  image += kPad;
  image += reception;
  image += kPad;
  image += kEndOfImage;
  return image;
}

}  // namespace quillon
