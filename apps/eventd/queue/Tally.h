// What a queue service counts.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_TALLY_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_TALLY_H

#include <mutex>

#include "apps/eventd/queue/ServiceRequests.h"

namespace EventApps {

class Tally {
 public:
  // Calls `change` with the counters.
  template <class Change>
  void note(const Change& change) {
    const std::lock_guard lock(m_mutex);
    change(m_counters);
  }

  void refused(const char* why, std::uint64_t count = 1) {
    note([&](ServiceCounters& all) { all.refused[why] += count; });
  }

  ServiceCounters read() const {
    const std::lock_guard lock(m_mutex);
    return m_counters;
  }

 private:
  mutable std::mutex m_mutex;
  ServiceCounters m_counters;
};

}  // namespace EventApps

#endif
