#include "link/traffic_log.h"

#include <cstdio>

namespace quillon {

namespace {

constexpr std::size_t kFirstLineCharacters = 200;
constexpr const char* kLineEnd = "\r\n";

std::string twoDigits(int n) {
  char text[16];
  std::snprintf(text, sizeof text, "%02d", n);
  return text;
}

}  // namespace

std::string TrafficLogFileName(int year, int month, int day, int secondsOfDay) {
  char yearText[16];
  std::snprintf(yearText, sizeof yearText, "%04d", year);
  return std::string(yearText) + "_" + twoDigits(day) + "_" + twoDigits(month) +
         std::to_string(secondsOfDay) + ".LOG";
}

std::string EscapeForLog(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 32 || code >= 127) {
      out += '<';
      out += std::to_string(code);
      out += '>';
    } else {
      out += c;
    }
  }
  return out;
}

std::string TrafficLogLines(std::string_view text, std::string_view prefix) {
  if (text.empty()) return {};
  std::string out(prefix);
  if (text.size() <= kFirstLineCharacters) {
    out += EscapeForLog(text);
    out += kLineEnd;
    return out;
  }
  out += "\n\r";
  out += EscapeForLog(text.substr(0, kFirstLineCharacters));
  out += kLineEnd;
  out += EscapeForLog(text.substr(kFirstLineCharacters));
  out += kLineEnd;
  return out;
}

std::string TrafficLogOpenedText(const std::string& fileName, const std::string& directory) {
  return "Log file " + fileName + "  in directory:" + "\r" + directory;
}

bool TrafficLog::open(const std::filesystem::path& directory, const std::string& fileName) {
  close();
  m_good = true;
  m_file.open(directory / fileName, std::ios::binary | std::ios::out | std::ios::trunc);
  if (!m_file.is_open()) return false;
  m_fileName = fileName;
  return true;
}

WriteResult TrafficLog::openReplacing(const std::filesystem::path& path) {
  close();
  m_good = true;
  WriteResult begun = m_replacement.begin(path);
  if (begun.ok) m_fileName = path.filename().string();
  return begun;
}

void TrafficLog::close() {
  if (m_file.is_open()) m_file.close();
  if (m_replacement.isOpen() && !m_replacement.commit().ok) m_good = false;
  m_file.clear();
  m_fileName.clear();
}

void TrafficLog::logTraffic(std::string_view text, std::string_view prefix) {
  if (!isOpen()) return;
  const std::string lines = TrafficLogLines(text, prefix);
  if (lines.empty()) return;
  if (m_replacement.isOpen()) {
    if (!m_replacement.append(lines)) m_good = false;
    return;
  }
  m_file.write(lines.data(), static_cast<std::streamsize>(lines.size()));
  m_file.flush();
}

}  // namespace quillon
