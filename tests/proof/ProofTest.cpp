// What the programs behind ./prove are told, and what they tell.

#include <gmock/gmock.h>

#include <array>

#include "tests/proof/Proof.h"

namespace EventSystemTest {
namespace {

using testing::HasSubstr;

template <std::size_t Count>
bool parse(Proof& proof, const std::array<const char*, Count>& arguments) {
  std::array<char*, Count> copies;
  for (std::size_t i = 0; i < Count; ++i) copies[i] = const_cast<char*>(arguments[i]);
  return proof.parse(static_cast<int>(Count), copies.data());
}

std::string reportOf(Proof& proof, int status) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(proof.finish(), status);
  return testing::internal::GetCapturedStdout();
}

TEST(Proof, RunsOneRoundUnlessToldOtherwise) {
  Proof proof("name", "Purpose.");
  ASSERT_TRUE(parse(proof, std::array{"prove_name"}));
  EXPECT_TRUE(proof.more(0));
  EXPECT_FALSE(proof.more(1));
}

TEST(Proof, RunsAsManyRoundsAsAskedForFromTheSeedGiven) {
  Proof proof("name", "Purpose.");
  ASSERT_TRUE(parse(proof, std::array{"prove_name", "--seed", "7", "--rounds", "3"}));
  EXPECT_EQ(proof.seed(), 7u);
  EXPECT_TRUE(proof.more(2));
  EXPECT_FALSE(proof.more(3));
}

TEST(Proof, RunsUntilTheTimeIsUp) {
  Proof proof("name", "Purpose.");
  ASSERT_TRUE(parse(proof, std::array{"prove_name", "--minutes", "60"}));
  EXPECT_TRUE(proof.more(1000000));
  Proof over("name", "Purpose.");
  ASSERT_TRUE(parse(over, std::array{"prove_name", "--minutes", "0.0000000001"}));
  while (over.more(0)) continue;
}

TEST(Proof, RefusesAnOptionItDoesNotKnow) {
  Proof proof("name", "Purpose.");
  EXPECT_FALSE(parse(proof, std::array{"prove_name", "--sed", "7"}));
  EXPECT_NE(proof.status(), 0);
}

TEST(Proof, ReportsItsFiguresInTheOrderOfTheirFirstUse) {
  Proof proof("process death", "Purpose.");
  ASSERT_TRUE(parse(proof, std::array{"/bin/prove_death"}));
  proof.figure("rounds");
  proof.figure("events", 5);
  proof.figure("rounds");
  EXPECT_EQ(reportOf(proof, 0),
            "proof-figure\tprocess death\trounds\t2\nproof-figure\tprocess death\tevents\t5\n");
}

TEST(Proof, EndsAtAFailureAndReportsItWithTheCommandThatRepeatsIt) {
  Proof proof("process death", "Purpose.");
  ASSERT_TRUE(parse(proof, std::array{"/bin/prove_death", "--rounds", "5"}));
  proof.failure("event 3\tis\ngone", "--seed 7 --round 2");
  EXPECT_FALSE(proof.more(1));
  EXPECT_THAT(
      reportOf(proof, 1),
      HasSubstr(
          "proof-failure\tprocess death\tevent 3 is gone\t/bin/prove_death --seed 7 --round 2\n"));
}

}  // namespace
}  // namespace EventSystemTest
