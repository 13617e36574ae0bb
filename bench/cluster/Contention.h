// Several processes that write to one queue at the same time, each with a host of its own.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_CONTENTION_H
#define EVENTSYSTEM_BENCH_CLUSTER_CONTENTION_H

#include <filesystem>
#include <string>
#include <vector>

#include "bench/cluster/Samples.h"

namespace Bench {

struct Writer {
  bool bare = false;
  std::vector<std::string> endpoints;
  int events = 0;
  std::filesystem::path result;  // file for its samples
};

// What one of the processes does: says that it is ready, waits for the end of its standard input,
// and writes.
void runWriter(const Writer& writer);

// Starts that many of them, `writer.result` being a directory: the times of all their newEvent.
Samples timeWriters(int processes, const Writer& writer);

}  // namespace Bench

#endif
