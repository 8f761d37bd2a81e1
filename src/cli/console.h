#pragma once
// The terminal a command talks to: its streams, and what they are connected to.

#include <iosfwd>

namespace quillon {

struct Console {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  // Whether a person can answer questions on `in`.
  bool interactive = false;
  // Whether `err` is a terminal that can show a progress line rewriting itself.
  bool progress = false;
};

}  // namespace quillon
