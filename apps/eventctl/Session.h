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

#include "apps/common/HostQueues.h"
#include "apps/eventctl/CommandLine.h"
#include "host/Host.h"

namespace EventApps {

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

// A running host that reads only.
OpenHost openReader(const GlobalOptions& options);

// The queues, written through the event manager. In the database this process is their only writer
// until the session is destroyed.
class QueueSession {
 public:
  explicit QueueSession(OpenHost host);
  // With the dsid of the options checked.
  explicit QueueSession(const GlobalOptions& options);

  EventSystemHost::Host& host() { return *m_host; }
  HostQueues& queues() { return m_queues; }

  // Cluster mode: frees the database for other processes and goes on at the service. What a start
  // of the manager does is not done again. Throws HostError; the session is then of no use.
  void leaveDatabase(const GlobalOptions& options);

 private:
  OpenHost m_host;
  HostQueues m_queues;
};

}  // namespace EventApps

#endif
