#pragma once
// The SMS flag assignment page: which of the controller's 32 flags sends which message to which
// phone number, and which flag an incoming SMS sets (the reception flag). The flag table itself
// lives in the project; FlagPage is what the page shows, a plain value the GUI binds its labels
// and number fields to.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "project/project.h"
#include "project/user_dialog.h"
#include "text/ui_texts.h"

namespace quillon {

// Display colours of the flag labels. The numeric values are the colour values the page has
// always used (blue in the high byte, red in the low byte).
enum class FlagColour { White, Yellow };
inline constexpr std::uint32_t kWhiteColourValue = 16777215;  // FFFFFF
inline constexpr std::uint32_t kYellowColourValue = 65535;    // red and green full

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

[[nodiscard]] std::uint32_t ColourValue(FlagColour colour);
[[nodiscard]] Rgb ColourRgb(FlagColour colour);
// The colour of label k (0..31), which shows flag k+1; White for any other k.
[[nodiscard]] FlagColour LabelColour(const Project& project, int label);

// Bounds of the read-only labels: message numbers 1..100 (also for the 400-message module) and
// phone numbers 1..60.
inline constexpr int kLabelMessageLimit = 100;
inline constexpr int kLabelPhoneLimit = 60;

struct FlagPage {
  int currentFlag = 0;        // 1..32 once a label was clicked; 0: none yet, commands do nothing
  int selectedLabel = -1;     // the label shown as selected, -1 for none
  std::string markerCaption;  // lblMerkerNr: "Marker5"
  std::string messageField;   // mskMeldNr, as typed
  std::string phoneField;     // mskTelNr, as typed
  std::string messageLabel;   // lblMeldung: text of the chosen message
  std::string phoneLabel;     // lblTelefon: the chosen phone number

  friend bool operator==(const FlagPage&, const FlagPage&) = default;
};

// A click on label k (0..31): makes flag k+1 current and shows its assignment. Returns false and
// changes nothing for a label that does not exist.
bool ChooseFlag(FlagPage& page, const Project& project, int label);

// Leaving the message-number field: shows the text of that message row in lblMeldung, or empties
// it outside 1..100. Returns the message row the grid is to show (text column), if any.
std::optional<int> LeaveMessageField(FlagPage& page, const Project& project);
// Leaving the phone-number field: the same with 1..60, the phone grid and lblTelefon.
std::optional<int> LeavePhoneField(FlagPage& page, const Project& project);

// "Set as SMS flag": stores message field + ";" + phone field as the current flag's entry and
// paints it yellow. Either field worth 0 (an empty one too) gives the box of slot 165 and changes
// nothing. Returns whether the entry was stored.
bool SetFlag(const FlagPage& page, Project& project, const UiTexts& texts, UserDialog& dialog);

// "Clear bit": the current flag becomes "-1;-1", white. No question asked.
void ClearFlag(const FlagPage& page, Project& project);

// "Clear all": asks (slot 164, Yes/No); Yes resets the whole flag table. Returns whether it did.
bool ClearAllFlags(Project& project, const UiTexts& texts, UserDialog& dialog);

// A key typed into either number field. Returns the key to pass on (0 = swallowed by the digit
// filter). Every key, passed or not, clears the current flag's assignment: a changed number is not
// in force until Set is pressed again.
[[nodiscard]] int NumberFieldKey(const FlagPage& page, Project& project, int key);

// "Set reception flag": makes the current flag the reception flag ("-2;-1"). There is at most
// one: while another flag holds it, the box of slot 53 is shown and nothing changes. Returns
// whether the entry was stored.
bool SetReceptionFlag(FlagPage& page, Project& project, const UiTexts& texts, UserDialog& dialog);

// The flag (1..32) that holds the reception flag, if any.
[[nodiscard]] std::optional<int> ReceptionFlag(const FlagTable& flags);

// The "E" records of the project file for flags 1..32: one per flag whose entry is worth more
// than 0 or begins with "-2", each "E" + flag number with its sign blank + ";" + entry + CR LF.
[[nodiscard]] std::string DataEasySave(const FlagTable& flags);

// Stores one loaded "E" record: entry `flag` := `entry`, painted yellow when worth more than 0
// (white otherwise, so the colours keep following the entries). Flags outside 0..100 are
// ignored (returns false).
bool DataEasyLoad(FlagTable& flags, std::int64_t flag, std::string entry);

}  // namespace quillon
