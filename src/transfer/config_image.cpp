#include <string>

#include "project/number_text.h"
#include "transfer/data_image.h"
#include "transfer/field_text.h"

namespace quillon {

std::string configurationImage(const std::string& pin) {
  std::string image = kConfigurationLeadingField;
  image += kPad;
  image += pin;
  image += kPad;
  image += kEndOfImage;
  return image;
}

bool pinRefused(const std::string& pin) {
  return NumericValue(pin) < 0 || pin.find('_') != std::string::npos;
}

}  // namespace quillon
