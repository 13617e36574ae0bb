// The queues as the commands use them, wherever they are: opened by this process, or served by a
// daemon.
//
// Thread safety: none; used by the main thread. Every operation throws Failure with what went wrong
// and what to do.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_QUEUES_H
#define EVENTSYSTEM_APPS_EVENTCTL_QUEUES_H

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "EventSystem/Event.h"
#include "apps/common/DataSelections.h"
#include "apps/common/EventKinds.h"
#include "apps/common/EventLimits.h"
#include "apps/common/EventView.h"
#include "apps/eventctl/CommandLine.h"
#include "apps/eventctl/Listener.h"
#include "apps/eventctl/Statistics.h"

namespace EventApps {

class ReadableQueues {
 public:
  ReadableQueues() = default;
  virtual ~ReadableQueues() = default;

  ReadableQueues(const ReadableQueues&) = delete;
  ReadableQueues& operator=(const ReadableQueues&) = delete;

  // Returns false to end the walk.
  using Visitor = std::function<bool(const EventView&)>;

  // Whether `dsid` names the global queue or a data selection that exists.
  virtual bool hasQueue(unsigned int dsid) = 0;
  // Throws unless it does.
  void requireQueue(unsigned int dsid);

  // The events of one queue with higher ids than `after`, damaged ones included; with a kind, only
  // those.
  virtual void forEach(unsigned int dsid, unsigned long after, const EventKind* kind,
                       const Visitor& visit) = 0;

  virtual std::optional<EventView> find(unsigned long id, unsigned int dsid) = 0;

  // All data selections, each with the number of its events.
  virtual std::vector<std::pair<DataSelection, unsigned long>> selections() = 0;

  virtual Statistics statistics() = 0;

  // Returns when the queue may have an event above `after`, when `listener` says so, or after a
  // while.
  virtual Woken waitForMore(unsigned int dsid, unsigned long after, const Listener& listener) = 0;
};

// What came of a call to store events: the ids of the first ones, which are stored, and why the one
// behind them is not, or why nobody knows (kUnknown); those after it were not tried. Without a
// refusal, too, some may be left.
struct StoreOutcome {
  enum class Refusal { kNone, kFull, kRejected, kFailed, kUnknown };

  std::vector<unsigned long> ids = {};
  Refusal refusal = Refusal::kNone;
  std::string reason = {};
};

class WritableQueues : public ReadableQueues {
 public:
  // Where the next event of a queue is likely to go. What is not exact is easier to find, and takes
  // no more than the place that it will be.
  virtual Destination destination(unsigned int dsid, bool exact) = 0;

  // How many events a call of store() should have.
  virtual std::size_t eventsAtOnce() const = 0;

  using Events = std::span<const std::unique_ptr<EventSystem::Event>>;

  // Stores events in order. They are durable after makeDurable().
  virtual StoreOutcome store(Events events, unsigned int dsid) = 0;

  // The first event after `after`, or nothing at the end of the queue. Waiting audit records are
  // taken in first; events that cannot be read are removed.
  virtual std::optional<EventView> next(unsigned long after, unsigned int dsid) = 0;

  // False when there is no such event.
  virtual bool remove(unsigned long id, unsigned int dsid) = 0;

  // Removes an event that next() gave. It may be gone by now.
  virtual void discard(unsigned long id, unsigned int dsid) = 0;

  // Removes what is filed under ids up to `upTo`, damaged events included. The number of events.
  virtual unsigned long removeUpTo(unsigned long upTo, unsigned int dsid) = 0;

  virtual void addSelection(const DataSelection& selection) = 0;
  virtual void removeSelection(unsigned int dsid) = 0;

  // Waits until everything done so far survives power loss.
  virtual void makeDurable() = 0;
};

// The queues that the options name: at a daemon that serves them, else opened by this process, for
// writing as their only writer.
std::unique_ptr<ReadableQueues> openToRead(const GlobalOptions& options);
std::unique_ptr<WritableQueues> openToWrite(const GlobalOptions& options);

// The dsids of the queue of the options, or with `all` of the global queue and of every data
// selection. Throws Failure unless it exists.
std::vector<unsigned int> queuesMeant(ReadableQueues& queues, const GlobalOptions& options,
                                      bool all);

}  // namespace EventApps

#endif
