// How much is in the queues. They are counted by a walk, and from then on as events come and go;
// the walk is repeated, by a thread of its own and not more often than is good for the rest, for
// what goes unnoticed: rows that the library removes for their age, dates of the oldest, damage. At
// the cluster service others change the queues, too, and what was read last is told.
//
// Thread safety: any thread, except for construction, destruction, and where said.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_FIGURESCACHE_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_FIGURESCACHE_H

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "apps/common/QueueReader.h"
#include "apps/eventd/queue/Flusher.h"
#include "apps/eventd/queue/ServiceLimits.h"
#include "apps/eventd/queue/ServiceRequests.h"
#include "apps/eventd/queue/Worker.h"
#include "host/Host.h"

namespace EventApps {

class FiguresCache {
 public:
  // On the answering thread.
  using Done = std::function<void(FiguresPtr)>;

  // Walks on `walker` and is told by `flusher` what is durable; both outlive it, as the thread that
  // `onQueueThread` hands a job to.
  FiguresCache(EventSystemHost::Host& host, const ServiceLimits& limits, Worker& walker,
               Flusher& flusher, std::function<void(Job)> onQueueThread);

  // From the queue thread, in the order in which it happens.
  void added(unsigned int queue, const EventView& event);
  void removed(unsigned int queue, unsigned long id, int type);

  // To be called when something may have changed.
  void noteChange() { ++m_changes; }

  // The next who asks gets what is there then, at whatever cost.
  void readAnew();

  // What survives power loss when it is told.
  void get(Done done);

 private:
  using Clock = std::chrono::steady_clock;

  struct Change {
    unsigned int queue = 0;
    EventView event;  // without fields and text
    bool isRemoval = false;
  };

  bool isClustered() const { return m_host.cluster() != nullptr; }
  bool isDue() const;
  void note(const Change& change);
  static void apply(Figures& figures, const Change& change);
  void beginWalk();
  void walk(const std::function<Figures()>& count);
  void walked(FiguresSnapshot found, Clock::time_point begin);
  void tell(std::vector<Done> waiting);

  EventSystemHost::Host& m_host;
  const ServiceLimits m_limits;
  Worker& m_walker;
  Flusher& m_flusher;
  const std::function<void(Job)> m_onQueueThread;
  const std::unique_ptr<QueueReader> m_reader;
  std::atomic<std::uint64_t> m_changes = 1;

  std::mutex m_mutex;  // guards what follows
  FiguresSnapshot m_current;
  std::vector<Change> m_since;    // the walk has begun
  std::uint64_t m_walkBegan = 0;  // at so many of m_changes
  std::uint64_t m_readAt = 0;
  Clock::time_point m_nextWalk = Clock::time_point::min();
  bool m_walking = false;
  bool m_readAnew = false;
  std::vector<Done> m_waiting;
};

}  // namespace EventApps

#endif
