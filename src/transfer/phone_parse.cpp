#include <string>
#include <string_view>

#include "project/number_text.h"
#include "text/ui_text_slots.h"
#include "transfer/image_parse.h"

namespace quillon {

namespace {

// Shows the procedure's error box the first time a field breaks the layout.
class OneBox {
 public:
  OneBox(ImageEnv& env, std::string text) : m_env(env), m_text(std::move(text)) {}
  void raise() {
    if (m_shown) return;
    m_shown = true;
    m_env.dialog.tell(kMainTitle, m_text, BoxIcon::Exclamation);
  }

 private:
  ImageEnv& m_env;
  std::string m_text;
  bool m_shown = false;
};

std::string_view takeField(std::string_view& rest) {
  const std::string_view taken = rest.substr(0, kPhoneFieldWidth);
  rest.remove_prefix(taken.size());
  return taken;
}

}  // namespace

void parsePhoneNumbers(const std::string& text, Project& project, ImageEnv& env) {
  OneBox errorBox(env,
                  env.texts[slot::kErrorReadingPhones] + '\r' + env.texts[slot::kPleaseCorrect]);
  std::string_view rest = text;

  const std::string_view centre = takeField(rest);
  if (!centre.empty()) {
    if (const auto number = wire::beforePad(centre)) {
      project.smsCentre = std::string(*number);
    } else {
      errorBox.raise();
    }
  }

  // The closing field and the end mark are never entered: the table's rows end the reading.
  for (int row = 1; row <= project.phones.rows(); ++row) {
    const std::string_view phone = takeField(rest);
    if (phone.empty()) continue;
    if (const auto number = wire::beforePad(phone)) {
      project.phones.setCell(row, kPhoneNumberColumn, std::string(*number));
    } else {
      errorBox.raise();
    }
  }
}

void parseConfiguration(const std::string& text, Project& project, ImageEnv& env) {
  constexpr std::size_t kPinStart = 3;
  constexpr std::size_t kPinWidth = 4;
  const std::string_view pin =
      text.size() > kPinStart ? std::string_view(text).substr(kPinStart, kPinWidth) : "";
  const auto digits = pin.find_first_not_of(' ');
  const bool numeric = digits != std::string_view::npos &&
                       pin.find_first_not_of("0123456789", digits) == std::string_view::npos;
  if (!numeric) {
    // The PIN box takes only four digits; anything else breaks the layout.
    env.dialog.tell(
        kMainTitle,
        env.texts[slot::kErrorLoadingConfiguration] + '\r' + env.texts[slot::kPleaseCorrectData],
        BoxIcon::Exclamation);
    return;
  }
  std::string formatted = std::to_string(NumericValue(pin));
  if (formatted.size() < kPinWidth) formatted.insert(0, kPinWidth - formatted.size(), '0');
  project.pin = std::move(formatted);
}

}  // namespace quillon
