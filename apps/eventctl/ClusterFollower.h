// `eventctl consume --follow` at the cluster service. The database is left to other processes once
// the event manager has started; the start and what it copies are not done again. While the service
// does not answer it is asked again and again.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_CLUSTERFOLLOWER_H
#define EVENTSYSTEM_APPS_EVENTCTL_CLUSTERFOLLOWER_H

#include <optional>
#include <string>

#include "apps/common/ClusterQueueReader.h"
#include "apps/eventctl/Consumer.h"
#include "apps/eventctl/StopSignals.h"

namespace EventApps {

class ClusterFollower {
 public:
  // What it is given outlives it.
  ClusterFollower(const GlobalOptions& global, const StopSignals& stop, Consumer& consumer,
                  const EventSystemHost::HostConfiguration& configuration);

  // Begins with a host that is open for writing; returns when a stop is asked for or the limit is
  // reached.
  void run(OpenHost host);

 private:
  void round(WritableQueues& queues);
  bool wait() const;
  void tell(const std::string& failure);

  const GlobalOptions& m_global;
  const StopSignals& m_stop;
  Consumer& m_consumer;
  EventSystemHost::ClusterReader m_service;
  const ClusterQueueReader m_reader;
  std::optional<unsigned long> m_drainedTo;  // the highest id that the queue was drained up to
  bool m_failing = false;
};

}  // namespace EventApps

#endif
