#include <gtest/gtest.h>

#include "host/cluster/UnsettledWrites.h"

namespace EventSystemHost {
namespace {

TEST(UnsettledWrites, GivesTheStoredOneToWhoAsksForItOnce) {
  UnsettledWrites writes;
  writes.add({1, 10, "a"});
  writes.add({2, 10, "b"});
  EXPECT_EQ(writes.claim("b"), std::nullopt);
  writes.settle(2);
  EXPECT_TRUE(writes.open().empty());
  EXPECT_EQ(writes.claim("a"), std::nullopt);
  EXPECT_EQ(writes.claim("b"), 10u);
  EXPECT_EQ(writes.claim("b"), std::nullopt);
}

TEST(UnsettledWrites, ForgetsAllWhenNoneWasStored) {
  UnsettledWrites writes;
  writes.add({1, 10, "a"});
  writes.settle(0);
  EXPECT_TRUE(writes.open().empty());
  EXPECT_EQ(writes.claim("a"), std::nullopt);
}

TEST(UnsettledWrites, KeepsTheNewestWhenThereAreTooMany) {
  UnsettledWrites writes;
  for (unsigned long token = 1; token <= 10'000; ++token) writes.add({token, 10, "a"});
  EXPECT_LT(writes.open().size(), 10'000u);
  EXPECT_EQ(writes.open().back().token, 10'000u);
  writes.settle(10'000);
  EXPECT_EQ(writes.claim("a"), 10u);
}

}  // namespace
}  // namespace EventSystemHost
