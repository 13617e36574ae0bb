// Events written and deleted a second, over the last minute.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_METRICS_RATES_H
#define EVENTSYSTEM_APPS_EVENTD_METRICS_RATES_H

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>

#include "apps/eventd/queue/ServiceRequests.h"

namespace EventApps {

class Rates {
 public:
  using Clock = std::chrono::steady_clock;

  struct Values {
    double written = 0;
    double deleted = 0;
    std::map<int, double> writtenByType;
  };

  // Takes the counters as they are; about once a second.
  void sample(const ServiceCounters& counters, Clock::time_point now = Clock::now());

  // Between the samples of the last minute; all 0 when there are not two.
  Values values() const;

 private:
  struct Sample {
    Clock::time_point at;
    std::uint64_t deleted = 0;
    std::map<int, std::uint64_t> written;
  };

  mutable std::mutex m_mutex;
  std::deque<Sample> m_samples;
};

}  // namespace EventApps

#endif
