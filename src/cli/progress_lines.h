#pragma once
// The transfer window and status panel 2 on a terminal: one line per kind of data, redrawn in
// place with a carriage return, showing the content label, a progress bar and the latest status
// text. The caller opens the line before a procedure and ends it afterwards, so that the texts
// the procedure shows before and after its transfer land on the line of their kind. Disabled
// (standard error is not a terminal) it writes nothing.

#include <ostream>
#include <string>

#include "link/qt/transfer_observer.h"
#include "project/user_dialog.h"

namespace quillon::cli {

class ProgressLines : public TransferObserver, public StatusDisplay {
 public:
  ProgressLines(std::ostream& err, bool enabled) : m_err(err), m_enabled(enabled) {}

  // Opens the line of the kind with this content label.
  void beginLine(const std::string& label);
  // A transfer of another kind than the open line's opens a line of its own.
  void transferStarted(const TransferJob& job) override;
  void transferEvent(const TransferEvent& event) override;
  // Panel 2 texts show on the current line; the port status of panel 1 is not shown.
  void setStatus(StatusPanel panel, const std::string& text) override;

  // Ends the line on the screen, so that a message can follow on a line of its own; the kind's
  // next text starts its line again.
  void breakLine();
  // Ends the line of the kind.
  void endLine();

 private:
  void draw();

  std::ostream& m_err;
  bool m_enabled;
  bool m_active = false;  // between the start of a kind and its end
  bool m_open = false;    // a line is on the screen without its line break
  std::string m_label;
  std::string m_text;  // Windows-1252
  int m_percent = 0;
};

}  // namespace quillon::cli
