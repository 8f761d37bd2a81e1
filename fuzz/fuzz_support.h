#pragma once
// What the fuzz targets share: a hard stop on a broken invariant, a dialog that records the
// boxes and answers each with its default, and the filled text tables.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "project/user_dialog.h"
#include "text/ui_texts.h"

namespace quillon::fuzz {

// abort() rather than assert(): the invariants must hold in the optimised build the fuzzer runs.
inline void require(bool condition) {
  if (!condition) std::abort();
}

class RecordingDialog : public UserDialog {
 public:
  BoxAnswer ask(const Box& box) override {
    boxes.push_back(box);
    return box.defaultAnswer;
  }
  std::vector<Box> boxes;
};

class IgnoredStatus : public StatusDisplay {
 public:
  void setStatus(StatusPanel /*panel*/, const std::string& /*text*/) override {}
};

inline const UiTexts& textsFor(int language) {
  static const UiTexts kEnglishTexts = [] {
    UiTexts filled;
    filled.fill(kEnglish);
    return filled;
  }();
  static const UiTexts kGermanTexts = [] {
    UiTexts filled;
    filled.fill(kGerman);
    return filled;
  }();
  return language == kGerman ? kGermanTexts : kEnglishTexts;
}

// Reads the input front to back: small choices first, the rest as bytes. Past the end every
// choice is 0, so a short input is still a complete case.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : m_rest(reinterpret_cast<const char*>(data), size) {}

  std::uint8_t byte() {
    if (m_rest.empty()) return 0;
    const auto value = static_cast<std::uint8_t>(m_rest.front());
    m_rest.remove_prefix(1);
    return value;
  }
  std::uint16_t word() {
    const std::uint16_t high = byte();
    return static_cast<std::uint16_t>(high << 8 | byte());
  }
  std::string_view take(std::size_t count) {
    const std::string_view taken = m_rest.substr(0, count);
    m_rest.remove_prefix(taken.size());
    return taken;
  }
  std::string_view rest() { return take(m_rest.size()); }
  [[nodiscard]] bool empty() const { return m_rest.empty(); }

 private:
  std::string_view m_rest;
};

}  // namespace quillon::fuzz
