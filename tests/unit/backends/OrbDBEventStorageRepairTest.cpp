// The global database store's cache rebuilding and its consistency check.

#include <limits>

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Its virtual writeEvent() can be told to refuse.
class RefusingStore : public OrbDBEventStorage {
 public:
  int writeEvent(Event* event) override {
    ++writes;
    return refusal != 0 ? refusal : OrbDBEventStorage::writeEvent(event);
  }
  int refusal = 0;
  int writes = 0;
};

class OrbDBEventStorageRepair : public DatabaseStoreTest<RefusingStore> {
 protected:
  std::set<unsigned long>& cache() { return (*store).*access(IdCache()); }
  unsigned long& highest() { return (*store).*access(MaxId()); }

  // The lines of a check, without the first and the last.
  std::vector<LogLine> findings() {
    std::vector<LogLine> lines = host().log();
    EXPECT_LE(2u, lines.size());
    EXPECT_EQ(info(0, "%s Starting consistency check", "checkConsistency"), lines.front());
    EXPECT_EQ(info(0, "%s Ending consistency check", "checkConsistency"), lines.back());
    return {lines.begin() + 1, lines.end() - 1};
  }

  static LogLine invalid(unsigned long eventId, const char* text) {
    return error(32, "%s Event id %lu has an invalid event string: %s", "checkConsistency", eventId,
                 text);
  }
  static LogLine mismatch(unsigned long rowId, unsigned long eventId) {
    return error(105, "%s The event filename (%lu) does not match the event ID (%lu).",
                 "checkConsistency", rowId, eventId);
  }
  static LogLine fixing(unsigned long rowId, unsigned long eventId) {
    return warning(105, "%s The event filename (%lu) does not match the event ID (%lu).  Fixing...",
                   "checkConsistency", rowId, eventId);
  }
  static LogLine tooLow(unsigned long stored, unsigned long found) {
    return error(9,
                 "%s The max ID in the database (%lu) is smaller than the largest ID found (%lu).",
                 "checkConsistency", stored, found);
  }
};

TEST_F(OrbDBEventStorageRepair, TheCacheIsRebuiltFromTheRows) {
  build();
  for (const unsigned long id : {4ul, 9ul, 6ul}) putRow(id);
  putMaxId(7);
  cache() = {1, 2, 3};
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(4, 6, 9));
  EXPECT_EQ(9u, highest());
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(events)", "ListRecordsStart(events, NULL)",
                          "ListRecordsNext(events, NULL)", "ListRecordsNext(events, NULL)",
                          "ListRecordsNext(events, NULL)", "GetTable(eventproperties)",
                          "GetValBigInt(eventproperties, 1, propvalue)"));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBEventStorageRepair, TheCacheHoldsEventIdsNotRowIdsAndEachOnce) {
  putRow(4, 40, "x");
  putRow(5, 40, "x");
  build();
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(40));
}

TEST_F(OrbDBEventStorageRepair, TheCacheTakesNumbersAsAStreamReadsThem) {
  build();
  unsigned long row = 0;
  for (const char* text :
       {" 7", "+8", "12x", "x", "0009", "99999999999999999999", "-3", "18446744073709551614"}) {
    events().put({std::to_string(++row), text, "5", "1700000000", ""});
  }
  EXPECT_EQ(0, store->populateIdCache());
  constexpr unsigned long kLargest = std::numeric_limits<unsigned long>::max();
  EXPECT_THAT(cache(), ElementsAre(0, 7, 8, 9, 12, kLargest - 2, kLargest - 1, kLargest));
}

TEST_F(OrbDBEventStorageRepair, TheHighestIdIsRaisedToTheStoredOneAndNeverLowered) {
  putRow(4);
  putMaxId(20);
  build();
  EXPECT_EQ(20u, highest());
  highest() = 100;
  store->populateIdCache();
  EXPECT_EQ(100u, highest());
}

