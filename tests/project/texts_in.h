#pragma once
// The text table as the window holds it after the user chose a language.

#include "text/ui_texts.h"

namespace quillon::testing {

inline UiTexts textsIn(int language) {
  UiTexts texts;
  texts.fill(language);
  return texts;
}

}  // namespace quillon::testing
