// Asks each endpoint by itself how it is.
//
// Thread safety: functions without shared state.

#ifndef EVENTSYSTEM_HOST_CLUSTER_MEMBERPROBE_H
#define EVENTSYSTEM_HOST_CLUSTER_MEMBERPROBE_H

#include <vector>

#include "host/cluster/ClusterConfiguration.h"
#include "host/cluster/ClusterReport.h"

namespace EventSystemHost {

class EtcdChannel;

// All endpoints at once; takes no longer than a part of one call's deadline.
std::vector<ClusterMember> probeMembers(const ClusterConfiguration& configuration);

// Throws std::runtime_error when no endpoint answers or they belong to different clusters; warns
// of each that does not answer.
void checkMembers(const ClusterConfiguration& configuration);

// The members, what etcd calls them, and its alarms. Takes two seconds at most, or a little more
// where members are slow to tell their quota.
ClusterReport makeReport(const ClusterConfiguration& configuration, EtcdChannel& channel);

}  // namespace EventSystemHost

#endif
