#pragma once
// The reply time-out of a wait for the module: both the start and the clock are read in whole
// seconds, and the wait has passed once strictly more than the limit lies between them, so a
// 20-second limit waits more than 20 and at most 21 seconds, whatever the fraction at the start.
// When the clock wraps at midnight the start moves to the current whole second, so a wait begun
// shortly before midnight still ends.

#include "link/transfer.h"

namespace quillon {

inline constexpr TimeOfDay kDayLength = 86'400'000;

[[nodiscard]] constexpr TimeOfDay wholeSecond(TimeOfDay t) { return t - t % 1000; }

class ReplyTimer {
 public:
  void start(TimeOfDay now, TimeOfDay limit) {
    m_start = wholeSecond(now);
    m_limit = limit;
  }
  // Follows the clock across midnight; true once the limit is exceeded.
  [[nodiscard]] bool expired(TimeOfDay now) {
    if (now < m_start) m_start = wholeSecond(now);
    return wholeSecond(now) - m_start > m_limit;
  }
  // The first moment at which expired() holds, or midnight, where the start has to move.
  [[nodiscard]] TimeOfDay deadline() const {
    const TimeOfDay firstLate = m_start + m_limit + 1;
    const TimeOfDay due = wholeSecond(firstLate + 999);
    return due < kDayLength ? due : kDayLength;
  }

 private:
  TimeOfDay m_start = 0;
  TimeOfDay m_limit = 0;
};

}  // namespace quillon
