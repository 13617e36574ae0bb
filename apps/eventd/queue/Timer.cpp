#include "apps/eventd/queue/Timer.h"

namespace EventApps {

Timer::Timer() : m_thread([this] { run(); }) {}

Timer::~Timer() {
  stop();
}

Timer::Id Timer::callAt(Clock::time_point time, std::function<void()> call) {
  Id id;
  bool first = false;
  {
    const std::lock_guard lock(m_mutex);
    id = {time, ++m_last};
    const auto added = m_calls.emplace(id, std::move(call)).first;
    first = added == m_calls.begin();
  }
  if (first) m_changed.notify_one();
  return id;
}

void Timer::cancel(Id id) {
  const std::lock_guard lock(m_mutex);
  m_calls.erase(id);
}

void Timer::stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_stop = true;
  }
  m_changed.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void Timer::run() {
  std::unique_lock lock(m_mutex);
  while (!m_stop) {
    if (m_calls.empty()) {
      m_changed.wait(lock);
    } else if (const Clock::time_point due = m_calls.begin()->first.first; Clock::now() < due) {
      m_changed.wait_until(lock, due);
    } else {
      const auto entry = m_calls.extract(m_calls.begin());
      lock.unlock();
      entry.mapped()();
      lock.lock();
    }
  }
}

}  // namespace EventApps
