#include "cli/terminal_dialog.h"

#include "text/code_page.h"

namespace quillon::cli {

BoxAnswer TerminalDialog::ask(const Box& box) {
  std::string line = box.text;
  for (char& c : line) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  m_err << cp1252ToUtf8(line) << '\n';
  return box.defaultAnswer;
}

}  // namespace quillon::cli
