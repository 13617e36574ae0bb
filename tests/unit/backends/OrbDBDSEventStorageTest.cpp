// The queue operations of the data selections' database store, and its stored highest ids.

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::StartsWith;

// Notes what reaches its virtual deleteEvent().
class WatchedDSStore : public OrbDBDSEventStorage {
 public:
  void deleteEvent(unsigned long id, unsigned int dsid) override {
    deleted.push_back({id, dsid});
    OrbDBDSEventStorage::deleteEvent(id, dsid);
  }
  std::vector<std::pair<unsigned long, unsigned int> > deleted;
};

class OrbDBDSEventStorageTest : public DatabaseStoreTest<WatchedDSStore> {
 protected:
  unsigned long write(unsigned int dsid, const std::string& server = "node1") {
    const std::unique_ptr<Event> event = newCapacityEvent(server);
    EXPECT_EQ(0, store->writeEvent(event.get(), dsid));
    return event->getId();
  }
  int read(unsigned long id, unsigned int dsid, std::unique_ptr<Event>& found) {
    TextEvent stale("stale");
    Event* event = &stale;
    const int result = store->readEvent(id, &event, dsid);
    EXPECT_NE(&stale, event) << "the output was left as it was";
    if (event != &stale) found.reset(event);
    return result;
  }
  int readNothing(unsigned long id, unsigned int dsid) {
    std::unique_ptr<Event> event;
    const int result = read(id, dsid, event);
    EXPECT_EQ(nullptr, event);
    return result;
  }
  // The id of the next event, 0 for none.
  unsigned long next(unsigned long afterId, unsigned int dsid) {
    TextEvent stale("stale");
    Event* event = &stale;
    EXPECT_EQ(0, store->getNextEvent(afterId, &event, dsid));
    const std::unique_ptr<Event> owned(event == &stale ? nullptr : event);
    EXPECT_NE(&stale, event);
    return owned ? owned->getId() : 0;
  }

  Caches& caches() { return (*store).*access(IdCaches()); }
  Highest& highest() { return (*store).*access(MaxIds()); }
  bool initialized() { return (*store).*access(DSInitialized()); }

  // The stored highest id of a dsid; -1 when there is no row of it.
  static long storedMaxId(unsigned int dsid) {
    const std::string name = "maxid_" + std::to_string(static_cast<int>(dsid));
    for (const std::string& key : properties().keys()) {
      if (properties().value(key, "propname") == name) {
        return std::stol(properties().value(key, "propvalue"));
      }
    }
    return -1;
  }
};

TEST_F(OrbDBDSEventStorageTest, ComesUpInAFixedOrder) {
  store = std::make_unique<WatchedDSStore>();
  EXPECT_TRUE(initialized());
  EXPECT_THAT(
      host().callsNamed({"lock", "GetTable", "ListRecordsStart", "open"}),
      ElementsAre("lock()", "GetTable(dsevents)", "GetTable(dsevents)",
                  "ListRecordsStart(dsevents, NULL)", "GetTable(dsevents)",
                  "ListRecordsStart(dsevents, columns, NULL)", "GetTable(eventproperties)"));
  EXPECT_THAT(host().log(),
              ElementsAre(info(0, "%s Starting consistency check", "checkConsistency"),
                          info(0, "%s Ending consistency check", "checkConsistency")));
}

TEST_F(OrbDBDSEventStorageTest, WithoutADirectoryItStaysUnusableWithoutAMessage) {
  configureWithoutDirectory();
  store = std::make_unique<WatchedDSStore>();
  EXPECT_FALSE(initialized());
  EXPECT_EQ(0u, host().countCalls(CallKind::kDatabase));
  EXPECT_EQ(1u, host().countCalls("lock"));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBDSEventStorageTest, CreatesItsMissingTable) {
  host().dropTable("dsevents");
  store = std::make_unique<WatchedDSStore>();
  EXPECT_TRUE(initialized());
  EXPECT_THAT(host().callsNamed({"CheckAddTable", "insertRecordsFromIni"}),
              ElementsAre("CheckAddTable(dsevents, /fake/config/orbdb.ini)"));
  EXPECT_EQ(info(-1, "%s DSEvents table missing.  Adding from ini file: %s", "OrbDBDSEventStorage",
                 kIniPath),
            host().log().front());
}

TEST_F(OrbDBDSEventStorageTest, WithoutItsTableItStaysUnusable) {
  host().dropTable("dsevents");
  fail("CheckAddTable");
  store = std::make_unique<WatchedDSStore>();
  EXPECT_FALSE(initialized());
  EXPECT_THAT(
      host().log(),
      ElementsAre(info(-1, "%s DSEvents table missing.  Adding from ini file: %s",
                       "OrbDBDSEventStorage", kIniPath),
                  error(4, "%s Failed to add the events table in OrbDB", "OrbDBDSEventStorage")));
  EXPECT_EQ(0u, host().countCalls("ListRecordsStart"));
}

