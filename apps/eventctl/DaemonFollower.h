// `eventctl consume --follow` at a daemon. While the daemon does not answer it is asked again and
// again.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DAEMONFOLLOWER_H
#define EVENTSYSTEM_APPS_EVENTCTL_DAEMONFOLLOWER_H

#include <string>

#include "apps/eventctl/Consumer.h"
#include "apps/eventctl/DaemonQueues.h"
#include "apps/eventctl/Listener.h"
#include "apps/eventctl/StopSignals.h"

namespace EventApps {

class DaemonFollower {
 public:
  // What it is given outlives it.
  DaemonFollower(const GlobalOptions& global, const StopSignals& stop, Consumer& consumer,
                 const DaemonAddress& address);

  // Returns when a stop is asked for or the limit is reached.
  void run();

 private:
  void round();
  void tell(const std::string& failure);
  bool waitForMore();

  const GlobalOptions& m_global;
  const StopSignals& m_stop;
  Consumer& m_consumer;
  DaemonQueues m_queues;
  Listener m_listener;
  bool m_failing = false;
};

}  // namespace EventApps

#endif
