#include <string>

#include "project/validation.h"
#include "text/ui_text_slots.h"
#include "transfer/data_image.h"

namespace quillon {

namespace {

inline constexpr std::size_t kShortestSmsCentre = 4;

std::string phoneField(const std::string& number) { return wire::padded(number, kPhoneFieldWidth); }

}  // namespace

PhoneImage DoTelSend(Project& project, const UiTexts& texts, const ModuleLimits& limits,
                     int reportedPhoneCount) {
  ImageNotes notes;
  if (reportedPhoneCount > limits.phoneLimit) {
    notes.emplace_back(Box{texts[slot::kDownloadPhonesTitle],
                           texts[slot::kWrongNumberOf] + texts[slot::kPhoneNumbers],
                           BoxIcon::Exclamation});
  }
  notes.emplace_back(PanelText{texts[slot::kPackingPhones]});
  const auto checked = [&notes](std::string& number) {
    PhoneNumberCheck check = CheckPhoneNumber(number);
    notes.insert(notes.end(), check.warnings.begin(), check.warnings.end());
    return std::move(check.cleaned);
  };

  project.smsCentre = checked(project.smsCentre);
  if (project.smsCentre.size() < kShortestSmsCentre) {
    // A short number is still sent: the user may know better.
    notes.emplace_back(Box{kMainTitle, texts[slot::kPleaseCheck] + texts[slot::kSmscPhoneNumber],
                           BoxIcon::Exclamation});
  }

  std::string image = phoneField(project.smsCentre);
  for (int row = 1; row <= project.phones.rows(); ++row) {
    std::string number = project.phones.cell(row, kPhoneNumberColumn);
    number = checked(number);
    image += phoneField(number);
    project.phones.setCell(row, kPhoneNumberColumn, std::move(number));
  }

  // Nothing sets the closing field, yet it is built from its variable like the others, and the
  // variable keeps the filled value.
  project.phoneSuffix = wire::padded(project.phoneSuffix, kClosingFieldWidth);
  image += project.phoneSuffix;
  image += wire::kEndMark;

  notes.emplace_back(PanelText{texts[slot::kReady]});
  return {std::move(image), std::move(notes)};
}

}  // namespace quillon
