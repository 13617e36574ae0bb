// The queue operations of the global database store.

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// Notes what reaches its virtual deleteEvent().
class WatchedStore : public OrbDBEventStorage {
 public:
  void deleteEvent(unsigned long id) override {
    deleted.push_back(id);
    OrbDBEventStorage::deleteEvent(id);
  }
  std::vector<unsigned long> deleted;
};

class OrbDBEventStorageTest : public DatabaseStoreTest<WatchedStore> {
 protected:
  int write(Event* event) { return store->writeEvent(event); }
  unsigned long write() {
    const std::unique_ptr<Event> event = newCapacityEvent();
    EXPECT_EQ(0, store->writeEvent(event.get()));
    return event->getId();
  }

  // The result of reading; the event goes to `found`, which holds rubbish before.
  int read(unsigned long id, std::unique_ptr<Event>& found) {
    TextEvent stale("stale");
    Event* event = &stale;
    const int result = store->readEvent(id, &event);
    if (event != &stale) found.reset(event);
    EXPECT_NE(&stale, event) << "the output was left as it was";
    return result;
  }
  int readNothing(unsigned long id) {
    std::unique_ptr<Event> event;
    const int result = read(id, event);
    EXPECT_EQ(nullptr, event);
    return result;
  }

  std::unique_ptr<Event> next(unsigned long afterId) {
    TextEvent stale("stale");
    Event* event = &stale;
    EXPECT_EQ(0, store->getNextEvent(afterId, &event));
    EXPECT_NE(&stale, event);
    return std::unique_ptr<Event>(event);
  }

  std::set<unsigned long>& cache() { return (*store).*access(IdCache()); }

  static LogLine recordRefused(int status, const std::string& text) {
    return error(4,
                 "%s Failed to record the new event to the events table in OrbDB. DB status:%d  "
                 "Event String:%s",
                 "writeEvent", status, text.c_str());
  }
};

TEST_F(OrbDBEventStorageTest, WritesTheHighestIdAndThenTheRow) {
  build();
  const std::unique_ptr<Event> event = parsed(capacityText(0, 1700000001, "node1"));
  EXPECT_EQ(0, write(event.get()));
  EXPECT_EQ(1u, event->getId());
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(eventproperties)",
                          "updateRecord(eventproperties, 1, propname=maxid,propvalue=1)",
                          "GetTable(events)",
                          "addRecord(events, no key, 0, 1,1,5,1700000001,\"" +
                              capacityText(1, 1700000001, "node1") + "\")"));
  EXPECT_THAT(host().callsNamed({"QMStringEscapeA"}), ElementsAre("QMStringEscapeA(2048)"));
  EXPECT_EQ("1", maxId());
  EXPECT_EQ(capacityText(1, 1700000001, "node1"), events().value("1", "eventstring"));
  EXPECT_EQ("1", events().value("1", "eventid"));
  EXPECT_THAT(cache(), ElementsAre(1));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBEventStorageTest, TextWithQuotesAndCommasComesBackAsItWas) {
  build();
  const std::unique_ptr<Event> event = newCapacityEvent("a\",\"b,\"\"c");
  ASSERT_EQ(0, write(event.get()));
  std::unique_ptr<Event> back;
  ASSERT_EQ(0, read(1, back));
  EXPECT_EQ(textOf(*event), textOf(*back));
}

TEST_F(OrbDBEventStorageTest, NumbersEventsOneByOne) {
  build();
  EXPECT_EQ(1u, write());
  EXPECT_EQ(2u, write());
  EXPECT_EQ("2", maxId());
  EXPECT_THAT(cache(), ElementsAre(1, 2));
}

TEST_F(OrbDBEventStorageTest, AFullQueueRefusesBeforeItTakesAnId) {
  putRow(1);
  putMaxId(1);
  build();
  (*store).*access(CountLimit()) = 1;
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(50, write(event.get()));
  EXPECT_EQ(0u, event->getId());
  EXPECT_EQ("1", maxId());
  EXPECT_THAT(host().databaseCalls(), IsEmpty());
  EXPECT_THAT(
      host().log(),
      ElementsAre(warning(50, "%s Current event count is greater than event limit!", "checkLimits"),
                  error(50, "%s Cannot add a new event.  Storage limits reached", "writeEvent")));
}

TEST_F(OrbDBEventStorageTest, RefusesNullWithoutTakingAnId) {
  build();
  EXPECT_EQ(9, write(nullptr));
  EXPECT_EQ("0", maxId());
  EXPECT_EQ(0u, host().countCalls("updateRecord"));
  ASSERT_EQ(1u, host().log().size());
  EXPECT_EQ("error", host().log()[0].level);
}

