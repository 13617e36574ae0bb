// The work that every system gets: workers produce for a while, then read what was produced, then
// delete what they have read; each worker is a thread with a queue of its own. Where a queue can be
// walked, reading starts over until its time is over, so that a short queue is read as long as a
// long one.
//
// Thread safety: none; the workers are this file's own.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_WORKLOAD_H
#define EVENTSYSTEM_BENCH_SYSTEMS_WORKLOAD_H

#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "bench/systems/Queue.h"

namespace EventSystemBench {

struct Workload {
  std::size_t textBytes;  // of one event
  std::size_t workers;
  std::chrono::milliseconds time;  // of each operation, at most
  std::size_t events;              // produced at most
};

struct Timing {
  double seconds = 0;             // from the first call to the end of the last
  std::vector<double> latencies;  // of each call, in seconds
};

enum Operation { kProduce, kRead, kDelete, kOperations };

using Timings = std::array<Timing, kOperations>;

Timings run(System& system, const Workload& workload);

// An audit event's string of exactly that size, the id not counted in.
std::string eventText(std::size_t bytes);

}  // namespace EventSystemBench

#endif
