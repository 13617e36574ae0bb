// Two ways of doing the same work, measured in turns, so that whatever else the machine does meets
// both of them alike.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_STORES_TURNS_H
#define EVENTSYSTEM_BENCH_STORES_TURNS_H

#include <benchmark/benchmark.h>

#include <vector>

#include "bench/stores/Timing.h"

namespace EventSystemBench {

class Turns {
 public:
  // Each turn does `calls` calls.
  explicit Turns(int calls, Time time = Time::kCpu) : m_calls(calls), m_time(time) {}

  template <class Ours, class Bare>
  void run(benchmark::State& state, const Ours& ours, const Bare& bare) {
    m_ours.push_back(secondsOf(m_time, ours) / m_calls);
    m_bare.push_back(secondsOf(m_time, bare) / m_calls);
    state.SetIterationTime(m_ours.back());
  }

  // Counters: medians in nanoseconds for one call, how many times the bare way it is, and how much
  // above it.
  void report(benchmark::State& state) const {
    const double ours = median(m_ours) * 1e9;
    const double bare = median(m_bare) * 1e9;
    state.counters["ours_ns"] = ours;
    state.counters["bare_ns"] = bare;
    state.counters["above_ns"] = ours - bare;
    state.counters["ratio"] = ours / bare;
  }

 private:
  int m_calls;
  Time m_time;
  std::vector<double> m_ours;
  std::vector<double> m_bare;
};

}  // namespace EventSystemBench

#endif
