#include "sim/write_splitter.h"

#include <algorithm>

namespace quillon::sim {
namespace {

constexpr std::size_t kLongestPiece = 8;
// Long enough for the PC to have read the piece before the next one arrives.
constexpr SimTime kShortestPause = 2;
constexpr SimTime kLongestPause = 6;

}  // namespace

std::string WriteSplitter::take(SimTime now) {
  if (m_pending.empty() || now < m_nextAt) return {};
  std::uniform_int_distribution<std::size_t> length(1, kLongestPiece);
  std::uniform_int_distribution<SimTime> pause(kShortestPause, kLongestPause);
  const std::size_t n = std::min(length(m_random), m_pending.size());
  std::string piece = m_pending.substr(0, n);
  m_pending.erase(0, n);
  m_nextAt = now + pause(m_random);
  return piece;
}

std::optional<SimTime> WriteSplitter::deadline() const {
  if (m_pending.empty()) return std::nullopt;
  return m_nextAt;
}

}  // namespace quillon::sim
