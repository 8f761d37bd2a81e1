#pragma once
// Runs a procedure against a fake port that ends every transfer at once: the task has ended when
// RunNow returns, as it never had to wait for an event loop.

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

#include "link/task.h"

namespace quillon::testing {

[[noreturn]] inline void taskStillWaiting() {
  std::fputs("a task waited for a transfer that a fake port should have ended\n", stderr);
  std::abort();
}

template <typename T>
T RunNow(Task<T> task) {
  std::optional<T> result;
  StartTask(std::move(task), [&result](T ended) { result = std::move(ended); });
  if (!result) taskStillWaiting();
  return std::move(*result);
}

inline void RunNow(Task<> task) {
  bool ended = false;
  StartTask(std::move(task), [&ended] { ended = true; });
  if (!ended) taskStillWaiting();
}

}  // namespace quillon::testing
