#include "sim/paced_line.h"

#include <algorithm>

namespace quillon::sim {
namespace {

constexpr std::int64_t kMicrosPerMs = 1000;
constexpr std::int64_t kBitsPerByte = 10;  // start bit, 8 data bits, stop bit

}  // namespace

void PacedLine::push(std::string_view bytes, SimTime now) {
  const std::int64_t nowMicros = now * kMicrosPerMs;
  const std::int64_t byteMicros = m_baud > 0 ? kBitsPerByte * 1'000'000 / m_baud : 0;
  m_freeAtMicros = std::max(m_freeAtMicros, nowMicros);
  for (char c : bytes) {
    m_freeAtMicros += byteMicros;
    m_bytes.push_back({c, m_freeAtMicros});
  }
}

std::string PacedLine::take(SimTime now) {
  const std::int64_t nowMicros = now * kMicrosPerMs;
  std::string out;
  while (!m_bytes.empty() && m_bytes.front().doneMicros <= nowMicros) {
    out += m_bytes.front().value;
    m_bytes.pop_front();
  }
  return out;
}

std::optional<SimTime> PacedLine::deadline() const {
  if (m_bytes.empty()) return std::nullopt;
  // Rounded up, so that the byte is really there when the deadline is served.
  return (m_bytes.front().doneMicros + kMicrosPerMs - 1) / kMicrosPerMs;
}

}  // namespace quillon::sim