TEST_F(OrbDBEventStorageTest, OldEventsAreReportedByAWriteAndReleased) {
  putRow(1, 1, capacityText(1, secondsAgo(3 * kDay)));
  putMaxId(1);
  build();
  (*store).*access(AgeLimit()) = 1;
  write();
  EXPECT_THAT(host().log(), ElementsAre(warning(50, "%s Event ID %lu is older than event age limit",
                                                "checkLimits", 1ul)));
}

TEST_F(OrbDBEventStorageTest, TheAgeWalkEndsOverRowsFiledUnderAHigherIdThanTheirEvent) {
  putRow(5, 5, capacityText(2, 1));
  putRow(7, 7, capacityText(0, 1));
  putRow(9, 9, capacityText(9, now()));
  putMaxId(9);
  build();
  (*store).*access(AgeLimit()) = 1;
  EXPECT_EQ(10u, write());
  const auto tooOld = [](unsigned long id) {
    return warning(50, "%s Event ID %lu is older than event age limit", "checkLimits", id);
  };
  EXPECT_THAT(host().log(), ElementsAre(tooOld(2), tooOld(2), tooOld(0)));
}

TEST_F(OrbDBEventStorageTest, AHighestIdThatCannotBeStoredIsWarnedOfAndUsedAllTheSame) {
  build();
  fail("updateRecord");
  EXPECT_EQ(1u, write());
  EXPECT_TRUE(events().has("1"));
  EXPECT_EQ("0", maxId());
  EXPECT_THAT(host().log(),
              ElementsAre(warning(4,
                                  "%s Failed to set the max event id in the eventproperties "
                                  "table",
                                  "getNewID")));
}

TEST_F(OrbDBEventStorageTest, OnlyAPositiveUpdateResultIsAFailure) {
  build();
  fail("updateRecord", "", -3);
  EXPECT_EQ(1u, write());
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBEventStorageTest, OnlyAPositiveAddResultIsAFailure) {
  build();
  fail("addRecord", "", -3);
  EXPECT_EQ(1u, write());
  EXPECT_THAT(host().log(), IsEmpty());
  EXPECT_THAT(cache(), ElementsAre(1));
}

TEST_F(OrbDBEventStorageTest, WithoutThePropertiesTableNoIdIsTaken) {
  build();
  host().dropTable("eventproperties");
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, write(event.get()));
  EXPECT_EQ(0u, event->getId());
  EXPECT_EQ(0u, (*store).*access(MaxId()));
  EXPECT_THAT(host().log(), ElementsAre(noPropertiesTable("getNewID"),
                                        error(4, "%s Failed to get a new event id", "writeEvent")));
  EXPECT_THAT(cache(), IsEmpty());
}

TEST_F(OrbDBEventStorageTest, WithoutTheEventsTableTheIdIsSpent) {
  build();
  host().dropTable("events");
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, write(event.get()));
  EXPECT_EQ(1u, event->getId());
  EXPECT_EQ("1", maxId());
  EXPECT_THAT(host().log(), ElementsAre(noEventsTable("writeEvent")));
  EXPECT_THAT(cache(), IsEmpty());
}

TEST_F(OrbDBEventStorageTest, ARefusedRecordSpendsItsIdAndIsNotCached) {
  build();
  fail("addRecord", "", 28);
  const std::unique_ptr<Event> event = newCapacityEvent("quote\"d");
  EXPECT_EQ(4, write(event.get()));
  EXPECT_EQ(1u, event->getId());
  EXPECT_THAT(host().log(), ElementsAre(recordRefused(28, textOf(*event))));
  EXPECT_THAT(cache(), IsEmpty());
  EXPECT_EQ("1", maxId());
  EXPECT_EQ(2u, write());
}

TEST_F(OrbDBEventStorageTest, NewIdsAreTakenFromMemoryAndStored) {
  putMaxId(6);
  build();
  EXPECT_EQ(7u, store->getNextEventID());
  EXPECT_THAT(host().calls(), IsEmpty());
  EXPECT_EQ("6", maxId());
  EXPECT_EQ(8u, store->getNewID());
  EXPECT_EQ("8", maxId());
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(eventproperties)",
                          "updateRecord(eventproperties, 1, propname=maxid,propvalue=8)"));
}

TEST_F(OrbDBEventStorageTest, IdsUseTheWholeUnsignedRange) {
  putMaxId(18446744073709551614ul);
  build();
  EXPECT_EQ(18446744073709551615ul, write());
  EXPECT_EQ("18446744073709551615", maxId());
  std::unique_ptr<Event> event;
  EXPECT_EQ(0, read(18446744073709551615ul, event));
}

