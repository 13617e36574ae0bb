// What is known of the queues of a home, and in cluster mode of the cluster.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_STATISTICS_H
#define EVENTSYSTEM_APPS_EVENTCTL_STATISTICS_H

#include <ctime>
#include <optional>
#include <string>

#include "apps/common/QueueFigures.h"
#include "host/cluster/ClusterReport.h"

namespace EventApps {

struct Statistics {
  std::string home;  // as the next: empty when a daemon knows no more than its cluster
  std::string database;
  int countLimit = 0;  // of the database; 0: none
  int ageLimitDays = 0;
  std::optional<Figures> figures;  // nothing when the cluster service cannot be read
  std::optional<EventSystemHost::ClusterReport> cluster;
  std::time_t time = std::time(nullptr);  // when the queues were counted
};

}  // namespace EventApps

#endif
