#pragma once
// Runs a procedure on a real port from a Qt test: the test's event loop turns until the task has
// ended, as the program's one event loop would.

#include <QtTest>
#include <optional>
#include <utility>

#include "link/sign_in.h"
#include "link/task.h"
#include "transfer/transfer_context.h"

namespace quillon::testing {

template <typename T>
T finish(Task<T> task) {
  std::optional<T> result;
  StartTask(std::move(task), [&result](T ended) { result = std::move(ended); });
  if (!QTest::qWaitFor([&result] { return result.has_value(); }, 120'000)) qFatal("task hangs");
  return std::move(*result);
}

inline Task<int> procedure(Task<> (*run)(TransferContext&, int&), TransferContext& context) {
  int result = 0;
  co_await run(context, result);
  co_return result;
}

inline Task<TransferOutcome> transfer(LinkPort& port, TransferJob job) {
  co_return co_await RunTransfer(port, std::move(job));
}

}  // namespace quillon::testing
