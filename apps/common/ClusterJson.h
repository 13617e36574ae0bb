// How the cluster is, as JSON.
//
// Thread safety: a pure function of its argument.

#ifndef EVENTSYSTEM_APPS_COMMON_CLUSTERJSON_H
#define EVENTSYSTEM_APPS_COMMON_CLUSTERJSON_H

#include <nlohmann/json_fwd.hpp>

#include "host/cluster/ClusterReport.h"

namespace EventApps {

nlohmann::ordered_json jsonOfCluster(const EventSystemHost::ClusterReport& report);

}  // namespace EventApps

#endif
