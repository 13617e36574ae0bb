#include "host/database/Maintenance.h"

#include <utility>

namespace EventSystemHost {

Maintenance::Maintenance(std::mutex& mutex, std::function<Clock::time_point()> due,
                         std::function<void(std::unique_lock<std::mutex>&)> work)
    : m_mutex(mutex), m_due(std::move(due)), m_work(std::move(work)), m_thread([this] { run(); }) {}

Maintenance::~Maintenance() {
  stop();
}

void Maintenance::wake(Clock::time_point due) {
  // Threads that write all the time find it awake already, or about to wake early enough.
  if (due < m_sleepsUntil) m_changed.notify_one();
}

void Maintenance::stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_stop = true;
  }
  m_changed.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void Maintenance::run() {
  std::unique_lock lock(m_mutex);
  while (!m_stop) {
    const Clock::time_point due = m_due();
    if (due <= Clock::now()) {
      m_work(lock);
      // Let the calls that came in the meantime go first.
      lock.unlock();
      std::this_thread::yield();
      lock.lock();
      continue;
    }
    m_sleepsUntil = due;
    if (due == kNever) {
      m_changed.wait(lock);
    } else {
      m_changed.wait_until(lock, due);
    }
    m_sleepsUntil = Clock::time_point::min();
  }
}

}  // namespace EventSystemHost
