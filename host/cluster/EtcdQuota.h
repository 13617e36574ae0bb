// The quota of a member's database. etcd 3.4 tells it only among its metrics, over HTTP.
//
// Thread safety: functions without shared state.

#ifndef EVENTSYSTEM_HOST_CLUSTER_ETCDQUOTA_H
#define EVENTSYSTEM_HOST_CLUSTER_ETCDQUOTA_H

#include <cstdint>
#include <string>

#include "host/cluster/ClusterConfiguration.h"

namespace EventSystemHost {

// Bytes; 0 when the member does not tell within two seconds.
std::int64_t readQuota(const ClusterConfiguration& configuration, const std::string& endpoint);

// The value of the quota in a text of metrics; 0 when it is not there.
std::int64_t quotaIn(const std::string& metrics);

}  // namespace EventSystemHost

#endif
