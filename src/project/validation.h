#pragma once
// Editing and validation of the table cells: the phone-number check (also run when a project is
// saved and when phone numbers are downloaded), the length check of loaded texts, the key filters
// of the entry boxes and number fields, the mark columns and the entry-box results.

#include <cstdint>
#include <string>
#include <vector>

#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"

namespace quillon {

// Private markers that the entry boxes return instead of a text.
inline constexpr char kEntryCancelled = '\xFD';   // code 253: the box was cancelled
inline constexpr char kEntryEmptyPhone = '\xFE';  // code 254: OK on an empty phone-number box

inline constexpr int kKeyBackspace = 8;
inline constexpr int kKeyDelete = 127;
inline constexpr int kKeyEnter = 13;

// Cleans a phone number: blanks trimmed (in `number` too), fewer than 3 characters give "", a
// first character other than "+" or a digit is dropped with a warning, and from the second
// character on only digits are kept (one warning per number). The two warnings are German in
// every interface language.
[[nodiscard]] std::string CheckPhoneNumber(std::string& number, UserDialog& dialog);

// The same check, handing its warnings back instead of showing them.
struct PhoneNumberCheck {
  std::string cleaned;
  std::vector<Box> warnings;
};
[[nodiscard]] PhoneNumberCheck CheckPhoneNumber(std::string& number);

// Warns about a text of one character (only when `number` > 0) or of more than 160 characters.
// The text itself is never changed.
void DoLenCheck(const std::string& text, std::int64_t number, const UiTexts& texts,
                UserDialog& dialog);

// Key filter of the number fields: Backspace, Delete and "0".."9" pass, every other key gives 0.
[[nodiscard]] int DigitKeyFilter(int key);

// Key filter of the phone entry box holding `currentLength` characters: Backspace and Delete
// always pass; "0123456789+" pass while the box holds fewer than 20 characters.
[[nodiscard]] int PhoneKeyFilter(int key, std::size_t currentLength);

enum class TableKind { Messages, Filters, Phones };

[[nodiscard]] Table& TableOf(Project& project, TableKind kind);
[[nodiscard]] const Table& TableOf(const Project& project, TableKind kind);

enum class EntryBox { None, Text, Phone };

// Which box edits a cell, its title and the longest text it takes.
struct EditRule {
  EntryBox box = EntryBox::None;
  int titleSlot = -1;  // slot of the box title in the text table
  int maxLength = 0;
  friend bool operator==(const EditRule&, const EditRule&) = default;
};

// The edit rule of a data column; box None for the mark columns and for columns out of range.
[[nodiscard]] EditRule EditRuleFor(TableKind kind, int column);

// The text an entry box starts with: the cell's text for a double click or Enter, otherwise the
// typed character alone (typing replaces the cell).
[[nodiscard]] std::string EntryStartText(const std::string& cellText, int key);

// What an entry box handed back.
struct EntryResult {
  enum class Kind { Text, Cancelled, EmptyPhone };
  Kind kind = Kind::Text;
  std::string text;

  // Reads a box's raw answer: a lone marker character stands for Cancelled or EmptyPhone.
  [[nodiscard]] static EntryResult fromBoxText(std::string boxText);
  friend bool operator==(const EntryResult&, const EntryResult&) = default;
};

// Writes an entry box's result into a cell: cancelled leaves it, an empty phone number empties
// it, a text replaces it. The project counts as changed in every case, cancelled edits included.
void ApplyEntryResult(Project& project, TableKind kind, int row, int column,
                      const EntryResult& result);

// A double click on mark column 1, 2 or 3 of message row `row`: "x" becomes empty, anything else
// becomes "x"; the project counts as changed. Other columns are left alone (returns false).
bool ToggleMark(Project& project, int row, int column);

}  // namespace quillon
