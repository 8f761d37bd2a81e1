#pragma once
// One direction of a serial line at a given speed: bytes pushed in come out only when a real
// 8N1 line (ten bits per byte) would have finished carrying them. Speed 0 passes bytes at once.

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "sim/module_config.h"

namespace quillon::sim {

class PacedLine {
 public:
  explicit PacedLine(int baud) : m_baud(baud) {}

  void push(std::string_view bytes, SimTime now);
  // The bytes whose last bit has arrived by `now`.
  [[nodiscard]] std::string take(SimTime now);
  // When the next byte will have arrived; nullopt when nothing is on the line.
  [[nodiscard]] std::optional<SimTime> deadline() const;
  [[nodiscard]] bool empty() const { return m_bytes.empty(); }

 private:
  struct Byte {
    char value;
    std::int64_t doneMicros;
  };
  int m_baud;
  std::deque<Byte> m_bytes;
  std::int64_t m_freeAtMicros = 0;
};

}  // namespace quillon::sim