TEST_F(OrbDBDSEventStorageTest, AStoreWhoseCacheCannotBeFilledStaysUnusable) {
  putDSRow(5, 3);
  Fault fault;
  fault.call = "GetTable";
  fault.arguments = "dsevents";
  fault.nth = 2;
  host().inject(fault);
  store = std::make_unique<WatchedDSStore>();
  EXPECT_FALSE(initialized());
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s Failed to get dsevents table in OrbDB", "populateIdCache")));
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, store->writeEvent(event.get(), 3));
}

TEST_F(OrbDBDSEventStorageTest, TheFirstWriteOfADataSelectionAddsItsHighestId) {
  build();
  const std::unique_ptr<Event> event = parsed(capacityText(0, 1700000001));
  EXPECT_EQ(0, store->writeEvent(event.get(), 3));
  EXPECT_EQ(1u, event->getId());
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(eventproperties)",
                          "ListRecordsStart(eventproperties, propname=maxid_3)",
                          "addRecord(eventproperties, key, 0, propname=maxid_3,propvalue=1)",
                          "GetTable(dsevents)",
                          "addRecord(dsevents, no key, 0, 1,1,5,1700000001,\"" +
                              capacityText(1, 1700000001) + "\",3)"));
  EXPECT_THAT(host().callsNamed({"QMStringEscapeA"}), ElementsAre("QMStringEscapeA(2048)"));
  EXPECT_EQ(1, storedMaxId(3));
  EXPECT_EQ("0", maxId()) << "the global queue's row is another";
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1))));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBDSEventStorageTest, LaterWritesUpdateThatRow) {
  build();
  write(3);
  host().clearCalls();
  write(3);
  const auto calls = host().databaseCalls();
  ASSERT_EQ(6u, calls.size());
  EXPECT_EQ("ListRecordsStart(eventproperties, propname=maxid_3)", calls[1]);
  EXPECT_THAT(calls[2], StartsWith("GetValStr(eventproperties, id, 25"));
  EXPECT_EQ("updateRecord(eventproperties, 2, propvalue=2)", calls[3]);
  EXPECT_EQ(2, storedMaxId(3));
}

TEST_F(OrbDBDSEventStorageTest, AllDataSelectionsShareOneSequenceOfIds) {
  build();
  EXPECT_EQ(1u, write(3));
  EXPECT_EQ(2u, write(5));
  EXPECT_EQ(3u, write(3));
  EXPECT_EQ(3, storedMaxId(3));
  EXPECT_EQ(2, storedMaxId(5));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1, 3)), Pair(5u, ElementsAre(2))));
  EXPECT_THAT(highest(), ElementsAre(Pair(3u, 3ul), Pair(5u, 2ul)));
}

TEST_F(OrbDBDSEventStorageTest, GetNextEventIdCountsInMemoryOnly) {
  build();
  highest() = {{3, 10}, {5, 40}};
  EXPECT_EQ(41u, store->getNextEventID(3));
  EXPECT_THAT(highest(), ElementsAre(Pair(3u, 41ul), Pair(5u, 40ul)));
  EXPECT_EQ(42u, store->getNextEventID(8));
  EXPECT_THAT(host().calls(), IsEmpty());
  EXPECT_EQ(43u, store->getNewID(3));
  EXPECT_EQ(43, storedMaxId(3));
}

TEST_F(OrbDBDSEventStorageTest, DataSelectionsAbove31BitsKeepTheirQueue) {
  build();
  write(4294967295u);
  write(2147483648u);
  EXPECT_EQ("-1", dsevents().value("1", "dataselection"));
  EXPECT_EQ(1, storedMaxId(4294967295u));
  build();
  EXPECT_EQ(1u, next(0, 4294967295u));
  EXPECT_EQ(2u, next(0, 2147483648u));
}

TEST_F(OrbDBDSEventStorageTest, AHighestIdThatCannotBeStoredIsWarnedOfAndUsedAllTheSame) {
  const LogLine warned =
      warning(4, "%s Failed to set the max event id in the eventproperties table", "getNewID");
  build();
  fail("addRecord", "maxid_3");
  EXPECT_EQ(1u, write(3));
  EXPECT_EQ(-1, storedMaxId(3));
  EXPECT_THAT(host().log(), ElementsAre(warned));
  write(3);
  fail("updateRecord");
  host().clearCalls();
  EXPECT_EQ(3u, write(3));
  EXPECT_EQ(2, storedMaxId(3));
  EXPECT_THAT(host().log(), ElementsAre(warned));
}

