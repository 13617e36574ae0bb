// Puts the keys of a queue into etcd many at a time, past the client.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_RAWQUEUE_H
#define EVENTSYSTEM_TESTS_CLUSTER_RAWQUEUE_H

#include <string>

#include "host/cluster/ClusterConfiguration.h"

namespace EventSystemTest {

// Events 1 to `events` of the global queue. Throws std::runtime_error.
void fillQueue(const EventSystemHost::ClusterConfiguration& configuration, const std::string& queue,
               unsigned long events);

// What is kept of the copies of a member's events 1 to `markers`. Throws std::runtime_error.
void fillMarkers(const EventSystemHost::ClusterConfiguration& configuration,
                 const std::string& queue, const std::string& member, unsigned long markers);

}  // namespace EventSystemTest

#endif
