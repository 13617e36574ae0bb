// The calls of the library, and what arrives in the queues by whomever: each event that appears is
// noted once, in the order of the ids of its queue.
//
// Thread safety: none; used by the queue thread, construction excepted.

#ifndef EVENTSYSTEM_APPS_EVENTD_QUEUE_LIBRARY_H
#define EVENTSYSTEM_APPS_EVENTD_QUEUE_LIBRARY_H

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "apps/common/HostQueues.h"
#include "apps/common/QueueNames.h"
#include "apps/common/QueueReader.h"
#include "apps/eventd/queue/Flusher.h"
#include "apps/eventd/queue/Published.h"
#include "apps/eventd/queue/Tally.h"

namespace EventApps {

// Events that are new in a queue: all that there are above `from`.
struct Arrivals {
  unsigned int queue = 0;
  unsigned long from = 0;
  EventList events;
};

class Library {
 public:
  // Builds the event manager, which takes in audit records.
  Library(EventSystemHost::Host& host, Tally& tally);

  // Called after each write.
  std::function<void()> wrote = [] {};

  // Called with each event that is noted, and, unless the queues are at the cluster service, with
  // what is removed by remove().
  std::function<void(unsigned int queue, const Published&)> added = [](auto, const auto&) {};
  std::function<void(unsigned int queue, unsigned long id, int type)> removed = [](auto, auto,
                                                                                   auto) {};

  HostQueues& queues() { return m_queues; }
  bool isClustered() const { return m_queues.isClustered(); }

  // What result 50 means.
  std::string whyFull() const;

  // 0 and the event's id, or the manager's result. Throws Failure, as all below, when a queue
  // cannot be read.
  int store(EventSystem::Event& event, unsigned int dsid, unsigned long& id);

  // The id that the next event will get, unless audit records arrive meanwhile; not in cluster
  // mode.
  unsigned long expectedId(unsigned int dsid);
  // The same, where a guess is enough.
  unsigned long likelyId(unsigned int dsid);

  // Called with each id and its event, which is null when its type is not asked for; returns false
  // to end the walk.
  using Visit = std::function<bool(unsigned long, const EventPtr&)>;

  // Walks the events after an id; true at the end of the queue. What cannot be read is removed by
  // the library and not shown.
  bool walk(unsigned int dsid, unsigned long after, const std::set<int>& types, const Visit& visit);

  bool has(unsigned long id, unsigned int dsid);

  // Null when there is none.
  EventPtr find(unsigned long id, unsigned int dsid);

  // Throws Failure when it is still there.
  void remove(unsigned long id, unsigned int dsid);

  // Notes what has arrived in a queue.
  void discover(unsigned int dsid);
  void discoverAll();

  // The highest id that was noted, or was there at the start.
  unsigned long highest(unsigned int dsid) { return known(dsid).highest; }

  // Whether there may be more than was noted, because that was forgotten.
  bool isBehind(unsigned int dsid) const { return m_behind.contains(queueOf(dsid)); }

  // What was noted since the last call.
  std::vector<Arrivals> takeArrivals();
  bool hasArrivals() const { return !m_arrivals.empty(); }

  // Notes again what is above these ids, by queue; where none is named, what has arrived since the
  // start.
  void forget(const std::map<unsigned int, unsigned long>& shown);

 private:
  struct Known {
    unsigned long atStart = 0;
    unsigned long highest = 0;
  };

  Known& known(unsigned int dsid);
  void countImportsOfStart();
  bool othersWriteTo(unsigned int dsid) const { return isClustered() || isGlobalQueue(dsid); }
  void discoverBelow(unsigned int dsid, unsigned long end);
  void arrived(unsigned int dsid, EventPtr event);
  void note(unsigned int dsid, EventPtr event);
  bool walkDatabase(unsigned int dsid, unsigned long after, const std::set<int>& types,
                    const Visit& visit);
  std::unique_ptr<EventSystem::Event> nextInDatabase(unsigned long after, unsigned int dsid);
  bool walkService(unsigned int dsid, unsigned long after, const std::set<int>& types,
                   const Visit& visit);
  EventPtr publishedOf(EventSystem::Event& event, unsigned int dsid, unsigned long id) const;
  bool isNext(EventSystem::Event& event, unsigned int dsid, unsigned long after) const;
  EventPtr misfiledAfter(unsigned int dsid, unsigned long after) const;

  Tally& m_tally;
  const std::unique_ptr<QueueReader> m_reader;
  const unsigned long m_highestBefore;  // before the manager took in audit records
  HostQueues m_queues;
  std::map<unsigned int, Known> m_known;
  std::vector<Arrivals> m_arrivals;
  std::set<unsigned int> m_behind;
  unsigned long m_highestOfSelections = 0;  // their ids are drawn from one sequence
};

}  // namespace EventApps

#endif
