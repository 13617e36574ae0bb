// What store_tables prints.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_BENCH_STORES_STORETABLES_H
#define EVENTSYSTEM_BENCH_STORES_STORETABLES_H

#include <filesystem>
#include <string>

namespace EventSystemBench {

// Start-up with 10^4 rows and ten times as many up to `largest`, beside a bare scan; what one call
// costs afterwards; memory for each id.
void printStartup(const char* program, long largest);

// One life of a queue over a home directory, in a process of its own; prints its figures for
// printStartup().
void measureLife(const std::filesystem::path& home);

// Does nothing but one kind of call (new, next or delete), for a profiler.
void repeatCall(const std::string& call, int count);

// Throughput of threads that wait until each of their events is durable.
void printDurability(int threads, double seconds);

}  // namespace EventSystemBench

#endif
