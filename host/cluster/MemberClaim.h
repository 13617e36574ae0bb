// Keeps two homes from being the same member of a queue: the service knows a member's copies by its
// name, so the events of one would be taken for those of the other.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_HOST_CLUSTER_MEMBERCLAIM_H
#define EVENTSYSTEM_HOST_CLUSTER_MEMBERCLAIM_H

#include <string>

#include "host/cluster/EtcdChannel.h"
#include "host/cluster/MemberHome.h"

namespace EventSystemHost {

// Takes the name for this home, or makes sure that it has it. Refused when another home has it.
EtcdResult claimMember(EtcdChannel& channel, const std::string& queue, const std::string& member,
                       const MemberHome& home, const Deadline& deadline);

}  // namespace EventSystemHost

#endif
