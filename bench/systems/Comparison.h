// All systems at all sizes and numbers of workers, in turns, and what came out.
//
// Thread safety: for the main thread.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_COMPARISON_H
#define EVENTSYSTEM_BENCH_SYSTEMS_COMPARISON_H

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/systems/Systems.h"
#include "bench/systems/Workload.h"

namespace EventSystemBench {

struct ComparisonPlan {
  std::filesystem::path directory;    // each measurement gets a directory of its own in it
  int rounds = 0;                     // every cell is measured so many times, a minute apart
  std::chrono::milliseconds time{0};  // of one operation in one round
  std::chrono::seconds limit{0};      // after this much, no further cell is begun
  std::string only;                   // systems whose name has this text in it
};

// One operation of one system at one size and number of workers, over all rounds.
struct OperationFigures {
  std::vector<double> perSecond;  // of each round
  std::vector<double> latencies;  // seconds, of every call
};

struct Cell {
  std::size_t system;  // index into Comparison::systems
  std::size_t textBytes;
  std::size_t workers;
  std::string notMeasured;  // why there are no figures, where there are none
  std::array<OperationFigures, kOperations> operations;
};

struct Comparison {
  std::vector<SystemEntry> systems;
  std::vector<std::string> refusals;  // of each: why it was asked no more; empty: it was
  std::vector<Cell> cells;
  std::vector<double> flushes;  // seconds of fdatasync(), measured before every cell
  double disturbance = 0;       // share of the processors' time that other programs took
};

// Tells on standard error how far it is. A system that fails is asked no more; the figures that it
// has by then stay.
Comparison compare(const ComparisonPlan& plan);

}  // namespace EventSystemBench

#endif
