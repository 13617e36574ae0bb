// The log of the tests: lines are kept in memory.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_LOGCAPTURE_H
#define EVENTSYSTEM_TESTS_CLUSTER_LOGCAPTURE_H

#include <string>

namespace EventSystemTest {

// Forgets what was logged before.
void clearLog();

// All lines since, each "error 4: text" and a line feed.
std::string logged();

}  // namespace EventSystemTest

#endif
