// All public operations from 16 threads at once, over the reference host; also what
// ThreadSanitizer runs.

#include <gmock/gmock.h>

#include "tests/threads/ThreadsRound.h"

namespace EventSystemTest {
namespace {

constexpr std::uint64_t kSeed = 1;

Ledger run(std::uint64_t number) {
  return runThreads(databasePlan(kSeed, number));
}

TEST(AllOperations, KeepEveryEventInStrictDurabilityWhileAuditRowsComeIn) {
  const Ledger ledger = run(0);
  EXPECT_THAT(ledger.failures, testing::IsEmpty());
  EXPECT_GT(ledger.counts.at("acknowledged events"), 100u);
  EXPECT_GT(ledger.counts.at("audit rows left meanwhile"), 0u);
}

TEST(AllOperations, KeepEveryEventInGroupDurabilityAtTheCountLimit) {
  const Ledger ledger = run(1);
  EXPECT_THAT(ledger.failures, testing::IsEmpty());
  EXPECT_GT(ledger.counts.at("refused by the count limit"), 0u);
}

TEST(AllOperations, KeepEveryEventInRelaxedDurabilityUnderAnAgeLimit) {
  EXPECT_THAT(run(2).failures, testing::IsEmpty());
}

TEST(AllOperations, OfEveryKindHaveRun) {
  const Ledger ledger = run(3);
  EXPECT_THAT(ledger.failures, testing::IsEmpty());
  for (const char* const operation :
       {"newEvent", "getNextEvent of an own event", "getNextEvent along a queue", "deleteEvent",
        "checkConsistency", "parsed and written texts", "log lines", "calls of the host",
        "clock readings", "queues in memory", "calls of one thread"}) {
    EXPECT_TRUE(ledger.counts.contains(operation)) << operation;
  }
}

}  // namespace
}  // namespace EventSystemTest
