// The measurements, each on etcd servers of its own, printed line by line.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_MEASUREMENTS_H
#define EVENTSYSTEM_BENCH_CLUSTER_MEASUREMENTS_H

#include <filesystem>

namespace Bench {

struct Extent {
  std::filesystem::path directory;  // for the data of etcd
  int rounds = 6;
  int events = 200;            // in each round
  unsigned long held = 50000;  // in the long queue
};

// newEvent, getNextEvent and deleteEvent on this many etcd nodes.
void measureCalls(const Extent& extent, int nodes);

// newEvent from one process and from four at once.
void measureWriters(const Extent& extent, int nodes);

// getNextEvent on a short queue, on a long one, and behind many deleted events.
void measureLengths(const Extent& extent);

}  // namespace Bench

#endif
