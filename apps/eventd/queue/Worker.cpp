#include "apps/eventd/queue/Worker.h"

#include <exception>
#include <utility>

#include "EventSystem/platform/HostLog.h"

namespace EventApps {

void runJob(const Job& job) {
  try {
    job();
  } catch (const std::exception& problem) {
    ErrorA(4, "eventd: a job ended with: %s", problem.what());
  }
}

Worker::Worker() : m_thread([this] { run(); }) {}

Worker::~Worker() {
  finish();
}

void Worker::post(Job job) {
  {
    const std::lock_guard lock(m_mutex);
    if (m_ended) return;
    m_jobs.push_back(std::move(job));
  }
  m_changed.notify_one();
}

void Worker::finish() {
  {
    const std::lock_guard lock(m_mutex);
    m_finish = true;
  }
  m_changed.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void Worker::run() {
  std::deque<Job> taken;
  std::unique_lock lock(m_mutex);
  while (true) {
    m_changed.wait(lock, [this] { return m_finish || !m_jobs.empty(); });
    if (m_jobs.empty()) break;
    taken.swap(m_jobs);
    lock.unlock();
    for (; !taken.empty(); taken.pop_front()) {
      m_progress.begin();
      runJob(taken.front());
      m_progress.end();
    }
    lock.lock();
  }
  m_ended = true;
}

}  // namespace EventApps
