#include "apps/eventd/Ticker.h"

#include <algorithm>
#include <utility>

namespace EventApps {

Ticker::Ticker() : m_thread([this] { run(); }) {}

void Ticker::every(std::chrono::milliseconds interval, std::function<void()> task) {
  const std::lock_guard lock(m_mutex);
  m_tasks.push_back({interval, Clock::now() + interval, std::move(task)});
  m_changed.notify_all();
}

void Ticker::stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
    m_changed.notify_all();
  }
  if (m_thread.joinable()) m_thread.join();
}

// The lock is held while tasks run: they are small, and nobody waits for it meanwhile.
void Ticker::run() {
  std::unique_lock lock(m_mutex);
  while (!m_stopping) {
    const auto now = Clock::now();
    runDue(now);
    auto next = now + std::chrono::hours(1);
    for (const Task& task : m_tasks) next = std::min(next, task.next);
    m_changed.wait_until(lock, next);
  }
}

void Ticker::runDue(Clock::time_point now) {
  for (Task& task : m_tasks) {
    if (task.next > now) continue;
    task.run();
    task.next = std::max(task.next + task.interval, now);
  }
}

}  // namespace EventApps
