// The host, opened for one command.
//
// Thread safety: one host at a time, used by the main thread.

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

// A running host that reads only, and one that writes.
OpenHost openReader(const GlobalOptions& options);
OpenHost openWriter(const GlobalOptions& options);

}  // namespace EventApps

#endif
