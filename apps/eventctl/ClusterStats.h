// How the cluster is, as `eventctl stats` shows it.
//
// Thread safety: functions that use only their arguments.

#ifndef EVENTSYSTEM_APPS_EVENTCTL_CLUSTERSTATS_H
#define EVENTSYSTEM_APPS_EVENTCTL_CLUSTERSTATS_H

#include "apps/common/Output.h"
#include "host/cluster/ClusterReport.h"

namespace EventApps {

// The members, one a row, and the alarms.
void printCluster(Output& output, const EventSystemHost::ClusterReport& report);

}  // namespace EventApps

#endif
