// A few threads for what would hold up the network threads: large bodies, files, other servers.
//
// Thread safety: post() from any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_WORKERS_H
#define EVENTSYSTEM_APPS_EVENTD_WORKERS_H

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace EventApps {

class Workers {
 public:
  Workers(unsigned threads, std::size_t mostTasks);
  ~Workers() { stop(); }

  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // Runs the task soon; what it throws is logged. False when too many wait already, and after
  // stop().
  bool post(std::function<void()> task);

  // Runs what was posted to its end.
  void stop();

 private:
  void run();

  const std::size_t m_mostTasks;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::deque<std::function<void()>> m_tasks;
  bool m_stopping = false;
  std::vector<std::thread> m_threads;  // last: they use the others
};

}  // namespace EventApps

#endif