TEST_F(OrbDBEventStorageRepair, ARowWithoutItsEventIdChangesNothing) {
  putRow(4);
  putRow(6);
  putRow(8);
  putMaxId(8);
  build();
  events().removeColumn("6", "eventid");
  events().makeUnreadable("8", "eventid");
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(4));
}

TEST_F(OrbDBEventStorageRepair, WithoutTheEventsTableTheCacheStaysAsItWas) {
  putRow(4);
  build();
  host().dropTable("events");
  EXPECT_EQ(4, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(4));
  EXPECT_THAT(host().log(), ElementsAre(noEventsTable("populateIdCache")));
}

TEST_F(OrbDBEventStorageRepair, WithoutThePropertiesTableTheCacheIsFilledAllTheSame) {
  build();
  putRow(4);
  host().dropTable("eventproperties");
  EXPECT_EQ(4, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(4));
  EXPECT_EQ(4u, highest());
  EXPECT_THAT(host().log(), ElementsAre(noPropertiesTable("populateIdCache")));
}

TEST_F(OrbDBEventStorageRepair, AnUnreadableStoredHighestIdIsAFailure) {
  putRow(4);
  build();
  putMaxId(50);
  properties().makeUnreadable("1", "propvalue");
  EXPECT_EQ(4, store->populateIdCache());
  EXPECT_EQ(4u, highest());
}

TEST_F(OrbDBEventStorageRepair, TheCacheCanBeFilledWithoutAUsableStore) {
  putRow(4);
  configureWithoutDirectory();
  build();
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(4));
}

TEST_F(OrbDBEventStorageRepair, AnEmptyTableIsSound) {
  build();
  EXPECT_EQ(0, store->checkConsistency(false));
  EXPECT_THAT(findings(), IsEmpty());
  EXPECT_THAT(
      host().databaseCalls(),
      ElementsAre("GetTable(events)", "ListRecordsStart(events, columns, NULL)",
                  "GetTable(eventproperties)", "GetValBigInt(eventproperties, 1, propvalue)"));
}

TEST_F(OrbDBEventStorageRepair, ASoundTableIsLeftAsItIs) {
  putRow(1);
  putRow(2);
  putMaxId(2);
  build();
  EXPECT_EQ(0, store->checkConsistency(true));
  EXPECT_THAT(findings(), IsEmpty());
  EXPECT_THAT(events().keys(), ElementsAre("1", "2"));
}

TEST_F(OrbDBEventStorageRepair, AnUnreadableEventStringIsCountedAndItsRowKept) {
  putMaxId(3);
  build();
  putRow(3, 3, "nonsense");
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_EQ(invalid(3, "nonsense"), findings().back());
  EXPECT_TRUE(events().has("3"));
  EXPECT_EQ(1, store->checkConsistency(false));
}

TEST_F(OrbDBEventStorageRepair, AMismatchWeighsTwiceWhenItIsOnlyReported) {
  putMaxId(9);
  build();
  putRow(5, 7, capacityText(7, 1700000000));
  EXPECT_EQ(2, store->checkConsistency(false));
  EXPECT_THAT(findings(), ElementsAre(mismatch(5, 7)));
  EXPECT_THAT(events().keys(), ElementsAre("5"));
  EXPECT_EQ(0, store->writes);
}

TEST_F(OrbDBEventStorageRepair, AMismatchIsRepairedUnderANewIdAndThenItsRowDeleted) {
  putMaxId(9);
  build();
  putRow(5, 7, capacityText(7, 1700000000, "alpha"));
  store->populateIdCache();
  host().clearCalls();
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(findings(), ElementsAre(fixing(5, 7)));
  EXPECT_THAT(events().keys(), ElementsAre("10"));
  EXPECT_EQ(capacityText(10, 1700000000, "alpha"), events().value("10", "eventstring"));
  EXPECT_THAT(cache(), ElementsAre(7, 10)) << "the stale id stays in the cache";
  EXPECT_EQ("10", maxId());
  const auto changes = host().callsNamed({"addRecord", "deleteRecord"});
  ASSERT_EQ(2u, changes.size());
  EXPECT_THAT(changes[0], ::testing::StartsWith("addRecord(events"));
  EXPECT_EQ("deleteRecord(events, 5)", changes[1]);
}