TEST_F(OrbDBDSEventStorageTest, WithoutThePropertiesTableWritingGoesOn) {
  build();
  host().dropTable("eventproperties");
  EXPECT_EQ(1u, write(3));
  EXPECT_THAT(host().log(),
              ElementsAre(noPropertiesTable("setMaxIdInDB"),
                          warning(4,
                                  "%s Failed to set the max event id in the eventproperties "
                                  "table",
                                  "getNewID")));
}

TEST_F(OrbDBDSEventStorageTest, StoredHighestIdsAreReadAndWrittenAsTheyAre) {
  build();
  EXPECT_EQ(0u, store->getMaxIdInDB(3));
  EXPECT_EQ(0u, store->setMaxIdInDB(17, 3));
  EXPECT_EQ(17u, store->getMaxIdInDB(3));
  EXPECT_EQ(0u, store->setMaxIdInDB(5, 3)) << "a smaller one is stored too";
  EXPECT_EQ(5u, store->getMaxIdInDB(3));
  EXPECT_EQ(0u, store->getMaxIdInDB(30));
  EXPECT_EQ(0u, store->setMaxIdInDB(18446744073709551615ul, 30));
  EXPECT_EQ(18446744073709551615ul, store->getMaxIdInDB(30));
}

TEST_F(OrbDBDSEventStorageTest, OnlyResult0StoresAHighestId) {
  build();
  fail("addRecord", "", -1);
  EXPECT_EQ(4u, store->setMaxIdInDB(17, 3));
  EXPECT_EQ(0u, store->setMaxIdInDB(17, 3));
  fail("updateRecord", "", -1);
  EXPECT_EQ(4u, store->setMaxIdInDB(18, 3));
  fail("GetValStr");
  EXPECT_EQ(4u, store->setMaxIdInDB(18, 3));
}

TEST_F(OrbDBDSEventStorageTest, AnUnreadableStoredHighestIdIsZero) {
  putMaxId(2, 3, 17);
  build();
  properties().makeUnreadable("2", "propvalue");
  EXPECT_EQ(0u, store->getMaxIdInDB(3));
}

TEST_F(OrbDBDSEventStorageTest, WithoutThePropertiesTableThereIsNoHighestId) {
  build();
  host().dropTable("eventproperties");
  EXPECT_EQ(0u, store->getMaxIdInDB(3));
  EXPECT_EQ(4u, store->setMaxIdInDB(1, 3));
  EXPECT_THAT(host().log(),
              ElementsAre(noPropertiesTable("getMaxIdInDB"), noPropertiesTable("setMaxIdInDB")));
}

TEST_F(OrbDBDSEventStorageTest, RefusesNullWithoutTakingAnId) {
  build();
  EXPECT_EQ(9, store->writeEvent(nullptr, 3));
  EXPECT_EQ(-1, storedMaxId(3));
  EXPECT_THAT(highest(), IsEmpty());
  ASSERT_EQ(1u, host().log().size());
  EXPECT_EQ("error", host().log()[0].level);
}

TEST_F(OrbDBDSEventStorageTest, TheQueuesAreNotLimited) {
  FakeConfiguration configuration;
  configuration.countLimit = 1;
  configuration.ageLimit = 1;
  host().configure(configuration);
  build();
  write(3);
  write(3);
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBDSEventStorageTest, AnIdOfZeroIsRefused) {
  build();
  highest()[9] = ~0ul;
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, store->writeEvent(event.get(), 9));
  EXPECT_EQ(0u, event->getId());
  EXPECT_EQ(error(4, "%s Failed to get a new event id", "writeEvent"), host().log().back());
  EXPECT_THAT(dsevents().keys(), IsEmpty());
  EXPECT_EQ(-1, storedMaxId(9)) << "numbering must not start over";
}

TEST_F(OrbDBDSEventStorageTest, WithoutItsTableTheIdIsSpent) {
  build();
  host().dropTable("dsevents");
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, store->writeEvent(event.get(), 3));
  EXPECT_EQ(1u, event->getId());
  EXPECT_EQ(1, storedMaxId(3));
  EXPECT_THAT(host().log(), ElementsAre(noEventsTable("writeEvent")));
  EXPECT_THAT(caches(), IsEmpty());
}

