// How much is in the queues, read by a thread of its own, and not more often than is good for the
// rest.
//
// Thread safety: any thread, except for construction, finish() and destruction.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_FIGURESCACHE_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_FIGURESCACHE_H

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "apps/eventd/queue/ServiceLimits.h"
#include "apps/eventd/queue/ServiceRequests.h"
#include "apps/eventd/queue/Worker.h"
#include "host/Host.h"

namespace EventApps {

class FiguresCache {
 public:
  using Done = std::function<void(FiguresPtr)>;

  // Reads on `walker`, answers on `answers`; all outlive it.
  FiguresCache(EventSystemHost::Host& host, const ServiceLimits& limits, Worker& walker,
               Worker& answers);

  // To be called when something may have changed.
  void noteChange() { ++m_changes; }

  // The next who asks gets what is there then, at whatever cost.
  void readAnew();

  // What was read last; empty before anything was.
  FiguresPtr latest() const;

  // As of now, where nothing has changed or reading is due; else as of the last reading.
  void get(Done done);

 private:
  using Clock = std::chrono::steady_clock;

  bool isFresh() const;
  void refresh();
  FiguresSnapshot read() const;

  EventSystemHost::Host& m_host;
  const ServiceLimits m_limits;
  Worker& m_walker;
  Worker& m_answers;
  std::atomic<std::uint64_t> m_changes = 1;

  mutable std::mutex m_mutex;  // guards what follows
  FiguresPtr m_latest = std::make_shared<FiguresSnapshot>();
  std::uint64_t m_readAt = 0;  // of m_changes
  Clock::time_point m_nextReading = Clock::time_point::min();
  bool m_reading = false;
  std::vector<Done> m_waiting;
};

}  // namespace EventApps

#endif
