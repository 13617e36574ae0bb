// The host, and on top of it the event manager, opened for one command.
//
// Thread safety: one session at a time, used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_SESSION_H
#define EVENTSYSTEM_APPS_EVENTCTL_SESSION_H

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "EventSystem/EventManager.h"
#include "apps/eventctl/CommandLine.h"
#include "apps/eventctl/EventLimits.h"
#include "host/Host.h"

namespace EventCtl {

// The options of a host as the command line asks for it.
EventSystemHost::HostOptions hostOptions(const GlobalOptions& options,
                                         EventSystemHost::Access access);

// Keeps in mind what damage a host met, before it closes the host.
struct HostCloser {
  void operator()(EventSystemHost::Host* host) const;
};
using OpenHost = std::unique_ptr<EventSystemHost::Host, HostCloser>;

// A running host. While another process holds the database it tries again until `wait` is over,
// or `stop` says so, then passes on DatabaseBusy.
using StopAsked = std::function<bool()>;
OpenHost openHost(const EventSystemHost::HostOptions& options, std::chrono::milliseconds wait,
                  const StopAsked& stop = {});

// What the hosts of this process, the open one included, have found damaged in the database; empty
// when nothing. A command that met damage fails, and never says that a queue is empty.
std::string damageMet();

// Throws CommandError unless `dsid` names the global queue or a data selection that exists. Needs
// a running host.
void requireDataSelection(unsigned int dsid);

// Whether events with this dsid go to the queue that is not of a data selection.
constexpr bool isGlobalQueue(unsigned int dsid) {
  return dsid == 0 || dsid == 2;
}

// "the global queue" or "the queue of data selection N".
std::string queueName(unsigned int dsid);

// The queues, written through the event manager. In the database this process is their only writer
// until the session is destroyed.
class QueueSession {
 public:
  explicit QueueSession(OpenHost host);
  // With the dsid of the options checked.
  explicit QueueSession(const GlobalOptions& options);

  EventSystemHost::Host& host() { return *m_host; }
  EventSystem::EventManager& manager() { return m_manager; }

  // Whether the queues are at the cluster service.
  bool isClustered() const { return m_host->cluster() != nullptr; }

  // Cluster mode: frees the database for other processes and goes on at the service. What a start
  // of the manager does is not done again. Throws HostError; the session is then of no use.
  void leaveDatabase(const GlobalOptions& options);

  // Stores an event: 0 and its id, or the manager's result.
  int store(EventSystem::Event& event, unsigned int dsid, unsigned long& id);

  // The first event after `afterId`, or null at the end of the queue. Throws CommandError.
  std::unique_ptr<EventSystem::Event> next(unsigned long afterId, unsigned int dsid);

  // Removes an event and makes sure that it is gone. Throws CommandError.
  void remove(unsigned long id, unsigned int dsid);

  // Waits until everything done so far survives power loss. Throws CommandError.
  void makeDurable();

  // Where the next event of a queue is likely to go.
  Destination destination(unsigned int dsid) const;

  // Why the last call of the manager failed: what the cluster service said, or where the log is.
  std::string whyFailed() const;

  std::string limitsFile() const;

 private:
  // "the log says why: FILE", for failures whose reason only the log knows.
  std::string seeLog() const;

  OpenHost m_host;
  EventSystem::EventManager m_manager;
};

}  // namespace EventCtl

#endif
