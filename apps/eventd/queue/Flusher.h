// Lets answers go when what they tell survives power loss: one flush for all that wait at a time.
//
// Thread safety: any thread, except for construction, finish() and destruction.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_FLUSHER_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_FLUSHER_H

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "apps/eventd/queue/Worker.h"

namespace EventApps {

class Flusher {
 public:
  using Flush = std::function<int()>;       // a database status, 0 on success
  using Answer = std::function<void(int)>;  // told that status
  using Flushed = std::function<void(int, double seconds)>;

  // `flushed` is called after each flush, by the flusher's thread. Answers run on `answers`, in the
  // order in which they came.
  Flusher(Flush flush, Flushed flushed, Worker& answers);
  ~Flusher();

  Flusher(const Flusher&) = delete;
  Flusher& operator=(const Flusher&) = delete;

  // To be called after each write: what is answered from then on may tell of it.
  void noteWrite() { ++m_written; }

  // Answers that follow a write wait for a flush that began after it; when there was none since the
  // last flush they do not wait.
  void whenDurable(Answer answer);

  // Answers all that wait; then the thread ends.
  void finish();

  // By one thread: whether no flush runs that ran at the last call.
  bool goesOn() { return m_progress.goesOn(); }

 private:
  void run();
  void flushFor(std::vector<Answer> answers);

  const Flush m_flush;
  const Flushed m_flushed;
  Worker& m_answers;
  Progress m_progress;
  std::atomic<std::uint64_t> m_written = 0;

  std::mutex m_mutex;  // guards what follows
  std::condition_variable m_changed;
  std::vector<Answer> m_waiting;
  std::uint64_t m_durable = 0;  // of m_written
  bool m_finish = false;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventApps

#endif
