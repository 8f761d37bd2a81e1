#include "project/validation.h"

#include <string_view>
#include <utility>

#include "project/number_text.h"

namespace quillon {

namespace {

constexpr char kLineBreak = '\n';

bool isDigit(char c) { return c >= '0' && c <= '9'; }

Box warning(std::string text) {
  return Box{kMainTitle, std::move(text), BoxIcon::Exclamation, BoxButtons::Ok, BoxAnswer::Ok};
}

}  // namespace

PhoneNumberCheck CheckPhoneNumber(std::string& number) {
  number = std::string(TrimBlanks(number));
  if (number.size() < 3) return {};

  PhoneNumberCheck check;
  std::string_view rest = number;
  if (rest.front() != '+' && !isDigit(rest.front())) {
    check.warnings.push_back(warning(
        std::string("1. Zeichen der Telefonnummer nur Ziffer oder '+'.") + kLineBreak + number));
    rest.remove_prefix(1);
  }
  // Whatever comes first now is kept without a look: only the characters after it are filtered.
  check.cleaned = rest.substr(0, 1);
  bool warned = false;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (isDigit(rest[i])) {
      check.cleaned += rest[i];
    } else if (!warned) {
      warned = true;
      check.warnings.push_back(
          warning(std::string("Telefonnummer enth\xE4lt ung\xFCltiges Zeichen.") + kLineBreak +
                  number + " wird gefiltert! "));
    }
  }
  return check;
}

std::string CheckPhoneNumber(std::string& number, UserDialog& dialog) {
  PhoneNumberCheck check = CheckPhoneNumber(number);
  for (const Box& box : check.warnings) (void)dialog.ask(box);
  return std::move(check.cleaned);
}

void DoLenCheck(const std::string& text, std::int64_t number, const UiTexts& texts,
                UserDialog& dialog) {
  if (text.size() == 1 && number > 0) {
    dialog.tell(kMainTitle,
                texts[slot::kMessageNr] + SignedDecimal(number) + texts[slot::kOnlyOneCharacter]);
  }
  if (text.size() > static_cast<std::size_t>(kMaxTextLength)) {
    dialog.tell(kMainTitle, texts[slot::kMessageNr] + SignedDecimal(number) + " > 160");
  }
}

int DigitKeyFilter(int key) {
  if (key == kKeyBackspace || key == kKeyDelete || (key >= '0' && key <= '9')) return key;
  return 0;
}

int PhoneKeyFilter(int key, std::size_t currentLength) {
  if (key == kKeyBackspace || key == kKeyDelete) return key;
  if (currentLength >= static_cast<std::size_t>(kMaxPhoneLength)) return 0;
  if ((key >= '0' && key <= '9') || key == '+') return key;
  return 0;
}

Table& TableOf(Project& project, TableKind kind) {
  switch (kind) {
    case TableKind::Messages:
      return project.messages;
    case TableKind::Filters:
      return project.filters;
    case TableKind::Phones:
      break;
  }
  return project.phones;
}

const Table& TableOf(const Project& project, TableKind kind) {
  return TableOf(const_cast<Project&>(project), kind);
}

EditRule EditRuleFor(TableKind kind, int column) {
  switch (kind) {
    case TableKind::Messages:
      if (column == kMessageTextColumn) return {EntryBox::Text, slot::kEditMessage, kMaxTextLength};
      if (column == kMessageCommentColumn) {
        return {EntryBox::Text, slot::kEditComment, kMaxCommentLength};
      }
      break;
    case TableKind::Filters:
      if (column == kFilterTextColumn) {
        return {EntryBox::Text, slot::kEditFilterText, kMaxTextLength};
      }
      if (column == kFilterCommentColumn) {
        return {EntryBox::Text, slot::kEditComment, kMaxCommentLength};
      }
      break;
    case TableKind::Phones:
      if (column == kPhoneNumberColumn) {
        return {EntryBox::Phone, slot::kEditPhoneNumber, kMaxPhoneLength};
      }
      if (column == kPhoneNameColumn) {
        return {EntryBox::Text, slot::kEditComment, kMaxCommentLength};
      }
      break;
  }
  return {};
}

std::string EntryStartText(const std::string& cellText, int key) {
  if (key == kKeyEnter || key < 0 || key > 255) return cellText;
  return std::string(1, static_cast<char>(key));
}

EntryResult EntryResult::fromBoxText(std::string boxText) {
  if (boxText.size() == 1 && boxText.front() == kEntryCancelled) return {Kind::Cancelled, {}};
  if (boxText.size() == 1 && boxText.front() == kEntryEmptyPhone) return {Kind::EmptyPhone, {}};
  return {Kind::Text, std::move(boxText)};
}

void ApplyEntryResult(Project& project, TableKind kind, int row, int column,
                      const EntryResult& result) {
  switch (result.kind) {
    case EntryResult::Kind::Cancelled:
      break;
    case EntryResult::Kind::EmptyPhone:
      TableOf(project, kind).setCell(row, column, {});
      break;
    case EntryResult::Kind::Text:
      TableOf(project, kind).setCell(row, column, result.text);
      break;
  }
  project.changed = true;
}

bool ToggleMark(Project& project, int row, int column) {
  if (column < kAckColumn || column > kRingColumn) return false;
  const bool marked = project.messages.cell(row, column) == "x";
  project.messages.setCell(row, column, marked ? "" : "x");
  project.changed = true;
  return true;
}

}  // namespace quillon
