#include <gtest/gtest.h>

#include <set>

#include "host/cluster/MemberChoice.h"

namespace EventSystemHost {
namespace {

std::multiset<std::size_t> nextOnes(MemberChoice& choice, int count) {
  std::multiset<std::size_t> members;
  for (int i = 0; i < count; ++i) members.insert(choice.next());
  return members;
}

TEST(MemberChoice, TakesOneAfterTheOther) {
  MemberChoice choice(3);
  EXPECT_EQ(nextOnes(choice, 6), (std::multiset<std::size_t>{0, 0, 1, 1, 2, 2}));
}

TEST(MemberChoice, PassesByWhoHasFailedUntilForgiven) {
  MemberChoice choice(3);
  choice.avoid(1);
  EXPECT_EQ(nextOnes(choice, 4), (std::multiset<std::size_t>{0, 0, 2, 2}));
  EXPECT_EQ(choice.avoided(), std::vector<std::size_t>{1});
  choice.forgive(1);
  EXPECT_TRUE(choice.avoided().empty());
  EXPECT_EQ(nextOnes(choice, 3), (std::multiset<std::size_t>{0, 1, 2}));
}

TEST(MemberChoice, TakesThemInTurnWhenAllHaveFailed) {
  MemberChoice choice(2);
  choice.avoid(0);
  EXPECT_FALSE(choice.allAvoided());
  choice.avoid(1);
  EXPECT_TRUE(choice.allAvoided());
  EXPECT_EQ(nextOnes(choice, 4), (std::multiset<std::size_t>{0, 0, 1, 1}));
}

}  // namespace
}  // namespace EventSystemHost
