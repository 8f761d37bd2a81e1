#pragma once
// Taking received images apart into the project. Every parser accepts any input: a field that
// does not fit its layout is skipped, the parser's error box is shown at most once, and what was
// already written stays written.

#include <array>
#include <string>

#include "link/transfer.h"
#include "project/project.h"
#include "transfer/data_image.h"

namespace quillon {

struct MessagesParse {
  bool endMarkSeen = false;  // the image was read up to its end mark
  bool malformed = false;    // a record without its separator was met; the error box was shown
};

// Messages image: message rows (option letters up to "G", texts converted back from the
// module's codes), the acknowledgement request and the filter rows. The receive texts are
// joined only as far as a record spans them.
[[nodiscard]] MessagesParse parseMessages(const std::array<std::string, kReceiveBoxes>& received,
                                          Project& project, ImageEnv& env);

// Phone-number image: the SMS-centre number and one number per phone row.
void parsePhoneNumbers(const std::string& text, Project& project, ImageEnv& env);

// Configuration image: the PIN from characters 4 to 7, shown with four digits.
void parseConfiguration(const std::string& text, Project& project, ImageEnv& env);

// Controller data image: the flag records and the reception-flag field. Clears every flag
// assignment first.
void parseControllerData(const std::string& text, FlagTable& flags, ImageEnv& env);

}  // namespace quillon
