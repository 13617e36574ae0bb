#include "EventSystem/platform/HostClock.h"

#include <ctime>

namespace {
constexpr long kNanosecondsPerSecond = 1'000'000'000;
}

long gethrtime(void) {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

double hrtime2seconds(long difference) {
  return static_cast<double>(difference) / static_cast<double>(kNanosecondsPerSecond);
}
