// Small tasks that come again and again, on one thread.
//
// Thread safety: every() and stop() from any thread but the ticker's.

#ifndef EVENTSYSTEM_APPS_EVENTD_TICKER_H
#define EVENTSYSTEM_APPS_EVENTD_TICKER_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace EventApps {

class Ticker {
 public:
  using Clock = std::chrono::steady_clock;

  Ticker();
  ~Ticker() { stop(); }

  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;

  // Calls the task every `interval`, first after one. It must not throw, and hold nobody up.
  void every(std::chrono::milliseconds interval, std::function<void()> task);

  // No task is called after this.
  void stop();

 private:
  struct Task {
    std::chrono::milliseconds interval;
    Clock::time_point next;
    std::function<void()> run;
  };

  void run();
  void runDue(Clock::time_point now);

  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::vector<Task> m_tasks;
  bool m_stopping = false;
  std::thread m_thread;  // last: it uses the others
};

}  // namespace EventApps

#endif
