// The systems in the comparison, each with the settings that it is measured with.
//
// Thread safety: the catalogue is constant; systems are started by the main thread.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_SYSTEMS_H
#define EVENTSYSTEM_BENCH_SYSTEMS_SYSTEMS_H

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/systems/Queue.h"

namespace EventSystemBench {

enum class Promise {
  kDurable,  // what has returned survives power loss
  kRelaxed   // power loss may take the newest calls
};

struct SystemEntry {
  std::string name;
  Promise promise;
  std::string settings;  // what is set, and what it means where the name does not say it
  std::string produce;   // what each operation is made of
  std::string read;
  std::string remove;

  // Starts it with its data in an existing, empty directory of its own.
  std::function<std::unique_ptr<System>(const std::filesystem::path& directory)> start;
};

// In the order of the report; this library's entries come first within each promise.
std::vector<SystemEntry> allSystems();

// One function for each file of this folder.
std::vector<SystemEntry> eventSystemEntries();
std::vector<SystemEntry> sqliteEntries();
std::vector<SystemEntry> redisEntries();
std::vector<SystemEntry> postgresEntries();
std::vector<SystemEntry> beanstalkEntries();
std::vector<SystemEntry> natsEntries();

}  // namespace EventSystemBench

#endif
