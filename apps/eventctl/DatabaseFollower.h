// `eventctl consume --follow` on a database: rounds of draining; between them other processes have
// the database.
//
// Thread safety: none; used by the main thread.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_DATABASEFOLLOWER_H
#define EVENTSYSTEM_APPS_EVENTCTL_DATABASEFOLLOWER_H

#include <filesystem>
#include <string>

#include "apps/eventctl/ChangeWatch.h"
#include "apps/eventctl/Consumer.h"
#include "apps/eventctl/StopSignals.h"

namespace EventApps {

class DatabaseFollower {
 public:
  // What it is given outlives it.
  DatabaseFollower(const GlobalOptions& global, const StopSignals& stop, Consumer& consumer,
                   const EventSystemHost::HostConfiguration& configuration);

  // Begins with a host that is open for writing; returns when a stop is asked for, the limit is
  // reached or the database is damaged.
  void run(OpenHost host);

 private:
  bool drainRound(OpenHost host);
  bool waitForMore();
  bool hasMore() const;
  OpenHost openForRound();

  const GlobalOptions& m_global;
  const StopSignals& m_stop;
  Consumer& m_consumer;
  const std::filesystem::path m_auditFile;
  std::string m_auditBefore;
  ChangeWatch m_watch;
  unsigned long m_leftOver = 0;
};

}  // namespace EventApps

#endif
