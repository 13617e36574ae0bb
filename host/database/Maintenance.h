// The thread that does what must not wait for the next call: it sleeps until work is due, and
// works with the database's mutex held.
//
// Thread safety: wake() with the mutex held; create and stop() without it.

#ifndef EVENTSYSTEM_HOST_DATABASE_MAINTENANCE_H
#define EVENTSYSTEM_HOST_DATABASE_MAINTENANCE_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace EventSystemHost {

class Maintenance {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr Clock::time_point kNever = Clock::time_point::max();

  // `due` tells when `work` wants to run next. Both are called with the mutex held.
  Maintenance(std::mutex& mutex, std::function<Clock::time_point()> due,
              std::function<void(std::unique_lock<std::mutex>&)> work);
  ~Maintenance();

  Maintenance(const Maintenance&) = delete;
  Maintenance& operator=(const Maintenance&) = delete;

  // Call it when work has become due earlier than before.
  void wake(Clock::time_point due);

  void stop();

 private:
  void run();

  std::mutex& m_mutex;
  std::function<Clock::time_point()> m_due;
  std::function<void(std::unique_lock<std::mutex>&)> m_work;
  std::condition_variable m_changed;
  Clock::time_point m_sleepsUntil = Clock::time_point::min();
  bool m_stop = false;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventSystemHost

#endif
