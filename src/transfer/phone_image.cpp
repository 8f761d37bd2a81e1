#include <string>

#include "project/validation.h"
#include "text/ui_text_slots.h"
#include "transfer/data_image.h"

namespace quillon {

namespace {

inline constexpr std::size_t kShortestSmsCentre = 4;

std::string phoneField(const std::string& number) { return wire::padded(number, kPhoneFieldWidth); }

}  // namespace

std::string DoTelSend(Project& project, ImageEnv& env, int reportedPhoneCount) {
  const UiTexts& texts = env.texts;
  if (reportedPhoneCount > env.limits.phoneLimit) {
    env.dialog.tell(texts[slot::kDownloadPhonesTitle],
                    texts[slot::kWrongNumberOf] + texts[slot::kPhoneNumbers], BoxIcon::Exclamation);
  }
  env.status.setStatus(StatusPanel::Transfer, texts[slot::kPackingPhones]);

  project.smsCentre = CheckPhoneNumber(project.smsCentre, env.dialog);
  if (project.smsCentre.size() < kShortestSmsCentre) {
    // A short number is still sent: the user may know better.
    env.dialog.tell(kMainTitle, texts[slot::kPleaseCheck] + texts[slot::kSmscPhoneNumber],
                    BoxIcon::Exclamation);
  }

  std::string image = phoneField(project.smsCentre);
  for (int row = 1; row <= project.phones.rows(); ++row) {
    std::string number = project.phones.cell(row, kPhoneNumberColumn);
    number = CheckPhoneNumber(number, env.dialog);
    image += phoneField(number);
    project.phones.setCell(row, kPhoneNumberColumn, std::move(number));
  }

  // Nothing sets the closing field, yet it is built from its variable like the others, and the
  // variable keeps the filled value.
  project.phoneSuffix = wire::padded(project.phoneSuffix, kClosingFieldWidth);
  image += project.phoneSuffix;
  image += wire::kEndMark;

  env.status.setStatus(StatusPanel::Transfer, texts[slot::kReady]);
  return image;
}

}  // namespace quillon
