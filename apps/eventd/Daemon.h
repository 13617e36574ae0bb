// The daemon: queues, API and server, put together, run and taken apart in the right order.
//
// Thread safety: the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_DAEMON_H
#define EVENTSYSTEM_APPS_EVENTD_DAEMON_H

#include <memory>
#include <string>
#include <vector>

#include "apps/eventd/Configuration.h"
#include "host/Host.h"

namespace EventApps {

class Daemon {
 public:
  // Opens the home, takes in what off-line services left, and listens; `sockets` are listening
  // already and belong to the daemon from now on. Throws Failure, HostError and ServerError, in
  // words for the operator.
  Daemon(const Configuration& configuration, const EventSystemHost::HostOptions& options,
         const std::vector<int>& sockets);

  // Finishes what was accepted: requests in work are answered, waiting readers are told that there
  // is nothing, everything acknowledged survives power loss.
  ~Daemon();

  Daemon(const Daemon&) = delete;
  Daemon& operator=(const Daemon&) = delete;

  // Takes tokens and TLS certificates as they are now. What cannot be used is logged, and stays as
  // it was.
  void reload();

  // For one thread that looks now and then: whether the queues get on with their work.
  bool makesProgress();

  // Where it listens, for people.
  std::string addresses() const;

 private:
  class Parts;
  std::unique_ptr<Parts> m_parts;
};

}  // namespace EventApps

#endif
