// The process that dies: it holds the library and the reference host on a home, tells what is in
// the queues and what a check finds, then adds, consumes and checks until its end.
//
// Thread safety: for the one thread of a forked process.

#ifndef EVENTSYSTEM_TESTS_DEATH_WORKER_H
#define EVENTSYSTEM_TESTS_DEATH_WORKER_H

#include <array>
#include <filesystem>

#include "tests/death/Plan.h"

namespace EventSystemTest {

// The queues by the dsids that a worker uses: two names of the global one, two data selections.
constexpr std::array<unsigned int, 4> kDsids = {0, 2, 5, 7};

// 0 for both names of the global queue.
constexpr std::uint32_t queueOf(unsigned int dsid) {
  return dsid == 2 ? 0 : dsid;
}

// Does not return where the plan has it die. `output`: where its Messages go.
void runWorker(const std::filesystem::path& home, const LifePlan& plan, int output);

}  // namespace EventSystemTest

#endif
