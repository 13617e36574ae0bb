// Checks of a running service.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

#include "EventSystem/platform/HostLog.h"
#include "host/logging/LogObserver.h"
#include "tests/eventd/queue/Inbox.h"
#include "tests/eventd/queue/ServiceFixture.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventApps::CheckResult;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Check : public ServiceTest {
 protected:
  CheckResult check(bool fix) {
    return answerOf<CheckResult>([&](auto done) { service().check(fix, std::move(done)); });
  }
  static void damage(const std::string& assignment, const char* row) {
    ASSERT_LE(open("events").updateRecord(row, assignment.c_str()), 0);
  }
};

TEST_F(Check, FindsNothingInASoundQueue) {
  start();
  store(manyEvents(3));
  ErrorA(4, "a line of before");
  const CheckResult result = check(true);
  EXPECT_EQ(result.problem, "");
  EXPECT_THAT(result.report.findings, IsEmpty());
  EXPECT_EQ(result.report.remaining, 0);
  ASSERT_TRUE(service().counters().lastCheck);
  EXPECT_EQ(service().counters().lastCheck->remaining, 0);
}

TEST_F(Check, OfASoundQueueHoldsNobodyUpWhoStores) {
  start();
  store(manyEvents(5000));
  std::promise<void> checked;
  std::atomic<bool> isChecked = false;
  service().check(true, [&](const CheckResult& result) {
    EXPECT_EQ(result.report.remaining, 0);
    isChecked = true;
    checked.set_value();
  });
  storeOne();
  EXPECT_FALSE(isChecked) << "the event waited for the check";
  checked.get_future().wait();
}

TEST_F(Check, IsOneForAllWhoAskAtOnce) {
  constexpr int kAsked = 20;
  start();
  store(manyEvents(3));
  damage("eventstring=\"rubbish\"", "2");
  std::atomic<int> checks = 0;
  const EventSystemHost::LogObserver counting(
      [&](EventSystemHost::LogLevel, int, std::string_view message) {
        if (message.find("invalid event string: rubbish") != message.npos) ++checks;
      });
  std::atomic<int> answered = 0;
  for (int i = 0; i < kAsked; ++i) {
    service().check(false, [&](const CheckResult& result) {
      EXPECT_EQ(result.report.remaining, 1);
      ++answered;
    });
  }
  ASSERT_TRUE(eventually([&] { return answered == kAsked; }));
  EXPECT_LT(checks, kAsked / 2);
}

TEST_F(Check, FindsThatTheHighestIdIsTooLow) {
  start();
  store(manyEvents(3));
  ASSERT_LE(open("eventproperties").updateRecord("1", "propvalue=2"), 0);
  EXPECT_EQ(check(false).report.remaining, 1);
}

TEST_F(Check, FindsAndRepairs) {
  start();
  store(manyEvents(3));
  damage("eventstring=\"rubbish\"", "2");
  CheckResult result = check(false);
  EXPECT_EQ(result.report.remaining, 1);
  ASSERT_THAT(result.report.findings, testing::Not(IsEmpty()));
  EXPECT_THAT(result.report.findings[0].message, HasSubstr("rubbish"));
  EXPECT_EQ(result.report.findings[0].level, "error");
  EXPECT_EQ(service().counters().lastCheck->remaining, 1);
  result = check(true);
  EXPECT_EQ(result.report.remaining, 0);
  EXPECT_THAT(result.report.findings, testing::Not(IsEmpty()));
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 3));
}

TEST_F(Check, ShowsWhatWasFiledAnew) {
  start();
  Inbox inbox;
  const auto subscription = inbox.subscribe(service(), 0);
  store(manyEvents(2));
  ASSERT_TRUE(inbox.has(2));
  damage("eventid=77", "1");
  check(true);
  ASSERT_TRUE(inbox.has(3));
  EXPECT_THAT(inbox.ids(), ElementsAre(1, 2, 3));
  EXPECT_THAT(idsAfter(0), ElementsAre(2, 3));
}

TEST_F(Check, LetsAReaderPassADamagedRow) {
  start();
  store(manyEvents(4));
  damage("eventstring=\"rubbish\"", "2");
  damage("eventstring=\"" + capacityText(1, 1700000000) + "\"", "3");
  start();
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 3, 4));
  damage("eventstring=\"" + capacityText(77, 1700000000) + "\"", "3");
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 3, 4)) << "nothing is passed over";
}

}  // namespace
}  // namespace EventSystemTest
