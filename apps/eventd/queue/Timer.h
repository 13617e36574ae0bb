// A thread that calls functions when their time has come.
//
// Thread safety: any thread, except for construction and destruction.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_TIMER_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_TIMER_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace EventApps {

class Timer {
 public:
  using Clock = std::chrono::steady_clock;
  using Id = std::pair<Clock::time_point, std::uint64_t>;

  Timer();
  ~Timer();  // what has not been called by then is not

  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  // `call` must not block and must not throw.
  Id callAt(Clock::time_point time, std::function<void()> call);
  Id callAfter(Clock::duration delay, std::function<void()> call) {
    return callAt(Clock::now() + delay, std::move(call));
  }

  // The call may have begun.
  void cancel(Id id);

  void stop();

 private:
  void run();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::map<Id, std::function<void()>> m_calls;
  std::uint64_t m_last = 0;
  bool m_stop = false;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventApps

#endif
