// Those who wait for events, and the newest events that are kept for them.
//
// Thread safety: none, except where said; used by the thread that answers.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_AUDIENCE_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_AUDIENCE_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "apps/eventd/queue/EventRing.h"
#include "apps/eventd/queue/Library.h"
#include "apps/eventd/queue/Operations.h"
#include "apps/eventd/queue/Places.h"
#include "apps/eventd/queue/QueueService.h"
#include "apps/eventd/queue/Timer.h"

namespace EventApps {

// A reader that waits for its first event.
struct WaitingReader {
  ReadRequest request;
  QueueService::ReadDone done;
  OperationPtr operation;
  Places::Taken place;
  std::atomic<bool> cancelled = false;  // any thread
  std::uint64_t number = 0;             // while it waits
  unsigned long seenTo = 0;             // nothing up to there concerns it
  Timer* timer = nullptr;               // set with the next
  Timer::Id end;

  bool waits() const { return request.wait.count() > 0; }

  // One that does not wait is answered also when its client has gone: that may listen still.
  void answer(ReadResult result);
  void release();
};
using WaitingReaderPtr = std::shared_ptr<WaitingReader>;

struct Subscriber {
  unsigned int queue = 0;
  std::set<int> types;
  QueueService::Deliver deliver;
  QueueService::Ended ended;
  Places::Taken place;
  std::atomic<bool> cancelled = false;  // any thread
  unsigned long seenTo = 0;
  bool paused = false;
  bool fetching = false;
};
using SubscriberPtr = std::shared_ptr<Subscriber>;

class Audience {
 public:
  static constexpr std::size_t kEventsAtOnce = 64;  // for a subscriber, kept or fetched

  // `keeps`: whether all deletions are told here. Where other members of a cluster delete, too,
  // what arrives is shown to those who wait, and then forgotten: from memory a reader would get
  // events that are gone. `fetch` brings a subscriber events that are not kept here any more.
  Audience(const ServiceLimits& limits, bool keeps, std::function<void(const SubscriberPtr&)> fetch)
      : m_limits(limits), m_keeps(keeps), m_fetch(std::move(fetch)) {}

  // Shows events that survive power loss to all that wait for them.
  void show(const Arrivals& arrivals);

  // Whether all that arrives is shown: not between a failed flush and the time when what was noted
  // before it has been noted anew. Nothing is kept then.
  void trustKeptEvents(bool trusted);

  void removed(unsigned int queue, unsigned long id);
  void forgetKeptEvents();

  // What is kept, when that answers the request; nothing else is there then.
  std::optional<ReadResult> readKept(const ReadRequest& request) const;

  // Nothing has arrived above `seenTo` until now.
  void wait(const WaitingReaderPtr& reader, unsigned long seenTo);
  // Answers one that still waits, with nothing.
  void giveUp(const WaitingReaderPtr& reader);
  void drop(const WaitingReaderPtr& reader);

  // All events up to `shown` have been shown; the subscriber has had those up to `seenTo`.
  void add(const SubscriberPtr& subscriber);
  void goOn(const SubscriberPtr& subscriber, unsigned long seenTo, unsigned long shown);
  void resume(const SubscriberPtr& subscriber);
  void drop(const SubscriberPtr& subscriber);
  void end(const SubscriberPtr& subscriber, const std::string& why);

  // What is delivered to a subscriber; it may want no more afterwards.
  static void deliver(Subscriber& subscriber, EventSpan events);

  // From now on nobody waits.
  void close(const std::string& why);

  // The queues that somebody waits for.
  std::vector<unsigned int> awaited() const;

  // The highest ids shown.
  std::map<unsigned int, unsigned long> shown() const;

 private:
  struct Queue {
    explicit Queue(const ServiceLimits& limits) : ring(limits.keptEvents, limits.keptBytes) {}
    EventRing ring;
    std::map<std::uint64_t, WaitingReaderPtr> readers;  // in the order in which they came
    std::vector<SubscriberPtr> subscribers;
  };

  Queue& queue(unsigned int number);
  void boundKeptEvents();
  void wakeReaders(Queue& queue, const EventList& events);
  void pump(Queue& queue, const SubscriberPtr& subscriber);

  const ServiceLimits m_limits;
  const bool m_keeps;
  const std::function<void(const SubscriberPtr&)> m_fetch;
  std::map<unsigned int, Queue> m_queues;
  std::uint64_t m_lastNumber = 0;
  bool m_trusted = true;
  bool m_closed = false;
};

}  // namespace EventApps

#endif
