// A piece of work for the queue thread, done in slices so that others get their turn.
//
// Thread safety: none; used by the queue thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_TASK_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_TASK_H

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace EventApps {

class Task : public std::enable_shared_from_this<Task> {
 public:
  virtual ~Task() = default;

  // Works for one slice; true when it has ended, and its answer is on the way. May throw; is not
  // called again then.
  virtual bool step() = 0;

  // With what step() threw.
  virtual void fail(const std::exception& problem) = 0;
};

using TaskPtr = std::shared_ptr<Task>;

// Work that needs one slice only.
class CallTask : public Task {
 public:
  using Failed = std::function<void(const std::exception& problem)>;

  CallTask(std::function<void()> call, Failed failed)
      : m_call(std::move(call)), m_failed(std::move(failed)) {}

  bool step() override {
    m_call();
    return true;
  }
  void fail(const std::exception& problem) override { m_failed(problem); }

 private:
  const std::function<void()> m_call;
  const Failed m_failed;
};

// The time that a task may take at once.
class Slice {
 public:
  bool isOver() const { return std::chrono::steady_clock::now() >= m_end; }

 private:
  static constexpr std::chrono::milliseconds kLength{2};
  const std::chrono::steady_clock::time_point m_end = std::chrono::steady_clock::now() + kLength;
};

}  // namespace EventApps

#endif
