// Times of pieces of work, and the one in the middle.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_BENCH_STORES_TIMING_H
#define EVENTSYSTEM_BENCH_STORES_TIMING_H

#include <algorithm>
#include <ctime>
#include <vector>

namespace EventSystemBench {

// kCpu counts what all threads of the process compute, and so does not see who else uses the
// machine; kWall counts waiting, too.
enum class Time { kCpu, kWall };

inline double now(Time time) {
  timespec reading{};
  clock_gettime(time == Time::kCpu ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &reading);
  return static_cast<double>(reading.tv_sec) + static_cast<double>(reading.tv_nsec) * 1e-9;
}

template <class Work>
double secondsOf(Time time, const Work& work) {
  const double start = now(time);
  work();
  return now(time) - start;
}

inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace EventSystemBench

#endif
