// The few figures that a list of measurements is told by.
//
// Thread safety: free functions.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_STATISTICS_H
#define EVENTSYSTEM_BENCH_SYSTEMS_STATISTICS_H

#include <vector>

namespace EventSystemBench {

// The value that `share` (0 to 1) of the values do not exceed, by the nearest rank. `values` is
// not empty.
double percentile(std::vector<double> values, double share);

inline double median(std::vector<double> values) {
  return percentile(std::move(values), 0.5);
}

}  // namespace EventSystemBench

#endif
