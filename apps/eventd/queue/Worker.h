// A thread that does one job after the other.
//
// Thread safety: post() from any thread, jobs included; finish() and destruction from one other.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_WORKER_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_WORKER_H

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace EventApps {

using Job = std::function<void()>;

// Does the job. What it throws is logged: one that fails, for want of memory perhaps, ends nothing
// but itself.
void runJob(const Job& job);

class Worker {
 public:
  Worker();
  ~Worker();

  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  // What the job throws is logged. After finish() jobs are thrown away.
  void post(Job job);

  // Does what was posted, and what that posts; then the thread ends.
  void finish();

 private:
  void run();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::deque<Job> m_jobs;
  bool m_finish = false;
  bool m_ended = false;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventApps

#endif
