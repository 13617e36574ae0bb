// What the figures were measured on.
//
// Thread safety: free functions, for the main thread.

#ifndef EVENTSYSTEM_BENCH_SYSTEMS_MACHINE_H
#define EVENTSYSTEM_BENCH_SYSTEMS_MACHINE_H

#include <filesystem>
#include <string>
#include <vector>

namespace EventSystemBench {

struct Machine {
  std::string processor;
  unsigned int cores;
  std::string kernel;
  std::string fileSystem;  // its type, and the device it is on
  double load;             // of the last minute
};

Machine thisMachine(const std::filesystem::path& directory);

// Whether what is written there never gets to a disk.
bool isInMemory(const std::filesystem::path& directory);

// The seconds that fdatasync() takes after 4 KiB were written over, each of `times` times.
std::vector<double> flushTimes(const std::filesystem::path& directory, int times);

// How busy other programs keep the processors while this one and its servers measure.
class Disturbance {
 public:
  Disturbance();

  // The share of all processors' time, 0 to 1, that others have used since the construction.
  // Servers count as ours once they have ended.
  double byOthers() const;

 private:
  double m_all;
  double m_others;
};

}  // namespace EventSystemBench

#endif
