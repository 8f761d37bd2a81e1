#include "project/flag_assignment.h"

#include "project/number_text.h"
#include "project/validation.h"
#include "wire/wire_format.h"

namespace quillon {

namespace {

std::size_t index(std::int64_t flag) { return static_cast<std::size_t>(flag); }

bool isCurrentFlagValid(const FlagPage& page) {
  return page.currentFlag >= 1 && page.currentFlag <= kFlagCount;
}

void storeEntry(FlagTable& flags, int flag, std::string entry, bool used) {
  flags.entries[index(flag)] = std::move(entry);
  flags.used[index(flag)] = used;
}

bool isReceptionEntry(std::string_view entry) { return entry.starts_with("-2"); }

}  // namespace

std::uint32_t ColourValue(FlagColour colour) {
  return colour == FlagColour::Yellow ? kYellowColourValue : kWhiteColourValue;
}

Rgb ColourRgb(FlagColour colour) {
  const std::uint32_t value = ColourValue(colour);
  return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>((value >> 8) & 0xFF),
          static_cast<std::uint8_t>((value >> 16) & 0xFF)};
}

FlagColour LabelColour(const Project& project, int label) {
  if (label < 0 || label >= kFlagCount) return FlagColour::White;
  return project.flags.used[index(label + 1)] ? FlagColour::Yellow : FlagColour::White;
}

bool ChooseFlag(FlagPage& page, const Project& project, int label) {
  if (label < 0 || label >= kFlagCount) return false;
  page.currentFlag = label + 1;
  page.selectedLabel = label;
  page.markerCaption = "Marker" + std::to_string(page.currentFlag);

  const wire::SemicolonSplit parts =
      wire::splitFlagAssignment(project.flags.entries[index(page.currentFlag)]);
  const std::int64_t message = NumericValue(parts.before);
  if (message < 1) {
    page.messageField.clear();
    page.messageLabel.clear();
  } else {
    page.messageField = std::to_string(message);
    (void)LeaveMessageField(page, project);
  }
  const std::int64_t phone = NumericValue(parts.after);
  if (phone < 1) {
    page.phoneField.clear();
    page.phoneLabel.clear();
  } else {
    page.phoneField = std::to_string(phone);
    (void)LeavePhoneField(page, project);
  }
  return true;
}

std::optional<int> LeaveMessageField(FlagPage& page, const Project& project) {
  const std::int64_t row = NumericValue(page.messageField);
  if (row < 1 || row > kLabelMessageLimit) {
    page.messageLabel.clear();
    return std::nullopt;
  }
  page.messageLabel = project.messages.cell(static_cast<int>(row), kMessageTextColumn);
  return static_cast<int>(row);
}

std::optional<int> LeavePhoneField(FlagPage& page, const Project& project) {
  const std::int64_t row = NumericValue(page.phoneField);
  if (row < 1 || row > kLabelPhoneLimit) {
    page.phoneLabel.clear();
    return std::nullopt;
  }
  page.phoneLabel = project.phones.cell(static_cast<int>(row), kPhoneNumberColumn);
  return static_cast<int>(row);
}

bool SetFlag(const FlagPage& page, Project& project, const UiTexts& texts, UserDialog& dialog) {
  if (!isCurrentFlagValid(page)) return false;
  if (NumericValue(page.messageField) == 0 || NumericValue(page.phoneField) == 0) {
    dialog.tell(kMainTitle, texts[slot::kDetailsNotComplete], BoxIcon::Exclamation);
    return false;
  }
  storeEntry(project.flags, page.currentFlag, page.messageField + ";" + page.phoneField, true);
  return true;
}

void ClearFlag(const FlagPage& page, Project& project) {
  if (!isCurrentFlagValid(page)) return;
  storeEntry(project.flags, page.currentFlag, kUnusedFlag, false);
}

bool ClearAllFlags(Project& project, const UiTexts& texts, UserDialog& dialog) {
  const Box question{kMainTitle, texts[slot::kReallyClearAllFlags], BoxIcon::Question,
                     BoxButtons::YesNo, BoxAnswer::Yes};
  if (dialog.ask(question) != BoxAnswer::Yes) return false;
  initMerkerArray(project);
  return true;
}

int NumberFieldKey(const FlagPage& page, Project& project, int key) {
  ClearFlag(page, project);
  return DigitKeyFilter(key);
}

std::optional<int> ReceptionFlag(const FlagTable& flags) {
  for (int flag = 1; flag <= kFlagCount; ++flag) {
    if (isReceptionEntry(flags.entries[index(flag)])) return flag;
  }
  return std::nullopt;
}

bool SetReceptionFlag(FlagPage& page, Project& project, const UiTexts& texts, UserDialog& dialog) {
  if (!isCurrentFlagValid(page)) return false;
  const std::optional<int> holder = ReceptionFlag(project.flags);
  if (holder == page.currentFlag) return true;
  if (holder) {
    dialog.tell(kMainTitle, texts[slot::kReceptionFlagAlreadySet], BoxIcon::Exclamation);
    return false;
  }
  storeEntry(project.flags, page.currentFlag, kReceptionFlag, false);
  (void)ChooseFlag(page, project, page.currentFlag - 1);
  return true;
}

std::string DataEasySave(const FlagTable& flags) {
  std::string records;
  for (int flag = 1; flag <= kFlagCount; ++flag) {
    const std::string& entry = flags.entries[index(flag)];
    if (NumericValue(entry) > 0 || isReceptionEntry(entry)) {
      records += "E" + SignedDecimal(flag) + ";" + entry + "\r\n";
    }
  }
  return records;
}

bool DataEasyLoad(FlagTable& flags, std::int64_t flag, std::string entry) {
  if (flag < 0 || flag >= kFlagEntries) return false;
  const bool used = NumericValue(entry) > 0;
  flags.entries[index(flag)] = std::move(entry);
  if (flag >= 1 && flag <= kFlagCount) flags.used[index(flag)] = used;
  return true;
}

}  // namespace quillon
