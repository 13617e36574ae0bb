// The table that a test program prints at its end: what the clients saw under each fault.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_FAULTTABLE_H
#define EVENTSYSTEM_TESTS_CLUSTER_FAULTTABLE_H

#include <string>

#include "tests/cluster/History.h"

namespace EventSystemTest {

// Adds a row, and fails the test when anything was lost, doubled, reordered or came back.
void report(const std::string& fault, const History& history);

}  // namespace EventSystemTest

#endif
