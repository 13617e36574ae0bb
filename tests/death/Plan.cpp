#include "tests/death/Plan.h"

#include <array>
#include <cmath>

#include "tests/differential/Random.h"

namespace EventSystemTest {
namespace {

constexpr unsigned int kDeaths = 4;
constexpr std::uint64_t kForEver = 100000;  // calls; no life lasts that long

// 1 to `limit`, small ones as likely as large ones.
std::uint64_t anySize(Random& random, double limit) {
  const double part = random.below(1 << 20) / static_cast<double>(1 << 20);
  return static_cast<std::uint64_t>(std::pow(limit, part));
}

void planFileCall(Random& random, LifePlan& life) {
  life.end = LifePlan::End::kDuringFileCall;
  life.moment = static_cast<Moment>(random.below(3));
  if (random.oneIn(4)) {
    life.stage = Stage::kClosing;
    life.fileCall = anySize(random, 40);
  } else {
    life.calls = kForEver;
    life.fileCall = anySize(random, 1500);
  }
  // With one thread and nothing from outside, the same file call is the same instant.
  if (random.oneIn(2)) life.producers = 0;
  if (life.producers == 0) life.auditRowsMeanwhile = false;
}

// Of 16 lives, five end in a file call, four at work, three at any time that the processor spends
// on them, and three while they start or close.
void planEnd(Random& random, LifePlan& life) {
  static constexpr std::array<Stage, 4> kStages = {Stage::kBorn, Stage::kHostOpen,
                                                   Stage::kQueueOpen, Stage::kClosing};
  const unsigned int kind = random.below(16);
  if (kind < 5) {
    planFileCall(random, life);
  } else if (kind < 9) {
    life.end = LifePlan::End::kAfterMessage;
    life.steps = anySize(random, 1200);
    life.calls = kForEver;
    life.delay = std::chrono::microseconds(anySize(random, 1500));
  } else if (kind < 12) {
    life.end = LifePlan::End::kAfterCpuTime;
    life.calls = kForEver;
    life.delay = std::chrono::microseconds(anySize(random, 100000));
  } else {
    life.end = LifePlan::End::kAfterStage;
    life.stage = kStages[kind - 12];
    life.delay = std::chrono::microseconds(anySize(random, 8000));
  }
}

LifePlan planLife(Random& random, std::uint64_t number) {
  static constexpr std::array<unsigned int, 4> kBacklogs = {1, 4, 40, 1000000};
  LifePlan life;
  life.calls = anySize(random, 300);
  life.seed = random.next();
  life.firstNumber = number * 1000000;
  life.producers = random.below(4);
  life.backlog = kBacklogs[random.below(4)];
  life.auditRowsBefore = random.oneIn(2) ? static_cast<unsigned int>(anySize(random, 40)) : 0;
  life.auditRowsMeanwhile = random.oneIn(2);
  return life;
}

}  // namespace

std::string LifePlan::text() const {
  const std::string producing = std::to_string(producers) + " producers, ";
  const std::string at = "stage " + std::to_string(static_cast<int>(stage));
  const std::string later = std::to_string(delay.count()) + " us";
  switch (end) {
    case End::kClose:
      return producing + "closed after " + std::to_string(calls) + " calls";
    case End::kAfterStage:
      return producing + "killed after " + at + " and " + later;
    case End::kAfterMessage:
      return producing + "killed after " + std::to_string(steps) + " steps and " + later;
    case End::kAfterCpuTime:
      return producing + "killed after processor time of " + later;
    case End::kDuringFileCall:
      break;
  }
  return producing + "died in file call " + std::to_string(fileCall) + " from " + at + " (moment " +
         std::to_string(static_cast<int>(moment)) + ")";
}

RoundPlan planRound(std::uint64_t seed, std::uint64_t round) {
  static constexpr std::array<const char*, 3> kDurabilities = {"strict", "group", "relaxed"};
  Random random(seed, round);
  RoundPlan plan;
  plan.durability = kDurabilities[round % 3];
  for (std::uint64_t number = 1; number <= kDeaths; ++number) {
    plan.lives.push_back(planLife(random, number));
    planEnd(random, plan.lives.back());
  }
  plan.lives.push_back(planLife(random, kDeaths + 1));
  plan.lives.back().calls = 20;
  return plan;
}

}  // namespace EventSystemTest
