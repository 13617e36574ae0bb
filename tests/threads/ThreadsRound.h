// A round of many threads on the queues of one process over the reference host: its life from the
// first event to the next start, and what is right about its queues at the end.
//
// Thread safety: one round at a time in a process.

#ifndef EVENTSYSTEM_TESTS_THREADS_THREADSROUND_H
#define EVENTSYSTEM_TESTS_THREADS_THREADSROUND_H

#include <string>
#include <vector>

#include "tests/threads/ThreadActor.h"

namespace EventSystemTest {

// Runs it in a home of its own. The result has counts and failures of all threads, and what the
// queues lost, doubled or mixed up by then, or at the next start.
Ledger runThreads(const RoundPlan& plan);

// The plan of round `number` of a seed: durabilities, limits and the audit import in turn, all over
// the database.
RoundPlan databasePlan(std::uint64_t seed, std::uint64_t number);

// The same in cluster mode, at these endpoints, with queues of the round's own.
RoundPlan clusterPlan(std::uint64_t seed, std::uint64_t number, const std::string& endpoints);

}  // namespace EventSystemTest

#endif
