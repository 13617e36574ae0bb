// A thread that does one job after the other.
//
// Thread safety: post() from any thread, jobs included; finish() and destruction from one other.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_WORKER_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_WORKER_H

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace EventApps {

using Job = std::function<void()>;

// Does the job. What it throws is logged: one that fails, for want of memory perhaps, ends nothing
// but itself.
void runJob(const Job& job);

// Whether a thread gets on with its work, for one other that looks now and then.
class Progress {
 public:
  // Before and after each piece of work.
  void begin() { ++m_steps; }
  void end() { ++m_steps; }

  // False when the piece that was in work at the last look still is.
  bool goesOn() {
    const std::uint64_t steps = m_steps;
    return std::exchange(m_seen, steps) != steps || steps % 2 == 0;
  }

 private:
  std::atomic<std::uint64_t> m_steps = 0;  // odd while something is in work
  std::uint64_t m_seen = 0;
};

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

  // By one thread: whether it is idle, or has ended a job since the last call.
  bool goesOn() { return m_progress.goesOn(); }

 private:
  void run();

  Progress m_progress;

  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::deque<Job> m_jobs;
  bool m_finish = false;
  bool m_ended = false;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventApps

#endif
