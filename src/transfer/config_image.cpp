#include <string>

#include "project/number_text.h"
#include "transfer/data_image.h"

namespace quillon {

std::string configurationImage(const std::string& pin) {
  std::string image = kConfigurationLeadingField;
  image += wire::kPad;
  image += pin;
  image += wire::kPad;
  image += wire::kEndMark;
  return image;
}

bool pinRefused(const std::string& pin) {
  return NumericValue(pin) < 0 || pin.find('_') != std::string::npos;
}

}  // namespace quillon
