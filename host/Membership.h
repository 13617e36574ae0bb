// Who this host is at the cluster service.
//
// Thread safety: called by the thread that starts the host.

#ifndef EVENTSYSTEM_HOST_MEMBERSHIP_H
#define EVENTSYSTEM_HOST_MEMBERSHIP_H

#include "host/cluster/ClusterService.h"
#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// The identity is kept in a file beside the database, because it is the rows that must not be taken
// for another's; it is drawn when there is none. Throws std::runtime_error.
ClusterMembership membershipOf(const HostConfiguration& configuration);

}  // namespace EventSystemHost

#endif
