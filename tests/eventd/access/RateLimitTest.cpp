#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "apps/eventd/access/RateLimit.h"

namespace EventSystemTest {
namespace {

using EventApps::RateLimit;
using std::chrono::milliseconds;

const RateLimit::Clock::time_point kStart = RateLimit::Clock::time_point(std::chrono::hours(1));

TEST(RateLimit, LetsABurstThroughAndThenTheRate) {
  RateLimit limit(2, 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(limit.take("a", kStart).count(), 0) << i;
  EXPECT_DOUBLE_EQ(limit.take("a", kStart).count(), 0.5);
  EXPECT_DOUBLE_EQ(limit.take("a", kStart + milliseconds(400)).count(), 0.1);
  EXPECT_EQ(limit.take("a", kStart + milliseconds(500)).count(), 0);
  EXPECT_GT(limit.take("a", kStart + milliseconds(500)).count(), 0);
}

TEST(RateLimit, NeverSavesMoreThanABurst) {
  RateLimit limit(1, 2);
  EXPECT_EQ(limit.take("a", kStart).count(), 0);
  const auto later = kStart + std::chrono::hours(1);
  EXPECT_EQ(limit.take("a", later).count(), 0);
  EXPECT_EQ(limit.take("a", later).count(), 0);
  EXPECT_GT(limit.take("a", later).count(), 0);
}

TEST(RateLimit, IsForEachKey) {
  RateLimit limit(1, 1);
  EXPECT_EQ(limit.take("a", kStart).count(), 0);
  EXPECT_GT(limit.take("a", kStart).count(), 0);
  EXPECT_EQ(limit.take("b", kStart).count(), 0);
}

TEST(RateLimit, IsNoneWithoutARate) {
  RateLimit limit(0, 1);
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(limit.take("a", kStart).count(), 0);
}

TEST(RateLimit, RemembersWhoIsOverItsLimitWhileOthersCome) {
  RateLimit limit(1, 1, 3);
  EXPECT_EQ(limit.take("greedy", kStart + milliseconds(1000)).count(), 0);
  for (int i = 0; i < 2; ++i) limit.take("idle" + std::to_string(i), kStart);
  EXPECT_EQ(limit.take("new", kStart + milliseconds(1500)).count(), 0);
  EXPECT_GT(limit.take("greedy", kStart + milliseconds(1500)).count(), 0);
}

// Each of many asks once, and none of their buckets is full.
TEST(RateLimit, RemembersWhoIsOverItsLimitInAFlood) {
  RateLimit limit(1, 5, 100);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(limit.take("greedy", kStart).count(), 0);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ(limit.take("flood" + std::to_string(i), kStart).count(), 0);
  }
  EXPECT_GT(limit.take("greedy", kStart).count(), 0);
}

TEST(RateLimit, DoesNotMindAClockThatStandsStill) {
  RateLimit limit(1, 1);
  EXPECT_EQ(limit.take("a", kStart).count(), 0);
  EXPECT_DOUBLE_EQ(limit.take("a", kStart - milliseconds(500)).count(), 1);
}

}  // namespace
}  // namespace EventSystemTest
