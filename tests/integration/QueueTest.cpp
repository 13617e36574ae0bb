// The queues on the real host: what holds over restarts, limits and damage.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "EventSystem/ActivityEvent.h"
#include "EventSystem/LegacyEvent.h"
#include "tests/integration/QueueHome.h"

namespace EventSystemTest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Queue, KeepsItsEventsOverARestart) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    EXPECT_EQ(queue.add(), 1U);
    EXPECT_EQ(queue.add(), 2U);
  }
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(), ElementsAre(1, 2));
  EXPECT_EQ(queue.add(), 3U);
}

TEST(Queue, NeverGivesTheIdOfADeletedEventAgain) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    for (int i = 0; i < 3; ++i) queue.add();
    queue.manager().deleteEvent(3, 0);
    queue.manager().deleteEvent(2, 0);
  }
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(), ElementsAre(1));
  EXPECT_EQ(queue.add(), 4U);
}

TEST(Queue, NeverGivesAnIdAgainAfterTheQueueWasEmptied) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    queue.manager().deleteEvent(queue.add(), 0);
  }
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(), IsEmpty());
  EXPECT_EQ(queue.add(), 2U);
}

TEST(Queue, RefusesEventsAtFiftyThousandAndTakesThemAgainWhenOneIsGone) {
  const QueueHome home;
  RunningQueue queue(home);
  for (unsigned long id = 1; id <= 50000; ++id) ASSERT_EQ(queue.add(), id);
  int result = 0;
  EXPECT_EQ(queue.add(0, &result), 0U);
  EXPECT_EQ(result, 50);
  queue.manager().deleteEvent(1, 0);
  EXPECT_EQ(queue.add(), 50001U) << "the refused event must not have taken an id";
}

TEST(Queue, TakesItsCountLimitFromTheConfiguration) {
  const QueueHome home;
  home.write("OrbCentral.ini", "[events]\ncount_limit = 2\n");
  RunningQueue queue(home);
  queue.add();
  queue.add();
  int result = 0;
  queue.add(0, &result);
  EXPECT_EQ(result, 50);
}

TEST(Queue, KeepsWorkingUnderAnAgeLimit) {
  const QueueHome home;
  home.write("OrbCentral.ini", "[events]\nage_limit_days = 1\n");
  RunningQueue queue(home);
  for (unsigned long id = 1; id <= 20; ++id) EXPECT_EQ(queue.add(), id);
  EXPECT_EQ(queue.ids().size(), 20U);
}

TEST(Queue, HandsOutWhatWasPutIn) {
  const QueueHome home;
  RunningQueue queue(home);
  EventSystem::ActivityEvent event(3, 100, 2, "disk \"one\", full; 100% %s\xC3\xA9", 0);
  ASSERT_EQ(queue.manager().newEvent(&event, 0), 0);
  EXPECT_THAT(queue.next(0), HasSubstr(";{ACTIVITYEVENT{version:1;action:3;time:100;severity:2;"
                                       "msg:disk \"one\", full; 100% %s\xC3\xA9;}}"));
}

TEST(Queue, RefusesAnEventThatWouldNotFitAndStoresNothingOfIt) {
  const QueueHome home;
  RunningQueue queue(home);
  // Doubling makes the record too long at one quote or another; every cut must be refused.
  for (unsigned long quotes = 900; quotes < 1010; ++quotes) {
    std::string payload(quotes, '"');
    EventSystem::LegacyEvent event(payload.data(), 0);
    const int result = queue.manager().newEvent(&event, 0);
    if (result == 0) {
      EXPECT_THAT(queue.next(event.getId() - 1), HasSubstr("{payload:" + payload + ";}}"));
      queue.manager().deleteEvent(event.getId(), 0);
    } else {
      EXPECT_EQ(result, 4);
      EXPECT_EQ(queue.next(event.getId() - 1), "") << quotes;
    }
  }
}

TEST(Queue, NeverCutsTheDataSelectionOfAnEvent) {
  const QueueHome home;
  RunningQueue queue(home);
  addDataSelection(123456789);
  int refused = 0;
  for (unsigned long length = 800; length < 1000; ++length) {
    std::string payload(length, 'x');
    EventSystem::LegacyEvent event(payload.data(), 0);
    const int result = queue.manager().newEvent(&event, 123456789);
    if (result != 0) ++refused;
    EXPECT_EQ(QueueHome::query(home.database(),
                               "select count(*) from dsevents where dataselection <> 123456789"),
              0)
        << length;
  }
  EXPECT_GT(refused, 0);
  EXPECT_LT(refused, 200);
}

TEST(Queue, RepairsARowThatIsFiledUnderAnotherId) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    for (int i = 0; i < 3; ++i) queue.add();
  }
  QueueHome::execute(home.database(), "update events set eventid = 9 where id = 2");
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(), ElementsAre(1, 3, 10)) << "the event goes to the end, under a new id";
}

TEST(Queue, PassesOverAndRemovesARowThatDoesNotParse) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    for (int i = 0; i < 3; ++i) queue.add();
  }
  QueueHome::execute(home.database(), "update events set eventstring = 'EVENT{vers' where id = 2");
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(), ElementsAre(1, 3));
  EXPECT_EQ(QueueHome::query(home.database(), "select count(*) from events"), 2);
}

