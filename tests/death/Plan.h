// What a round is to be, as its seed and number have it: a home, and the lives that worker
// processes lead on it one after the other, each with its end.
//
// Thread safety: plain values.

#ifndef EVENTSYSTEM_TESTS_DEATH_PLAN_H
#define EVENTSYSTEM_TESTS_DEATH_PLAN_H

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/death/FileCalls.h"
#include "tests/death/Message.h"

namespace EventSystemTest {

struct LifePlan {
  enum class End {
    kClose,          // no death: it closes the queue after `calls`
    kAfterStage,     // killed `delay` after it has come to `stage`
    kAfterMessage,   // killed `delay` after the driver was told of so many `steps`
    kAfterCpuTime,   // killed when it has used `delay` of processor time
    kDuringFileCall  // dies in the `fileCall`-th file call from `stage` on
  };

  std::uint64_t seed = 0;
  std::uint64_t firstNumber = 0;  // of the events that it makes
  unsigned int producers = 0;     // threads beside a consumer; 0: one thread does everything
  unsigned int backlog = 0;       // how many events producers let stand unconsumed
  unsigned int auditRowsBefore = 0;
  bool auditRowsMeanwhile = false;

  End end = End::kClose;
  Stage stage = Stage::kBorn;
  std::chrono::microseconds delay{};
  std::uint64_t steps = 0;  // calls begun and calls acknowledged
  std::uint64_t calls = 0;  // acknowledged
  std::uint64_t fileCall = 0;
  Moment moment = Moment::kBefore;

  std::string text() const;
};

struct RoundPlan {
  std::string durability;
  std::vector<LifePlan> lives;  // the last one closes the queue
};

RoundPlan planRound(std::uint64_t seed, std::uint64_t round);

}  // namespace EventSystemTest

#endif
