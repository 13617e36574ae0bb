// What the hosts and those who watch them agree on.
//
// Thread safety: constants.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_CHAOS_QUEUES_H
#define EVENTSYSTEM_TESTS_CLUSTER_CHAOS_QUEUES_H

#include <array>

namespace EventSystemTest {

// The data selections of the queues with traffic; the global queue has half of it.
constexpr std::array<unsigned int, 4> kChaosQueues = {0, 4, 0, 7};

// The exit status of a host that was not let in: there was no majority.
constexpr int kRefusedStart = 3;

}  // namespace EventSystemTest

#endif
