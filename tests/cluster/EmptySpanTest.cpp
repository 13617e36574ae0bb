#include <gtest/gtest.h>

#include "host/cluster/EmptySpan.h"

namespace EventSystemHost {
namespace {

TEST(EmptySpan, SkipsNothingWhenItKnowsNothing) {
  const EmptySpan span;
  EXPECT_EQ(span.skip(0), 0u);
  EXPECT_EQ(span.skip(7), 7u);
  EXPECT_TRUE(span.holds(0, 0));
}

TEST(EmptySpan, SkipsOnlyForReadersThatStartInIt) {
  EmptySpan span;
  span.learn(1, 10, 20);
  EXPECT_EQ(span.skip(8), 8u);
  EXPECT_EQ(span.skip(9), 20u);
  EXPECT_EQ(span.skip(19), 20u);
  EXPECT_EQ(span.skip(20), 20u);
  EXPECT_EQ(span.skip(21), 21u);
}

TEST(EmptySpan, GrowsByWhatTouchesItAndGivesWayToWhatDoesNot) {
  EmptySpan span;
  span.learn(1, 10, 20);
  span.learn(1, 21, 30);
  EXPECT_EQ(span.skip(9), 30u);
  span.learn(1, 5, 9);
  EXPECT_EQ(span.skip(4), 30u);
  span.learn(1, 40, 50);
  EXPECT_EQ(span.skip(4), 4u);
  EXPECT_EQ(span.skip(39), 50u);
}

TEST(EmptySpan, LearnsNothingFromAnEmptyStretch) {
  EmptySpan span;
  span.learn(1, 10, 9);
  span.learn(1, 0, 9);
  EXPECT_EQ(span.skip(0), 0u);
  EXPECT_EQ(span.skip(9), 9u);
}

TEST(EmptySpan, GrowsByTheEventThatFollowsIt) {
  EmptySpan span;
  span.learn(1, 1, 5);
  span.emptied(7);
  EXPECT_EQ(span.skip(0), 5u);
  span.emptied(6);
  EXPECT_EQ(span.skip(0), 6u);
}

TEST(EmptySpan, DoesNotHoldForAQueueBornAgainOrSetBack) {
  EmptySpan span;
  span.learn(3, 1, 5);
  EXPECT_TRUE(span.holds(3, 5));
  EXPECT_FALSE(span.holds(4, 5));
  EXPECT_FALSE(span.holds(3, 4));
  span.learn(4, 1, 2);
  EXPECT_EQ(span.skip(0), 2u);
}

TEST(EmptySpan, NeverSkipsToTheHighestIdThereIs) {
  EmptySpan span;
  span.learn(1, 1, ~0UL);
  EXPECT_EQ(span.skip(3), 3u);
}

}  // namespace
}  // namespace EventSystemHost
