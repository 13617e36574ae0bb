#include "host/cluster/PeriodicTask.h"

#include <exception>
#include <utility>

#include "EventSystem/platform/HostLog.h"

namespace EventSystemHost {

PeriodicTask::PeriodicTask(std::chrono::milliseconds interval, std::function<void()> task)
    : m_interval(interval), m_task(std::move(task)), m_thread([this] { run(); }) {}

PeriodicTask::~PeriodicTask() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
  }
  m_wake.notify_all();
  m_thread.join();
}

void PeriodicTask::run() {
  std::unique_lock lock(m_mutex);
  while (!m_wake.wait_for(lock, m_interval, [this] { return m_stopping; })) {
    lock.unlock();
    try {
      m_task();
    } catch (const std::exception& failure) {
      ErrorA(4, "%s cluster service: %s", __func__, failure.what());
    }
    lock.lock();
  }
}

}  // namespace EventSystemHost
