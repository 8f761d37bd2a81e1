#pragma once
// The reply time-out of a wait for the module, on the time-of-day rules the module's tools have
// always kept: both the start and the clock are read in whole seconds of the time of day, and
// the wait has passed once strictly more than the limit lies between them, so a 20-second limit
// waits more than 20 and at most 21 seconds, whatever the fraction at the start. A wait that runs
// into midnight starts again there, so a wait begun shortly before midnight lasts longer.
//
// The timer works on a day axis: the engine's steady clock shifted so that 0 is a midnight. It
// never jumps when the wall clock is set; only the one reading of the time of day at the start
// of a transfer places the seconds and the midnights on it.

#include "link/transfer.h"

namespace quillon {

inline constexpr TimeOfDay kDayLength = 86'400'000;

// Milliseconds on the day axis: whole days plus the time of day.
using DayTime = std::int64_t;

[[nodiscard]] constexpr DayTime wholeSecond(DayTime t) { return t - t % 1000; }
[[nodiscard]] constexpr DayTime midnightBefore(DayTime t) { return t - t % kDayLength; }

class ReplyTimer {
 public:
  void start(DayTime now, TimeOfDay limit) {
    m_start = wholeSecond(now);
    m_limit = limit;
  }
  [[nodiscard]] bool expired(DayTime now) const {
    return wholeSecond(now) - startAt(now) > m_limit;
  }
  // The first moment at which expired() holds.
  [[nodiscard]] DayTime deadline() const {
    const DayTime due = firstLate(m_start);
    const DayTime midnight = midnightBefore(m_start) + kDayLength;
    return due < midnight ? due : firstLate(midnight);
  }

 private:
  // The start as the wait sees it at `now`: moved to the last midnight that lies after it.
  [[nodiscard]] DayTime startAt(DayTime now) const {
    const DayTime midnight = midnightBefore(now);
    return m_start < midnight ? midnight : m_start;
  }
  [[nodiscard]] DayTime firstLate(DayTime start) const {
    return wholeSecond(start + m_limit + 1 + 999);
  }

  DayTime m_start = 0;
  TimeOfDay m_limit = 0;
};

}  // namespace quillon
