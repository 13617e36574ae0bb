// Does something again and again, on a thread of its own, until its end.
//
// Thread safety: construct and destroy it on one thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_PERIODICTASK_H
#define EVENTSYSTEM_HOST_CLUSTER_PERIODICTASK_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace EventSystemHost {

class PeriodicTask {
 public:
  // First after one interval. What the task throws is logged, and it goes on.
  PeriodicTask(std::chrono::milliseconds interval, std::function<void()> task);

  // Waits for a task that is under way.
  ~PeriodicTask();

  PeriodicTask(const PeriodicTask&) = delete;
  PeriodicTask& operator=(const PeriodicTask&) = delete;

 private:
  void run();

  const std::chrono::milliseconds m_interval;
  const std::function<void()> m_task;
  std::mutex m_mutex;
  std::condition_variable m_wake;
  bool m_stopping = false;  // guarded by m_mutex
  std::thread m_thread;     // last: it uses all of the above
};

}  // namespace EventSystemHost

#endif
