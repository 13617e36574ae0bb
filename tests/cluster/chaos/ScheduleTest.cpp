#include <gtest/gtest.h>

#include <set>

#include "tests/cluster/chaos/Schedule.h"

namespace EventSystemTest {
namespace {

TEST(ChaosSchedule, IsTheSameForTheSameSeedAndEpoch) {
  const ScheduleLimits limits;
  for (std::uint64_t epoch = 0; epoch < 20; ++epoch) {
    EXPECT_EQ(makeSchedule(7, epoch, limits), makeSchedule(7, epoch, limits));
  }
  EXPECT_EQ(toText(makeSchedule(7, 3, limits)), toText(makeSchedule(7, 3, limits)));
}

TEST(ChaosSchedule, IsAnotherForAnotherSeedOrEpoch) {
  const ScheduleLimits limits;
  std::set<std::string> texts;
  for (std::uint64_t number = 0; number < 20; ++number) {
    texts.insert(toText(makeSchedule(7, number, limits)));
    texts.insert(toText(makeSchedule(number + 100, 0, limits)));
  }
  EXPECT_EQ(texts.size(), 40u);
}

// A seed that is told today must mean the same with the next compiler.
TEST(ChaosSchedule, IsThisOne) {
  ScheduleLimits limits;
  limits.storms = 1;
  limits.storm = std::chrono::milliseconds(5000);
  EXPECT_EQ(toText(makeSchedule(1, 243, limits)),
            "storm 1\n"
            "  0.172 s to 1.487 s: answers swallowed: host 0 with node 1\n"
            "  0.245 s to 0.708 s: connections refused: all hosts with the leader (or node 2)\n"
            "  0.723 s to 2.034 s: database copied: host 0, 5 rows\n"
            "  0.915 s to 1.762 s: host killed: host 0\n"
            "  2.006 s to 2.884 s: node killed: node 0\n"
            "  2.031 s to 5.000 s: connections refused: all hosts with the leader (or node 0)\n"
            "  2.678 s to 3.531 s: requests swallowed: all hosts with the leader (or node 0)\n"
            "  2.919 s to 5.000 s: all nodes killed\n"
            "  3.602 s to 5.000 s: node stopped: node 1\n"
            "  4.681 s to 5.000 s: connections cut before the answer: all hosts with node 1\n");
}

TEST(ChaosSchedule, KeepsToItsLimits) {
  ScheduleLimits limits;
  limits.nodes = 3;
  limits.hosts = 2;
  limits.storms = 4;
  for (std::uint64_t epoch = 0; epoch < 200; ++epoch) {
    const auto schedule = makeSchedule(1, epoch, limits);
    ASSERT_EQ(schedule.size(), 4u);
    for (const Storm& storm : schedule) {
      ASSERT_FALSE(storm.empty());
      auto last = std::chrono::milliseconds(0);
      for (const Step& step : storm) {
        EXPECT_LE(last, step.begin);
        EXPECT_LT(step.begin, step.end);
        EXPECT_LE(step.end, limits.storm);
        EXPECT_GE(step.node, kAll);
        EXPECT_LT(step.node, 3);
        EXPECT_GE(step.host, kAll);
        EXPECT_LT(step.host, 2);
        last = step.begin;
      }
    }
  }
}

TEST(ChaosSchedule, HasEveryFaultAtTheLeaderAndElsewhereAndSeveralAtOnce) {
  std::set<std::pair<Fault, bool>> drawn;
  long overlaps = 0;
  for (std::uint64_t epoch = 0; epoch < 50; ++epoch) {
    for (const Storm& storm : makeSchedule(1, epoch, ScheduleLimits())) {
      for (std::size_t i = 0; i < storm.size(); ++i) {
        drawn.insert({storm[i].fault, storm[i].leader});
        if (i > 0 && storm[i].begin < storm[i - 1].end) ++overlaps;
      }
    }
  }
  EXPECT_EQ(drawn.size(), 9u * 2 + 3) << "hosts have no leader";
  EXPECT_GT(overlaps, 100);
}

}  // namespace
}  // namespace EventSystemTest
