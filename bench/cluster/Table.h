// What is printed: a line for each measurement, the library beside the bare etcd calls.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_TABLE_H
#define EVENTSYSTEM_BENCH_CLUSTER_TABLE_H

#include <string>

#include "bench/cluster/Samples.h"

namespace Bench {

struct Comparison {
  Samples library;
  Samples bare;
};

void printHead();
void printRow(const std::string& what, const Comparison& measured);

}  // namespace Bench

#endif
