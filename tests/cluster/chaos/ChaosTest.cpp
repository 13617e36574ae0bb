#include <gtest/gtest.h>

#include "tests/cluster/chaos/Chaos.h"

namespace EventSystemTest {
namespace {

// Nodes killed and stopped, connections cut in each way, a host killed and one that copies.
constexpr std::uint64_t kEpoch = 243;

TEST(Chaos, OfOneEpochLosesAndDoublesNothing) {
  ScheduleLimits limits;
  limits.storms = 1;
  limits.storm = std::chrono::milliseconds(5000);
  Chaos chaos(1, limits);
  const HistoryVerdict verdict = chaos.run(kEpoch);
  EXPECT_EQ(verdict.wrong(), 0) << verdict.details << toText(chaos.schedule(kEpoch));
  EXPECT_GT(chaos.ledger().written, 20);
  EXPECT_GT(chaos.ledger().deleted, 0);
  EXPECT_EQ(chaos.ledger().rows, 5);
  EXPECT_GT(chaos.ledger().lives, 3 + 3) << "a start and a copy of each host";
}

}  // namespace
}  // namespace EventSystemTest
