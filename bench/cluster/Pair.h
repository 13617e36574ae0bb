// The library and the bare etcd calls on one etcd cluster, measured in turns.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_PAIR_H
#define EVENTSYSTEM_BENCH_CLUSTER_PAIR_H

#include <functional>
#include <string>
#include <vector>

#include "bench/cluster/BareQueue.h"
#include "bench/cluster/LibraryQueue.h"
#include "bench/cluster/Table.h"

namespace Bench {

constexpr char kLibraryQueue[] = "library";
constexpr char kBareQueue[] = "bare-it";  // as long a name

class Pair {
 public:
  explicit Pair(const std::vector<std::string>& to)
      : endpoints(to), library(to, kLibraryQueue), bare(to, kBareQueue, sampleText()) {}

  const std::vector<std::string> endpoints;
  LibraryQueue library;
  BareQueue bare;
};

// Does it to both in rounds, the other one first in every second round, so that what changes on the
// machine meanwhile falls on both.
void inTurns(int rounds, const std::function<void()>& library, const std::function<void()>& bare);

// The three calls on a queue that is filled, read upwards and emptied in each round.
struct CallTimes {
  Comparison add;
  Comparison next;
  Comparison remove;
};
CallTimes timeCalls(Pair& pair, int rounds, int events);

// Two ways to find the first event after each of these ids.
using Find = std::function<void(unsigned long afterId)>;
Comparison timeFinds(int rounds, const std::vector<unsigned long>& afterIds, const Find& library,
                     const Find& bare);

}  // namespace Bench

#endif
