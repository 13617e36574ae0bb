// What a queue service has been asked and has not answered yet.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_OPERATIONS_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_OPERATIONS_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>

#include "apps/eventd/queue/ServiceObserver.h"

namespace EventApps {

class Operations {
 public:
  explicit Operations(ServiceObserver* observer) : m_observer(observer) {}

  // From a request to its answer.
  class Operation {
   public:
    Operation(Operations& all, const char* name) : m_all(all), m_name(name) {}
    ~Operation();
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    // What follows is no work.
    void stopClock();

   private:
    Operations& m_all;
    const char* m_name;
    bool m_measured = false;
    const std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
  };

  // Null when no more are taken.
  std::shared_ptr<Operation> begin(const char* name);

  void takeNoMore();
  bool takesMore() const;
  void waitForAll();

 private:
  ServiceObserver* const m_observer;
  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  std::size_t m_open = 0;
  bool m_takesMore = true;
};

using OperationPtr = std::shared_ptr<Operations::Operation>;

}  // namespace EventApps

#endif
