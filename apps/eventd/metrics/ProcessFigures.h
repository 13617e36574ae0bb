// What this process takes of the machine.
//
// Thread safety: any thread.

#ifndef EVENTSYSTEM_APPS_EVENTD_METRICS_PROCESSFIGURES_H
#define EVENTSYSTEM_APPS_EVENTD_METRICS_PROCESSFIGURES_H

#include <cstdint>

namespace EventApps {

// 0 for what the system does not tell.
struct ProcessFigures {
  double cpuSeconds = 0;  // of all its threads
  std::uint64_t residentBytes = 0;
  std::uint64_t virtualBytes = 0;
  std::uint64_t openFiles = 0;
  std::uint64_t mostOpenFiles = 0;
  std::uint64_t threads = 0;
};

ProcessFigures processFigures();

// When it was started, in seconds since 1970.
double processStartTime();

}  // namespace EventApps

#endif