TEST_F(OrbDBEventStorageRepair, ConstructionRepairs) {
  putMaxId(9);
  putRow(5, 7, capacityText(7, 1700000000));
  build();
  EXPECT_THAT(events().keys(), ElementsAre("10"));
}

TEST_F(OrbDBEventStorageRepair, TheRepairNeverMeetsTheRowsItAdds) {
  putMaxId(20);
  build();
  putRow(5, 7, capacityText(7, 1));
  putRow(6, 8, capacityText(8, 1));
  EXPECT_EQ(2, store->checkConsistency(true));
  EXPECT_THAT(events().keys(), ElementsAre("21", "22"));
  EXPECT_EQ(0, store->checkConsistency(true));
}

TEST_F(OrbDBEventStorageRepair, ARefusedRewriteKeepsTheOldRow) {
  putMaxId(9);
  build();
  putRow(5, 7, capacityText(7, 1));
  for (const int refusal : {50, 4}) {
    store->refusal = refusal;
    EXPECT_EQ(1, store->checkConsistency(true));
    EXPECT_THAT(events().keys(), ElementsAre("5"));
  }
}

TEST_F(OrbDBEventStorageRepair, AFullQueueKeepsAMismatchedRow) {
  putMaxId(9);
  build();
  (*store).*access(CountLimit()) = 1;
  cache() = {7};
  putRow(5, 7, capacityText(7, 1));
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(events().keys(), ElementsAre("5"));
  EXPECT_EQ("9", maxId());
}

TEST_F(OrbDBEventStorageRepair, AnUnreadableMismatchedRowCountsForBothAndStays) {
  putMaxId(9);
  build();
  putRow(5, 7, "nonsense");
  EXPECT_EQ(2, store->checkConsistency(true));
  EXPECT_EQ(fixing(5, 7), findings().back());
  EXPECT_EQ(0, store->writes);
  host().clearCalls();
  EXPECT_EQ(3, store->checkConsistency(false));
  EXPECT_EQ(mismatch(5, 7), findings().back());
  EXPECT_TRUE(events().has("5"));
}

TEST_F(OrbDBEventStorageRepair, ATooLowStoredHighestIdIsReportedAndLeft) {
  putRow(5);
  putMaxId(3);
  build();
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(findings(), ElementsAre(tooLow(3, 5)));
  EXPECT_EQ("3", maxId());
}

TEST_F(OrbDBEventStorageRepair, TheLargestIdIsThatOfTheEventNotOfTheRow) {
  putMaxId(5);
  build();
  putRow(9, 4, capacityText(4, 1));
  EXPECT_EQ(2, store->checkConsistency(false));
  putRow(9, 14, capacityText(14, 1));
  host().clearCalls();
  EXPECT_EQ(3, store->checkConsistency(false));
  EXPECT_EQ(tooLow(5, 14), findings().back());
}

TEST_F(OrbDBEventStorageRepair, WithoutTheEventsTableThereIsOneProblemAndNoEnd) {
  build();
  host().dropTable("events");
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(host().log(),
              ElementsAre(info(0, "%s Starting consistency check", "checkConsistency"),
                          noEventsTable("checkConsistency")));
}

TEST_F(OrbDBEventStorageRepair, WithoutThePropertiesTableThereIsOneProblemMore) {
  build();
  host().dropTable("eventproperties");
  putRow(3, 3, "nonsense");
  EXPECT_EQ(2, store->checkConsistency(false));
  EXPECT_EQ(noPropertiesTable("checkConsistency"), findings().back());
}

TEST_F(OrbDBEventStorageRepair, AnUnreadableStoredHighestIdCountsAsTooLow) {
  putRow(5);
  putMaxId(5);
  build();
  properties().makeUnreadable("1", "propvalue");
  EXPECT_EQ(1, store->checkConsistency(false));
  EXPECT_THAT(findings(), ElementsAre(tooLow(0, 5)));
}

