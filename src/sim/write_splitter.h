#pragma once
// What the module writes, cut into pieces at random points with a short pause after each, so
// that the PC's reads see a reply in pieces as a USB adapter delivers it. Seeded, so a run that
// failed can be played again.

#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "sim/module_config.h"

namespace quillon::sim {

class WriteSplitter {
 public:
  explicit WriteSplitter(unsigned seed) : m_random(seed) {}

  void push(std::string_view bytes) { m_pending += bytes; }
  // The next piece once its time has come, else nothing.
  [[nodiscard]] std::string take(SimTime now);
  [[nodiscard]] std::optional<SimTime> deadline() const;

 private:
  std::mt19937 m_random;
  std::string m_pending;
  SimTime m_nextAt = 0;
};

}  // namespace quillon::sim
