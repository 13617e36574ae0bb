#include <gtest/gtest.h>

#include <ctime>

#include "EventSystem/platform/HostClock.h"

namespace {

TEST(Clock, NeverGoesBack) {
  long last = gethrtime();
  for (int i = 0; i < 1000; ++i) {
    const long now = gethrtime();
    ASSERT_GE(now, last);
    last = now;
  }
}

TEST(Clock, CountsTheMonotonicClockInNanoseconds) {
  timespec before{};
  timespec after{};
  clock_gettime(CLOCK_MONOTONIC, &before);
  const long reading = gethrtime();
  clock_gettime(CLOCK_MONOTONIC, &after);
  EXPECT_GE(reading, before.tv_sec * 1'000'000'000 + before.tv_nsec);
  EXPECT_LE(reading, after.tv_sec * 1'000'000'000 + after.tv_nsec);
}

TEST(Clock, GivesDifferencesInSeconds) {
  EXPECT_DOUBLE_EQ(hrtime2seconds(1'500'000'000), 1.5);
  EXPECT_DOUBLE_EQ(hrtime2seconds(-250'000'000), -0.25);
  EXPECT_DOUBLE_EQ(hrtime2seconds(0), 0.0);
}

}  // namespace