TEST_F(OrbDBEventStorageRepair, ColumnsThatAreMissingCountAsZeroOrEmpty) {
  putMaxId(9);
  build();
  putRow(5);
  events().removeColumn("5", "eventid");
  EXPECT_EQ(2, store->checkConsistency(false));
  EXPECT_THAT(findings(), ElementsAre(mismatch(5, 0)));
  putRow(5);
  events().removeColumn("5", "eventstring");
  host().clearCalls();
  EXPECT_EQ(1, store->checkConsistency(false));
  EXPECT_EQ(invalid(5, ""), findings().back());
}

TEST_F(OrbDBEventStorageRepair, ARowDoesNotInheritWhatTheRowBeforeItHad) {
  putMaxId(9);
  build();
  putRow(5);
  putRow(6);
  events().removeColumn("6", "eventid");
  events().removeColumn("6", "eventstring");
  EXPECT_EQ(3, store->checkConsistency(false));
  EXPECT_EQ(mismatch(6, 0), findings().back());
}

TEST_F(OrbDBEventStorageRepair, AMissingTypeOrDateIsNoProblem) {
  putRow(5);
  putMaxId(5);
  build();
  events().removeColumn("5", "type");
  events().removeColumn("5", "date");
  EXPECT_EQ(0, store->checkConsistency(false));
}

TEST_F(OrbDBEventStorageRepair, AnUnusableStoreCanBeChecked) {
  putRow(5);
  putMaxId(5);
  configureWithoutDirectory();
  build();
  EXPECT_EQ(0, store->checkConsistency(false));
}

TEST_F(OrbDBEventStorageRepair, ARowWhoseIdsCannotBeReadIsCountedAndLeftAlone) {
  putMaxId(9);
  build();
  putRow(5);
  for (const char* const column : {"id", "eventid"}) {
    events().makeUnreadable("5", column);
    EXPECT_EQ(1, store->checkConsistency(true)) << column;
    EXPECT_EQ(0, store->writes);
    EXPECT_THAT(events().keys(), ElementsAre("5"));
    events().makeReadable("5", column);
  }
  EXPECT_EQ(0, store->checkConsistency(true));
}

TEST_F(OrbDBEventStorageRepair, ARowWithAColumnThatCannotBeNamedIsCountedAndLeftAlone) {
  putMaxId(9);
  build();
  putRow(5);
  Fault fault;
  fault.call = "CColumn::name";
  fault.mode = FaultMode::kThrow;
  fault.nth = 0;
  host().inject(fault);
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_EQ(0, store->writes);
  EXPECT_THAT(events().keys(), ElementsAre("5"));
}

TEST_F(OrbDBEventStorageRepair, ARowWhoseEventIdCannotBeReadIsNotCached) {
  putMaxId(9);
  build();
  putRow(5);
  putRow(6);
  events().makeUnreadable("6", "eventid");
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(cache(), ElementsAre(5));
}

TEST_F(OrbDBEventStorageRepair, AnOldRowThatStaysAfterItsRewriteIsLogged) {
  putMaxId(9);
  build();
  putRow(5, 7, capacityText(7, 1));
  fail("deleteRecord");
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_EQ(error(4, "%s Failed to delete the event from OrbDB", "checkConsistency"),
            findings().back());
}

TEST_F(OrbDBEventStorageRepair, NumberingNeverStartsOver) {
  putMaxId(9);
  build();
  highest() = ~0ul;
  const std::unique_ptr<Event> event = newCapacityEvent();
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(4, store->writeEvent(event.get()));
    EXPECT_EQ(error(4, "%s Failed to get a new event id", "writeEvent"), host().log().back());
  }
  EXPECT_EQ("9", maxId());
  EXPECT_EQ(~0ul, highest());
}

}  // namespace
}  // namespace EventSystemTest