TEST_F(OrbDBDSEventStorageTest, ARefusedRecordSpendsItsIdAndIsNotCached) {
  build();
  fail("addRecord", "dsevents", 28);
  const std::unique_ptr<Event> event = newCapacityEvent("quote\"d");
  EXPECT_EQ(4, store->writeEvent(event.get(), 3));
  EXPECT_EQ(1u, event->getId());
  EXPECT_THAT(host().log(),
              ElementsAre(error(4,
                                "%s Failed to record the new event to the events table in OrbDB. "
                                "DB status:%d  Event String:%s",
                                "writeEvent", 28, textOf(*event).c_str())));
  EXPECT_EQ(0u, caches().count(3));
  EXPECT_EQ(2u, write(3));
}

TEST_F(OrbDBDSEventStorageTest, OnlyAPositiveAddResultIsAFailure) {
  build();
  fail("addRecord", "dsevents", -3);
  EXPECT_EQ(1u, write(3));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1))));
}

TEST_F(OrbDBDSEventStorageTest, ReadsARowByIdAloneWhateverItsDataSelection) {
  putDSRow(5, 3);
  build();
  std::unique_ptr<Event> event;
  EXPECT_EQ(0, read(5, 99, event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(capacityText(5, 1700000000), textOf(*event));
  EXPECT_THAT(host().databaseCalls(), ElementsAre("GetTable(dsevents)", "readRecord(dsevents, 5)",
                                                  "GetValStr(dsevents, eventstring, 2048)"));
}

TEST_F(OrbDBDSEventStorageTest, FailingReadsAreTold) {
  putDSRow(5, 3);
  build();
  EXPECT_EQ(4, readNothing(6, 3));
  dsevents().makeUnreadable("5", "eventstring");
  EXPECT_EQ(4, readNothing(5, 3));
  EXPECT_THAT(host().log(), ElementsAre(readFailed(6), readFailed(5)));
  EXPECT_TRUE(dsevents().has("5"));
  host().dropTable("dsevents");
  EXPECT_EQ(67, readNothing(5, 3));
  EXPECT_EQ(noEventsTable("readEvent"), host().log().back());
}

TEST_F(OrbDBDSEventStorageTest, AnUnreadableEventStringIsDeletedWithItsRow) {
  putDSRow(5, 5, "EVENT{version:1", "3");
  build();
  EXPECT_EQ(9, readNothing(5, 3));
  EXPECT_EQ(error(4, "%s The event record for id %lu retrieved from the database is unreadable: %s",
                  "readEvent", 5ul, "EVENT{version:1"),
            host().log().back());
  EXPECT_THAT(store->deleted, ElementsAre(Pair(5ul, 3u)));
  EXPECT_FALSE(dsevents().has("5"));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, IsEmpty())));
}

TEST_F(OrbDBDSEventStorageTest, DeletesTheRowAndTheIdOfThatDataSelectionOnly) {
  putDSRow(5, 3);
  build();
  caches()[4] = {5};
  host().setTracing(true);
  store->deleteEvent(5, 3);
  EXPECT_THAT(dsevents().keys(), IsEmpty());
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, IsEmpty()), Pair(4u, ElementsAre(5))));
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(trace("%s Deleting event id: %lu", "deleteEvent", 5ul)));
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(dsevents)", "deleteRecord(dsevents, 5)"));
}

TEST_F(OrbDBDSEventStorageTest, ARowThatCannotBeDeletedLeavesTheCacheAllTheSame) {
  putDSRow(5, 3);
  build();
  fail("deleteRecord");
  store->deleteEvent(5, 3);
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s Failed to delete the event from OrbDB", "deleteEvent")));
  EXPECT_EQ(0u, next(0, 3));
  EXPECT_TRUE(dsevents().has("5"));
}

TEST_F(OrbDBDSEventStorageTest, WithoutItsTableDeletingLeavesTheCacheAlone) {
  putDSRow(5, 3);
  build();
  host().dropTable("dsevents");
  store->deleteEvent(5, 3);
  EXPECT_THAT(host().log(), ElementsAre(noEventsTable("deleteEvent")));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(5))));
}

TEST_F(OrbDBDSEventStorageTest, DeletingTheNewestEventLowersNoHighestId) {
  build();
  write(3);
  write(3);
  store->deleteEvent(2, 3);
  EXPECT_EQ(2, storedMaxId(3));
  EXPECT_EQ(3u, write(3));
}

TEST_F(OrbDBDSEventStorageTest, DeletingADataSelectionLeavesItsRows) {
  putDSRow(5, 3);
  build();
  store->deleteDataSelection(3);
  EXPECT_TRUE(dsevents().has("5"));
  EXPECT_EQ(5u, next(0, 3));
  EXPECT_EQ(0u, host().countCalls("deleteRecord"));
}

