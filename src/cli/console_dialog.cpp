#include "cli/console_dialog.h"

#include <cctype>
#include <istream>
#include <ostream>

#include "link/sign_in.h"
#include "text/code_page.h"

namespace quillon::cli {

namespace {

std::string oneLine(const std::string& text) {
  std::string line = cp1252ToUtf8(text);
  for (char& c : line) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  return line;
}

// The fragments questions are the only Yes/No questions of a transfer with No as default.
bool isFragmentsQuestion(const Box& box) {
  return box.buttons == BoxButtons::YesNo && box.defaultAnswer == BoxAnswer::No;
}

}  // namespace

BoxAnswer ConsoleDialog::ask(const Box& box) {
  m_progress.breakLine();
  std::ostream& err = m_console.err;
  const std::string text = oneLine(box.text);

  if (box.text == kReadyQuestion) {
    if (m_answers.ready) return BoxAnswer::Ok;
    if (!m_console.interactive) {
      err << text << " - declined: no terminal to ask (use --yes)\n";
      return BoxAnswer::Cancel;
    }
    return askTerminal(text, "[OK/cancel]", true) ? BoxAnswer::Ok : BoxAnswer::Cancel;
  }
  if (isFragmentsQuestion(box)) {
    if (m_answers.fragments) {
      err << text << " - yes (--fragments)\n";
      return BoxAnswer::Yes;
    }
    err << text << " - no (--fragments processes them)\n";
    return BoxAnswer::No;
  }
  if (box.buttons == BoxButtons::YesNoCancel) {
    if (!m_console.interactive) {
      err << text << " - no: no terminal to ask\n";
      return BoxAnswer::No;
    }
    return askTerminal(text, "[yes/No]", false) ? BoxAnswer::Yes : BoxAnswer::No;
  }
  err << text << '\n';
  return box.defaultAnswer;
}

bool ConsoleDialog::askTerminal(const std::string& question, const char* choices,
                                bool emptyMeansYes) {
  m_console.err << question << ' ' << choices << ' ' << std::flush;
  std::string answer;
  if (!std::getline(m_console.in, answer)) return false;
  for (char& c : answer) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (answer.empty()) return emptyMeansYes;
  return answer == "ok" || answer == "o" || answer == "y" || answer == "yes" || answer == "j" ||
         answer == "ja";
}

}  // namespace quillon::cli
