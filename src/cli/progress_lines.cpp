#include "cli/progress_lines.h"

#include <algorithm>

#include "text/code_page.h"

namespace quillon::cli {

namespace {

constexpr std::size_t kLabelWidth = 14;  // "Reading Logger", the longest content label
constexpr int kBarWidth = 20;
constexpr const char* kRedraw = "\r\x1b[K";  // back to the start, erase the line

std::string percentText(int percent) {
  std::string digits = std::to_string(percent);
  return std::string(digits.size() < 3 ? 3 - digits.size() : 0, ' ') + digits;
}

}  // namespace

void ProgressLines::beginLine(const std::string& label) {
  if (!m_enabled) return;
  breakLine();
  m_label = label;
  m_text.clear();
  m_percent = 0;
  m_active = true;
  draw();
}

void ProgressLines::transferStarted(const TransferJob& job) {
  if (!m_enabled) return;
  if (m_active && job.contentLabel != m_label) endLine();
  // A transfer outside a kind's line (the identity query) opens its own, with the text that
  // was shown before it.
  m_label = job.contentLabel;
  m_percent = 0;
  m_active = true;
  draw();
}

void ProgressLines::transferEvent(const TransferEvent& event) {
  if (!m_enabled) return;
  switch (event.kind) {
    case TransferEvent::Kind::Comment:
    case TransferEvent::Kind::StatusText:
      m_text = event.text;
      break;
    case TransferEvent::Kind::Progress:
      m_percent = std::clamp(event.value, 0, 100);
      break;
    default:
      return;
  }
  if (m_active) draw();
}

void ProgressLines::setStatus(StatusPanel panel, const std::string& text) {
  if (!m_enabled || panel != StatusPanel::Transfer) return;
  m_text = text;
  if (m_active) draw();
}

void ProgressLines::breakLine() {
  if (!m_open) return;
  m_err << '\n' << std::flush;
  m_open = false;
}

void ProgressLines::endLine() {
  breakLine();
  m_active = false;
}

void ProgressLines::draw() {
  std::string label = m_label;
  label.resize(std::max(label.size(), kLabelWidth), ' ');
  const int filled = m_percent * kBarWidth / 100;
  m_err << kRedraw << cp1252ToUtf8(label) << " ["
        << std::string(static_cast<std::size_t>(filled), '#')
        << std::string(static_cast<std::size_t>(kBarWidth - filled), '.') << "] "
        << percentText(m_percent) << " % " << cp1252ToUtf8(m_text) << std::flush;
  m_open = true;
}

}  // namespace quillon::cli