TEST_F(OrbDBDSEventStorageTest, WalksTheQueueOfOneDataSelection) {
  putDSRow(1, 3);
  putDSRow(2, 4);
  putDSRow(3, 3);
  build();
  EXPECT_EQ(1u, next(0, 3));
  EXPECT_EQ(3u, next(1, 3));
  EXPECT_EQ(0u, next(3, 3));
  EXPECT_EQ(2u, next(0, 4));
  EXPECT_EQ(0u, next(0, 9));
}

TEST_F(OrbDBDSEventStorageTest, ARowThatVanishedIsDroppedFromTheCache) {
  putDSRow(1, 3);
  putDSRow(3, 3);
  build();
  dsevents().remove("1");
  EXPECT_EQ(3u, next(0, 3));
  EXPECT_THAT(host().log(),
              ElementsAre(readFailed(1),
                          error(4, "%s: removing event %lu from cache.", "getNextEvent", 1ul)));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(3))));
}

TEST_F(OrbDBDSEventStorageTest, AnUnusableStoreRefusesEveryOperation) {
  configureWithoutDirectory();
  build();
  host().setTracing(true);
  TextEvent stale("stale");
  Event* event = &stale;
  EXPECT_EQ(4, store->readEvent(1, &event, 3));
  EXPECT_EQ(4, store->writeEvent(&stale, 3));
  store->deleteEvent(1, 3);
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(notInitialized("readEvent"), notInitialized("writeEvent"),
                          notInitialized("deleteEvent")));
  EXPECT_EQ(0u, host().countCalls(CallKind::kDatabase));
}

class FirstDsid : public OrbDBDSEventStorageTest {
 protected:
  void SetUp() override {
    OrbDBDSEventStorageTest::SetUp();
    build();
  }

  // The result, then the dsid.
  std::pair<int, unsigned int> first() {
    unsigned int dsid = 77;
    const int result = store->getFirstDsid(dsid);
    return {result, dsid};
  }
};

TEST_F(FirstDsid, IsTheFirstDataSelectionOfType9) {
  host().table("dataselection").put({"4", "8"});
  host().table("dataselection").put({"6", "9"});
  host().table("dataselection").put({"7", "9"});
  EXPECT_THAT(first(), Pair(0, 6u));
  EXPECT_THAT(host().databaseCalls(), ElementsAre("open()", "GetTable(dataselection)",
                                                  "ListRecordsStart(dataselection, dstypeid=9)",
                                                  "GetValInt(dataselection, id)"));
}

TEST_F(FirstDsid, IsTheFirstOneWhoseIdCanBeRead) {
  host().table("dataselection").put({"6", "9"});
  host().table("dataselection").put({"7", "9"});
  host().table("dataselection").makeUnreadable("6", "id");
  EXPECT_THAT(first(), Pair(0, 7u));
}

TEST_F(FirstDsid, IsMissingWithoutADataSelectionOfThatType) {
  host().table("dataselection").put({"4", "8"});
  EXPECT_THAT(first(), Pair(72, 0u));
  host().table("dataselection").put({"5", "9"});
  host().table("dataselection").removeColumn("5", "id");
  EXPECT_THAT(first(), Pair(72, 0u));
}

TEST_F(FirstDsid, NeedsTheDatabaseAndItsTable) {
  fail("open");
  EXPECT_THAT(first(), Pair(67, 0u));
  EXPECT_EQ(0u, host().countCalls("GetTable"));
  host().dropTable("dataselection");
  EXPECT_THAT(first(), Pair(67, 0u));
}

TEST_F(FirstDsid, DoesNotNeedAUsableStore) {
  host().table("dataselection").put({"6", "9"});
  configureWithoutDirectory();
  build();
  EXPECT_THAT(first(), Pair(0, 6u));
}

TEST_F(OrbDBDSEventStorageTest, ANullOutputIsRefused) {
  build();
  EXPECT_EQ(9, store->readEvent(1, nullptr, 3));
  EXPECT_EQ(error(4, "%s The event pointer is NULL.", "readEvent"), host().log().back());
  EXPECT_EQ(9, store->getNextEvent(0, nullptr, 3));
  EXPECT_EQ(error(4, "%s The event pointer is NULL.", "getNextEvent"), host().log().back());
}

TEST_F(OrbDBDSEventStorageTest, AnUnusableStoreHasEmptyQueues) {
  configureWithoutDirectory();
  build();
  TextEvent stale("stale");
  Event* event = &stale;
  EXPECT_EQ(0, store->getNextEvent(0, &event, 3));
  EXPECT_EQ(nullptr, event);
}

}  // namespace
}  // namespace EventSystemTest
