#pragma once
// Procedures that talk to the module are coroutines. A Task starts when it is awaited and runs
// until it awaits a transfer; the driver resumes it from its event loop when that transfer has
// ended. Nothing waits inside: a program runs one event loop, however many procedures are under
// way, and a procedure reads top to bottom as the steps it takes.

#include <coroutine>
#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace quillon {

namespace task_detail {

// At its end a task hands control straight back to whoever awaited it.
struct ResumeAwaiting {
  [[nodiscard]] bool await_ready() const noexcept { return false; }
  template <typename Promise>
  std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> self) noexcept {
    auto awaiting = self.promise().awaiting;
    return awaiting ? awaiting : std::noop_coroutine();
  }
  void await_resume() const noexcept {}
};

struct PromiseBase {
  std::coroutine_handle<> awaiting;
  std::suspend_always initial_suspend() noexcept { return {}; }
  ResumeAwaiting final_suspend() noexcept { return {}; }
  // Errors travel as results, never as exceptions.
  [[noreturn]] void unhandled_exception() noexcept { std::terminate(); }
};

}  // namespace task_detail

template <typename T = void>
class [[nodiscard]] Task {
 public:
  struct promise_type : task_detail::PromiseBase {
    std::optional<T> value;
    Task get_return_object() {
      return Task(std::coroutine_handle<promise_type>::from_promise(*this));
    }
    void return_value(T result) { value = std::move(result); }
  };

  Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, {})) {}
  Task& operator=(Task&&) = delete;
  ~Task() {
    if (m_handle) m_handle.destroy();
  }

  [[nodiscard]] bool await_ready() const noexcept { return false; }
  std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
    m_handle.promise().awaiting = awaiting;
    return m_handle;
  }
  T await_resume() { return std::move(*m_handle.promise().value); }

 private:
  explicit Task(std::coroutine_handle<promise_type> handle) : m_handle(handle) {}
  std::coroutine_handle<promise_type> m_handle;
};

template <>
class [[nodiscard]] Task<void> {
 public:
  struct promise_type : task_detail::PromiseBase {
    Task get_return_object() {
      return Task(std::coroutine_handle<promise_type>::from_promise(*this));
    }
    void return_void() noexcept {}
  };

  Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, {})) {}
  Task& operator=(Task&&) = delete;
  ~Task() {
    if (m_handle) m_handle.destroy();
  }

  [[nodiscard]] bool await_ready() const noexcept { return false; }
  std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
    m_handle.promise().awaiting = awaiting;
    return m_handle;
  }
  void await_resume() const noexcept {}

 private:
  explicit Task(std::coroutine_handle<promise_type> handle) : m_handle(handle) {}
  std::coroutine_handle<promise_type> m_handle;
};

namespace task_detail {

// The outermost frame of a started task: it runs at once and frees itself when done.
struct Detached {
  struct promise_type {
    Detached get_return_object() noexcept { return {}; }
    std::suspend_never initial_suspend() noexcept { return {}; }
    std::suspend_never final_suspend() noexcept { return {}; }
    void return_void() noexcept {}
    [[noreturn]] void unhandled_exception() noexcept { std::terminate(); }
  };
};

template <typename T, typename Done>
Detached runDetached(Task<T> task, Done done) {
  if constexpr (std::is_void_v<T>) {
    co_await std::move(task);
    done();
  } else {
    done(co_await std::move(task));
  }
}

}  // namespace task_detail

// Starts `task`; `done` runs with its result when it ends, which may be before this returns when
// nothing in it had to wait.
template <typename T, typename Done>
void StartTask(Task<T> task, Done done) {
  (void)task_detail::runDetached(std::move(task), std::move(done));
}

}  // namespace quillon
