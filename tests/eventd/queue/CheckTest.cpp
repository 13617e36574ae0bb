// Checks of a running service.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EventSystem/platform/HostLog.h"
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
}

}  // namespace
}  // namespace EventSystemTest