TEST_F(OrbDBEventStorageTest, ReadsARowByItsKey) {
  putRow(5, 5, capacityText(5, 77, "alpha"));
  build();
  std::unique_ptr<Event> event;
  EXPECT_EQ(0, read(5, event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(capacityText(5, 77, "alpha"), textOf(*event));
  EXPECT_THAT(host().databaseCalls(), ElementsAre("GetTable(events)", "readRecord(events, 5)",
                                                  "GetValStr(events, eventstring, 2048)"));
}

TEST_F(OrbDBEventStorageTest, AnUnknownKeyCannotBeRead) {
  build();
  EXPECT_EQ(4, readNothing(5));
  EXPECT_THAT(host().log(), ElementsAre(readFailed(5)));
}

TEST_F(OrbDBEventStorageTest, WithoutTheEventsTableReadingGives67) {
  build();
  host().dropTable("events");
  EXPECT_EQ(67, readNothing(5));
  EXPECT_THAT(host().log(), ElementsAre(noEventsTable("readEvent")));
}

TEST_F(OrbDBEventStorageTest, AnEventStringThatCannotBeReadKeepsItsRow) {
  putRow(5);
  putMaxId(5);
  build();
  events().makeUnreadable("5", "eventstring");
  EXPECT_EQ(4, readNothing(5));
  EXPECT_THAT(host().log(), ElementsAre(readFailed(5)));
  EXPECT_TRUE(events().has("5"));
  EXPECT_THAT(store->deleted, IsEmpty());
  EXPECT_THAT(cache(), ElementsAre(5));
  events().makeReadable("5", "eventstring");
  std::unique_ptr<Event> event;
  EXPECT_EQ(0, read(5, event));
}

TEST_F(OrbDBEventStorageTest, AMissingEventStringColumnKeepsItsRow) {
  putRow(5);
  build();
  events().removeColumn("5", "eventstring");
  EXPECT_EQ(4, readNothing(5));
  EXPECT_THAT(host().log(), ElementsAre(readFailed(5)));
  EXPECT_TRUE(events().has("5"));
}

TEST_F(OrbDBEventStorageTest, AnUnreadableEventStringIsDeletedWithItsRow) {
  putRow(5, 5, "EVENT{version:1;type:5;id:5");
  putMaxId(5);
  build();
  EXPECT_EQ(9, readNothing(5));
  EXPECT_EQ(error(4, "%s The event record for id %lu retrieved from the database is unreadable: %s",
                  "readEvent", 5ul, "EVENT{version:1;type:5;id:5"),
            host().log().back());
  EXPECT_THAT(store->deleted, ElementsAre(5));
  EXPECT_FALSE(events().has("5"));
  EXPECT_THAT(cache(), IsEmpty());
}

TEST_F(OrbDBEventStorageTest, AnEmptyEventStringIsUnreadable) {
  putRow(5, 5, "");
  build();
  EXPECT_EQ(9, readNothing(5));
  EXPECT_FALSE(events().has("5"));
}

TEST_F(OrbDBEventStorageTest, DeletesTheRowAndTheCachedId) {
  putRow(5);
  putRow(6);
  putMaxId(6);
  build();
  store->deleteEvent(5);
  EXPECT_THAT(events().keys(), ElementsAre("6"));
  EXPECT_THAT(cache(), ElementsAre(6));
  EXPECT_THAT(host().databaseCalls(), ElementsAre("GetTable(events)", "deleteRecord(events, 5)"));
  EXPECT_THAT(host().logAndTraces(), IsEmpty());
  EXPECT_EQ("6", maxId());
}

TEST_F(OrbDBEventStorageTest, DeletingIsTraced) {
  putRow(5);
  build();
  host().setTracing(true);
  store->deleteEvent(5);
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(trace("%s Deleting event id: %lu", "deleteEvent", 5ul)));
}

TEST_F(OrbDBEventStorageTest, ARowThatCannotBeDeletedLeavesTheCacheAllTheSame) {
  putRow(5);
  build();
  fail("deleteRecord");
  store->deleteEvent(5);
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s Failed to delete the event from OrbDB", "deleteEvent")));
  EXPECT_THAT(cache(), IsEmpty());
  EXPECT_TRUE(events().has("5"));
  EXPECT_EQ(nullptr, next(0));
}

TEST_F(OrbDBEventStorageTest, DeletingAnUnknownIdIsAFailedDelete) {
  build();
  store->deleteEvent(5);
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s Failed to delete the event from OrbDB", "deleteEvent")));
}

TEST_F(OrbDBEventStorageTest, WithoutTheEventsTableDeletingLeavesTheCacheAlone) {
  putRow(5);
  build();
  host().dropTable("events");
  store->deleteEvent(5);
  EXPECT_THAT(host().log(), ElementsAre(noEventsTable("deleteEvent")));
  EXPECT_THAT(cache(), ElementsAre(5));
}

TEST_F(OrbDBEventStorageTest, WalksTheQueueInIdOrder) {
  for (const unsigned long id : {12ul, 3ul, 7ul}) putRow(id);
  putMaxId(12);
  build();
  EXPECT_EQ(3u, next(0)->getId());
  EXPECT_EQ(7u, next(3)->getId());
  EXPECT_EQ(12u, next(7)->getId());
  EXPECT_EQ(nullptr, next(12));
}

TEST_F(OrbDBEventStorageTest, LooksForAuditRowsBeforeItWalks) {
  putRow(3);
  putMaxId(3);
  build();
  host().setTracing(true);
  next(0);
  EXPECT_THAT(host().traces(), Contains("PopuAuditEventDB:sqlite3 db file not exists yet: "
                                        "/nonexistent/fake/audit/audit.db"));
  EXPECT_THAT(host().log(), IsEmpty()) << "an import without force does not announce itself";
}

TEST_F(OrbDBEventStorageTest, AnUnreadableRowIsPassedOverAndDeleted) {
  putRow(3, 3, "nonsense");
  putRow(5);
  putMaxId(5);
  build();
  EXPECT_EQ(5u, next(0)->getId());
  EXPECT_EQ(error(4, "%s: removing event %lu from cache.", "getNextEvent", 3ul),
            host().log().back());
  EXPECT_THAT(events().keys(), ElementsAre("5"));
  EXPECT_THAT(cache(), ElementsAre(5));
}

TEST_F(OrbDBEventStorageTest, ARowThatVanishedIsDroppedFromTheCache) {
  putRow(3);
  putRow(5);
  putMaxId(5);
  build();
  events().remove("3");
  EXPECT_EQ(5u, next(0)->getId());
  EXPECT_THAT(host().log(),
              ElementsAre(readFailed(3),
                          error(4, "%s: removing event %lu from cache.", "getNextEvent", 3ul)));
}

TEST_F(OrbDBEventStorageTest, AnUnusableStoreRefusesEveryOperation) {
  configureWithoutDirectory();
  build();
  host().setTracing(true);
  TextEvent stale("stale");
  Event* event = &stale;
  EXPECT_EQ(4, store->readEvent(1, &event));
  EXPECT_EQ(4, write(&stale));
  store->deleteEvent(1);
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(notInitialized("readEvent"), notInitialized("writeEvent"),
                          notInitialized("deleteEvent")));
  EXPECT_EQ(0u, host().countCalls(CallKind::kDatabase));
  EXPECT_EQ(0u, stale.getId());
}

