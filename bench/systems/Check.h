// Whether the parts of the comparison do what their figures are about.
//
// Thread safety: for the main thread.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_CHECK_H
#define EVENTSYSTEM_BENCH_SYSTEMS_CHECK_H

#include <filesystem>

namespace EventSystemBench {

// Starts every system and has it produce three texts, read them in order, delete them and be
// empty; a line for each on standard output. Returns how many failed.
int checkAll(const std::filesystem::path& directory);

}  // namespace EventSystemBench

#endif
