// The queues of a running host, written through the event manager.
//
// Thread safety: one thread at a time.

#ifndef EVENTSYSTEM_APPS_COMMON_HOSTQUEUES_H
#define EVENTSYSTEM_APPS_COMMON_HOSTQUEUES_H

#include <memory>
#include <string>

#include "EventSystem/EventManager.h"
#include "apps/common/EventLimits.h"
#include "host/Host.h"

namespace EventApps {

// Throws Failure unless `dsid` names the global queue or a data selection that exists. Needs a
// running host.
void requireDataSelection(unsigned int dsid);

// Throws Failure when a part of the database could not be read: what an answer lacks may be on that
// part. To be called after the reading that the answer rests on.
void requireNoDamage(const EventSystemHost::Host& host);

// In the database this process is their only writer for as long as the host lives.
class HostQueues {
 public:
  // Builds the event manager, which repairs the tables and takes in audit records. `host` outlives
  // it, or is replaced.
  explicit HostQueues(EventSystemHost::Host& host) : m_host(&host) {}

  // Goes on with another host, without what a start of the manager does.
  void moveTo(EventSystemHost::Host& host) { m_host = &host; }

  EventSystemHost::Host& host() const { return *m_host; }
  EventSystem::EventManager& manager() { return m_manager; }

  // Whether the queues are at the cluster service.
  bool isClustered() const { return m_host->cluster() != nullptr; }

  // Stores an event: 0 and its id, or the manager's result.
  int store(EventSystem::Event& event, unsigned int dsid, unsigned long& id);

  // The first event after `afterId`, or null at the end of the queue. Throws Failure.
  std::unique_ptr<EventSystem::Event> next(unsigned long afterId, unsigned int dsid);

  // Removes an event and makes sure that it is gone. Throws Failure.
  void remove(unsigned long id, unsigned int dsid);

  // Waits until everything done so far survives power loss. Throws Failure.
  void makeDurable();

  // Where the next event of a queue is likely to go.
  Destination destination(unsigned int dsid) const;

  // Why the last call of the manager failed: what the cluster service said, that the disk is full,
  // or where the log is.
  std::string whyFailed() const;
  // Whether it was that the cluster has no majority.
  bool lacksMajority() const { return isClustered() && m_host->lastClusterCall().lacksMajority; }
  // Whether what it was to change may be changed all the same.
  bool isOpen() const { return isClustered() && m_host->lastClusterCall().open; }

  std::string limitsFile() const;

 private:
  // Throws what the last call of the manager has failed in, with the reason.
  [[noreturn]] void fail(const std::string& what) const;
  // "the log says why: FILE", for failures whose reason only the log knows.
  std::string seeLog() const;

  EventSystemHost::Host* m_host;
  EventSystem::EventManager m_manager;
};

}  // namespace EventApps

#endif
