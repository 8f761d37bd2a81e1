#pragma once
// What every download, upload and logger procedure works on, bundled so that the GUI and the
// command line call each procedure the same way.

#include <functional>

#include "link/sign_in.h"
#include "project/project.h"
#include "text/ui_texts.h"
#include "transfer/data_image.h"

namespace quillon {

// The parts of a procedure that belong to the front end.
struct TransferHooks {
  // Result 7: show the module identification (the GUI opens its dialog, the CLI prints it).
  std::function<void()> showIdentification;
  // The save prompt before reading was answered Yes: run "Save as".
  std::function<void()> saveProjectAs;
};

struct TransferContext {
  LinkContext& link;
  const UiTexts& texts;
  Project& project;
  TransferHooks hooks;
  int identifierDigits = kIdentifierDigits;

  [[nodiscard]] ModuleLimits& limits() { return link.limits; }
  [[nodiscard]] UserDialog& dialog() { return link.dialog; }
  [[nodiscard]] ImageEnv imageEnv() { return {link.dialog, link.status, texts, link.limits}; }
  void setTransferStatus(const std::string& text) {
    link.status.setStatus(StatusPanel::Transfer, text);
  }
  void showIdentification() {
    if (hooks.showIdentification) hooks.showIdentification();
  }
};

}  // namespace quillon
