// The process that holds the queue dies at any instant, in every durability.

#include <gtest/gtest.h>

#include "tests/death/DeathRound.h"

namespace EventSystemTest {
namespace {

constexpr std::uint64_t kSeed = 20260;
constexpr std::uint64_t kRounds = 7;

// The rounds of one durability: every third.
class ProcessDeath : public testing::TestWithParam<std::uint64_t> {};

TEST_P(ProcessDeath, KeepsWhatWasAcknowledgedAndRepeatsNothing) {
  for (std::uint64_t i = 0; i < kRounds; ++i) {
    const std::uint64_t number = GetParam() + 3 * i;
    DeathRound round(kSeed, number);
    round.run();
    for (const std::string& what : round.failures()) {
      ADD_FAILURE() << what << "\nprove_death --seed " << kSeed << " --round " << number;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EachDurability, ProcessDeath, testing::Range<std::uint64_t>(0, 3),
                         [](const auto& each) { return planRound(kSeed, each.param).durability; });

}  // namespace
}  // namespace EventSystemTest
