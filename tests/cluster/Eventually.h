// Waits for what other threads and processes do, for a minute at most.
//
// Thread safety: as the condition.

#ifndef EVENTSYSTEM_TESTS_CLUSTER_EVENTUALLY_H
#define EVENTSYSTEM_TESTS_CLUSTER_EVENTUALLY_H

#include <chrono>
#include <thread>

namespace EventSystemTest {

// False when the condition has not come true in time.
template <class Condition>
bool eventually(const Condition& condition) {
  constexpr std::chrono::minutes kPatience{1};
  constexpr std::chrono::milliseconds kLook{5};
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(kLook);
  }
  return true;
}

}  // namespace EventSystemTest

#endif