TEST(DataSelectionQueues, DrawIdsFromOneSequence) {
  const QueueHome home;
  RunningQueue queue(home);
  addDataSelection(3);
  addDataSelection(5);
  EXPECT_EQ(queue.add(3), 1U);
  EXPECT_EQ(queue.add(5), 2U);
  EXPECT_EQ(queue.add(3), 3U);
  EXPECT_THAT(queue.ids(3), ElementsAre(1, 3));
  EXPECT_THAT(queue.ids(5), ElementsAre(2));
  EXPECT_THAT(queue.ids(0), IsEmpty());
}

TEST(DataSelectionQueues, KeepTheirEventsOverARestart) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    addDataSelection(3);
    queue.add(3);
    queue.add(3);
    queue.manager().deleteEvent(2, 3);
  }
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(3), ElementsAre(1));
  EXPECT_EQ(queue.add(3), 3U);
}

TEST(DataSelectionQueues, NeverGiveAnIdAgainAfterTheyWereEmptied) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    addDataSelection(3);
    for (unsigned long id = 1; id <= 3; ++id) queue.manager().deleteEvent(queue.add(3), 3);
  }
  { RunningQueue queue(home); }
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(3), IsEmpty());
  EXPECT_EQ(queue.add(3), 4U);
  EXPECT_THAT(queue.ids(3), ElementsAre(4));
}

TEST(DataSelectionQueues, NeverGiveAnIdOfAnEmptiedQueueAgainWhileAnotherHoldsEvents) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    addDataSelection(3);
    addDataSelection(5);
    queue.add(5);
    for (int i = 0; i < 2; ++i) queue.manager().deleteEvent(queue.add(3), 3);
  }
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(5), ElementsAre(1));
  EXPECT_EQ(queue.add(5), 4U);
}

TEST(DataSelectionQueues, NeverGiveAnIdOfASelectionThatWasRemovedAgain) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    addDataSelection(3);
    addDataSelection(5);
    for (int i = 0; i < 2; ++i) queue.manager().deleteEvent(queue.add(3), 3);
  }
  QueueHome::execute(home.database(), "delete from dataselection where id = 3");
  RunningQueue queue(home);
  EXPECT_EQ(queue.add(5), 3U);
}

TEST(DataSelectionQueues, ShowNothingOfTheIdThatTheyGoOnFrom) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    addDataSelection(3);
    queue.manager().deleteEvent(queue.add(3), 3);
  }
  RunningQueue queue(home);
  for (const unsigned int dsid : {0U, 2U, 3U}) EXPECT_THAT(queue.ids(dsid), IsEmpty());
  EXPECT_EQ(queue.manager().checkConsistency(true), 0);
  EXPECT_EQ(QueueHome::query(home.database(), "select count(*) from dsevents"), 0);
  std::ifstream log(home.path() / "log" / "eventsystem.log");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(log), {}), "") << "no warning, no error";
}

TEST(DataSelectionQueues, LeaveOutRowsOfASelectionThatIsGone) {
  const QueueHome home;
  {
    RunningQueue queue(home);
    addDataSelection(3);
    addDataSelection(5);
    queue.add(3);
    queue.add(5);
  }
  QueueHome::execute(home.database(), "delete from dataselection where id = 3");
  RunningQueue queue(home);
  EXPECT_THAT(queue.ids(3), IsEmpty());
  EXPECT_THAT(queue.ids(5), ElementsAre(2));
}

TEST(DataSelectionQueues, ShareTheGlobalQueueForSelectionTwo) {
  const QueueHome home;
  RunningQueue queue(home);
  EXPECT_EQ(queue.add(2), 1U);
  EXPECT_THAT(queue.ids(0), ElementsAre(1));
}

TEST(AuditImport, MovesRowsIntoTheQueueAtStart) {
  const QueueHome home;
  home.addAuditRow(3, "first");
  home.addAuditRow(9, "second");
  RunningQueue queue(home);
  EXPECT_THAT(queue.next(0), HasSubstr("AUditMSg:first;}}"));
  EXPECT_THAT(queue.next(1), HasSubstr("AUditMSg:second;}}"));
  EXPECT_EQ(QueueHome::query(home.auditDatabase(), "select count(*) from event"), 0);
}

TEST(AuditImport, PicksUpRowsThatAreWrittenLater) {
  const QueueHome home;
  RunningQueue queue(home);
  EXPECT_EQ(queue.next(0), "");
  home.addAuditRow(1, "later");
  EXPECT_THAT(queue.next(0), HasSubstr("AUditMSg:later;}}"));
  EXPECT_THAT(queue.ids(), ElementsAre(1)) << "imported once";
}

TEST(AuditImport, TakesEachRowOnceAlsoUnderAnAgeLimit) {
  const QueueHome home;
  home.write("OrbCentral.ini", "[events]\nage_limit_days = 1\n");
  for (int row = 1; row <= 5; ++row) home.addAuditRow(row, "row" + std::to_string(row));
  RunningQueue queue(home);
  EXPECT_EQ(queue.ids().size(), 5U);
}

}  // namespace
}  // namespace EventSystemTest
