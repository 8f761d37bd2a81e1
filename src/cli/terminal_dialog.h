#pragma once
// The UserDialog of the command line: every box becomes one line of UTF-8 on the error stream
// (line breaks inside a box become blanks), and every question takes its default answer.

#include <ostream>

#include "project/user_dialog.h"

namespace quillon::cli {

class TerminalDialog : public UserDialog {
 public:
  explicit TerminalDialog(std::ostream& err) : m_err(err) {}
  BoxAnswer ask(const Box& box) override;

 private:
  std::ostream& m_err;
};

}  // namespace quillon::cli
