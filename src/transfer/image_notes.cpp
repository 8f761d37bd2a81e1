#include "transfer/image_notes.h"

namespace quillon {

namespace {

struct NoteShower {
  UserDialog& dialog;
  StatusDisplay& status;
  // A warning has only its OK button; the answer says nothing.
  void operator()(const Box& box) const { (void)dialog.ask(box); }
  void operator()(const PanelText& panel) const {
    status.setStatus(StatusPanel::Transfer, panel.text);
  }
};

}  // namespace

void showImageNotes(const ImageNotes& notes, UserDialog& dialog, StatusDisplay& status) {
  for (const ImageNote& note : notes) std::visit(NoteShower{dialog, status}, note);
}

}  // namespace quillon
