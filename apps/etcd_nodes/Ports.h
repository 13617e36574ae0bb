// Free ports of the loopback interface.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_ETCD_NODES_PORTS_H
#define EVENTSYSTEM_APPS_ETCD_NODES_PORTS_H

#include <netinet/in.h>

#include <vector>

#include "apps/etcd_nodes/Descriptor.h"

namespace EtcdNodes {

sockaddr_in loopback(unsigned short port);

// A socket bound to a port of its own. Throws std::runtime_error.
Descriptor boundSocket();
unsigned short portOf(const Descriptor& socket);

// A port that no other process of ours chooses while this lives, also while its server is down.
struct ClaimedPort {
  unsigned short number;
  Descriptor claim;
};

// Different ports, free a moment ago, and where possible none that the system gives to outgoing
// connections: a server that is started again finds its port free. Throws std::runtime_error.
std::vector<ClaimedPort> freePorts(int count);

// Holds nothing when another has claimed it.
Descriptor claimPort(unsigned short port);

}  // namespace EtcdNodes

#endif
