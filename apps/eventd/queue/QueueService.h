// The queues of a running host for many clients at once: nothing is acknowledged, and nothing is
// shown, before it survives power loss.
//
// One thread makes all calls of the library, in slices, and all that is read has one slice between
// two writers, so that no number of readers holds up a writer; another flushes, one flush for all
// that wait for one. Answers come from a third.
//
// Thread safety: every operation from any thread, except for construction and destruction.
// Callbacks run on a thread of the service, one at a time, never inside the call that they were
// given to; they must not block, must not throw, and may call the service.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_QUEUESERVICE_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_QUEUESERVICE_H

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "EventSystem/Event.h"
#include "apps/eventd/queue/ServiceLimits.h"
#include "apps/eventd/queue/ServiceObserver.h"
#include "apps/eventd/queue/ServiceRequests.h"
#include "host/Host.h"

namespace EventApps {

class QueueService {
 public:
  // Builds the event manager, which repairs the tables and takes in audit records. Both outlive the
  // service; `observer` may be null. Throws Failure, and what the manager's constructor throws.
  explicit QueueService(EventSystemHost::Host& host, const ServiceLimits& limits = {},
                        ServiceObserver* observer = nullptr);

  // Finishes everything it was asked, and makes it durable; waiting readers are answered that there
  // is nothing, subscribers are told that it ends, and what is being read for long is given up.
  ~QueueService();

  QueueService(const QueueService&) = delete;
  QueueService& operator=(const QueueService&) = delete;

  // Stores events in order. Answered when they survive power loss, or it failed. 50: the queue is
  // full; 72: no such data selection; 9: one of them does not fit where it would go; 4: the store
  // failed. With a key: the same key with the same body once more stores nothing twice and gets the
  // same ids; what the first try did not store is stored then.
  using Stored = std::function<void(StoreResult)>;
  void store(std::vector<std::unique_ptr<EventSystem::Event>> events, unsigned int dsid,
             std::optional<IdempotencyKey> key, Stored done);

  // False in cluster mode: a key must then be refused.
  bool supportsKeys() const;

  // The events after an id; with `wait` the answer comes when the first arrives, or none in that
  // time. Nothing when too many wait already. Long readings, and all that look for some types only,
  // take turns; those who store pass them.
  using ReadDone = std::function<void(ReadResult)>;
  std::optional<Waiting> read(const ReadRequest& request, ReadDone done);

  // Everything after an id, or from now on, as it arrives. `deliver` returns false when it wants no
  // more at the moment; what it was given is taken. `ended` is called when nothing follows though
  // the subscriber did not cancel, with the reason. Nothing when there are too many subscribers.
  using Deliver = std::function<bool(EventSpan)>;
  using Ended = std::function<void(std::string)>;
  std::optional<Subscription> subscribe(unsigned int dsid, std::optional<unsigned long> after,
                                        std::set<int> types, Deliver deliver, Ended ended);

  void find(unsigned long id, unsigned int dsid, const std::function<void(FindResult)>& done);

  void remove(unsigned long id, unsigned int dsid, const std::function<void(RemoveResult)>& done);

  // All up to an id, or all there are when it begins; with `dryRun` they are only counted.
  void removeUpTo(std::optional<unsigned long> upTo, unsigned int dsid, bool dryRun,
                  const std::function<void(RemoveUpToResult)>& done);

  // Reads every event. Where one is wrong the library looks for itself, which holds up everything
  // else meanwhile. Those who ask at once share a check.
  void check(bool fix, const std::function<void(CheckResult)>& done);

  using Changed = std::function<void(const ChangeResult&)>;
  void addDataSelection(const DataSelection& selection, const Changed& done);
  void removeDataSelection(unsigned int dsid, const Changed& done);

  // Whether it is the global queue or that of a data selection that exists.
  bool hasQueue(unsigned int dsid) const;

  // How much is in the queues: in cluster mode as of now when that is cheap, else as of a moment
  // ago (see ServiceLimits).
  void figures(const std::function<void(FiguresPtr)>& done);

  // As of a moment ago (see ServiceLimits): whether a read, a small write and a flush work.
  void readiness(const std::function<void(const Readiness&)>& done);

  // By one thread, now and then: false while the queue or a flush is at what it was at the last
  // call.
  bool makesProgress();

  ServiceCounters counters() const;

 private:
  class Parts;
  std::unique_ptr<Parts> m_parts;
};

}  // namespace EventApps

#endif