TEST_F(OrbDBEventStorageTest, AnUnusableStoreDoesNotLookLikeAnEmptyQueue) {
  configureWithoutDirectory();
  build();
  host().setTracing(true);
  TextEvent stale("stale");
  Event* event = &stale;
  EXPECT_EQ(4, store->getNextEvent(0, &event));
  EXPECT_EQ(nullptr, event);
  EXPECT_THAT(host().logAndTraces(), ElementsAre(notInitialized("getNextEvent")));
}

TEST_F(OrbDBEventStorageTest, AnUnusableStoreIsSilentWithoutTracing) {
  configureWithoutDirectory();
  build();
  store->deleteEvent(1);
  EXPECT_THAT(host().logAndTraces(), IsEmpty());
}

TEST_F(OrbDBEventStorageTest, IdsOfDeletedEventsAreNotHandedOutAgainAfterARestart) {
  build();
  write();
  write();
  store->deleteEvent(2);
  build();
  EXPECT_EQ(3u, write());
}

TEST_F(OrbDBEventStorageTest, EverythingWrittenIsThereAfterARestart) {
  build();
  write();
  write();
  build();
  EXPECT_EQ(1u, next(0)->getId());
  EXPECT_EQ(2u, next(1)->getId());
  EXPECT_EQ(nullptr, next(2));
}

TEST_F(OrbDBEventStorageTest, ANullOutputIsRefused) {
  build();
  EXPECT_EQ(9, store->readEvent(1, nullptr));
  EXPECT_EQ(error(4, "%s The event pointer is NULL.", "readEvent"), host().log().back());
  EXPECT_EQ(9, store->getNextEvent(0, nullptr));
  EXPECT_EQ(error(4, "%s The event pointer is NULL.", "getNextEvent"), host().log().back());
}

}  // namespace
}  // namespace EventSystemTest
