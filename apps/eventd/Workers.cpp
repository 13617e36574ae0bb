#include "apps/eventd/Workers.h"

#include <utility>

#include "apps/eventd/queue/Worker.h"

namespace EventApps {

Workers::Workers(unsigned threads, std::size_t mostTasks) : m_mostTasks(mostTasks) {
  for (unsigned i = 0; i < threads; ++i) m_threads.emplace_back([this] { run(); });
}

void Workers::stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
  }
  m_changed.notify_all();
  for (std::thread& thread : m_threads) thread.join();
  m_threads.clear();
}

bool Workers::post(std::function<void()> task) {
  {
    const std::lock_guard lock(m_mutex);
    if (m_stopping || m_tasks.size() >= m_mostTasks) return false;
    m_tasks.push_back(std::move(task));
  }
  m_changed.notify_one();
  return true;
}

void Workers::run() {
  std::unique_lock lock(m_mutex);
  while (true) {
    m_changed.wait(lock, [this] { return m_stopping || !m_tasks.empty(); });
    if (m_tasks.empty()) return;
    auto task = std::move(m_tasks.front());
    m_tasks.pop_front();
    lock.unlock();
    runJob(task);
    task = nullptr;  // what it holds is let go of without the lock
    lock.lock();
  }
}

}  // namespace EventApps
