// Every call of the disk in a brief day made to fail, and proof that the checks see a loss.

#include <gtest/gtest.h>

#include <ostream>
#include <tuple>

#include "tests/power/Days.h"
#include "tests/power/FaultTrial.h"

namespace EventSystemTest {

void PrintTo(const Fault& fault, std::ostream* out) {
  *out << fault.name;
}

namespace {

std::string repeat(const Fault& fault, std::size_t n) {
  return std::string("--day brief --fault ") + fault.name + " --point " + std::to_string(n);
}

class DiskFault : public testing::TestWithParam<Fault> {};

TEST_P(DiskFault, ThatPassesLosesNothingInStrict) {
  FaultTrial trial("strict", briefDay);
  const std::size_t calls = trial.calls(GetParam());
  ASSERT_GT(calls, 0u);
  for (std::size_t n = 1; n <= calls; ++n) {
    EXPECT_EQ(trial.run(GetParam(), n, Lasting::kOnce), "") << repeat(GetParam(), n);
  }
  EXPECT_GT(trial.figures().at(GetParam().name).faults, calls / 2);
}

TEST_P(DiskFault, ThatStaysLosesNothingOnceItIsGone) {
  for (const char* durability : {"strict", "group", "relaxed"}) {
    FaultTrial trial(durability, briefDay);
    const std::size_t calls = trial.calls(GetParam());
    for (std::size_t n = 1; n <= calls; n += 1 + calls / 6) {
      EXPECT_EQ(trial.run(GetParam(), n, Lasting::kForEver), "")
          << "--for-ever --durability " << durability << " " << repeat(GetParam(), n);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EachKind, DiskFault,
                         testing::ValuesIn(allFaults().begin(), allFaults().end()),
                         [](const auto& each) {
                           std::string name = each.param.name;
                           std::erase(name, '-');
                           return name;
                         });

TEST(FlushThatFailed, LosesNothingThatWasWaitedForInGroup) {
  const Fault& fault = *faultCalled("flush-that-loses");
  FaultTrial trial("group", briefDay);
  const std::size_t calls = trial.calls(fault);
  for (std::size_t n = 1; n <= calls; ++n) {
    EXPECT_EQ(trial.run(fault, n, Lasting::kOnce), "") << "--durability group " << repeat(fault, n);
  }
}

}  // namespace
}  // namespace EventSystemTest
