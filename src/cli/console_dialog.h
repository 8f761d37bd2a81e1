#pragma once
// The UserDialog of the transfer commands. Every box becomes one UTF-8 line on the error
// output, after the progress line is ended. The questions a transfer can ask are answered so
// that a command never hangs without a person to ask:
//   "Telvane ready ?"      --yes, else asked on the terminal, else declined;
//   the fragments question --fragments answers Yes, otherwise its default No;
//   replacing a file       asked on the terminal, else declined;
//   any other question     its default answer.

#include <string>

#include "cli/console.h"
#include "cli/progress_lines.h"
#include "project/user_dialog.h"

namespace quillon::cli {

struct DialogAnswers {
  bool ready = false;      // --yes
  bool fragments = false;  // --fragments
};

class ConsoleDialog : public UserDialog {
 public:
  ConsoleDialog(Console& console, ProgressLines& progress, DialogAnswers answers)
      : m_console(console), m_progress(progress), m_answers(answers) {}

  BoxAnswer ask(const Box& box) override;

 private:
  // Asks on the terminal; true for a yes.
  [[nodiscard]] bool askTerminal(const std::string& question, const char* choices,
                                 bool emptyMeansYes);

  Console& m_console;
  ProgressLines& m_progress;
  DialogAnswers m_answers;
};

}  // namespace quillon::cli
