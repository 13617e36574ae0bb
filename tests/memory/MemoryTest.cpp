// Each allocation of each operation fails once, on the reference host. Of those that a host makes
// while it opens, some thousands, one in four is taken; prove_memory takes them all.

#include <gtest/gtest.h>

#include "tests/memory/MemoryTrial.h"

namespace EventSystemTest {
namespace {

class Memory : public testing::TestWithParam<std::size_t> {
 protected:
  const MemoryTrial::Operation& operation() const {
    return MemoryTrial::operations().at(GetParam());
  }

  std::size_t run(const AllocationFaults& faults) {
    const MemoryTrial::Outcome outcome = m_trial.run(operation(), faults);
    for (const std::string& what : outcome.failures) {
      ADD_FAILURE() << operation().name << ", " << faults.text() << ": " << what;
    }
    return outcome.allocations;
  }

  MemoryTrial m_trial{"strict"};
};

TEST_P(Memory, MayBeMissingForAnyAllocation) {
  const std::size_t allocations = run(AllocationFaults::none());
  const std::size_t step = operation().start <= MemoryTrial::Start::kHome ? 4 : 1;
  for (std::size_t n = 1; n <= allocations && !HasFailure(); n += step) {
    run(AllocationFaults::only(n));
  }
}

TEST_P(Memory, MayBeMissingFromAnyTimeOn) {
  const std::size_t allocations = run(AllocationFaults::none());
  const std::size_t step = 1 + allocations / 25;
  for (std::size_t n = 1; n <= allocations && !HasFailure(); n += step) {
    run(AllocationFaults::from(n));
  }
}

std::string testName(const testing::TestParamInfo<std::size_t>& instance) {
  std::string name;
  for (const char c : MemoryTrial::operations().at(instance.param).name) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) name += c;
  }
  return name + std::to_string(instance.param);
}

INSTANTIATE_TEST_SUITE_P(Operations, Memory,
                         testing::Range(std::size_t{0}, MemoryTrial::operations().size()),
                         testName);

}  // namespace
}  // namespace EventSystemTest
