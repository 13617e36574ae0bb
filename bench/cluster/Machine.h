// What was measured on, in words.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_BENCH_CLUSTER_MACHINE_H
#define EVENTSYSTEM_BENCH_CLUSTER_MACHINE_H

#include <filesystem>
#include <string>

namespace Bench {

// Processor and cores, memory, the file system of `directory`, and etcd's version.
std::string describeMachine(const std::filesystem::path& directory);

}  // namespace Bench

#endif
