#pragma once
// A UserDialog for tests: records every box in order and answers from a script.

#include <deque>
#include <string>
#include <vector>

#include "project/user_dialog.h"

namespace quillon::testing {

class ScriptedDialog : public UserDialog {
 public:
  ScriptedDialog() = default;
  explicit ScriptedDialog(std::deque<BoxAnswer> answers) : m_answers(std::move(answers)) {}

  BoxAnswer ask(const Box& box) override {
    boxes.push_back(box);
    if (m_answers.empty()) return box.defaultAnswer;
    BoxAnswer answer = m_answers.front();
    m_answers.pop_front();
    return answer;
  }

  void answer(BoxAnswer a) { m_answers.push_back(a); }

  [[nodiscard]] std::vector<std::string> texts() const {
    std::vector<std::string> out;
    for (const auto& b : boxes) out.push_back(b.text);
    return out;
  }

  std::vector<Box> boxes;

 private:
  std::deque<BoxAnswer> m_answers;
};

}  // namespace quillon::testing
