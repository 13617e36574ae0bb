// The data selections' database store: cache rebuilding and consistency check.

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

// Its virtual writeEvent() notes the data selection and can be told to refuse.
class RefusingDSStore : public OrbDBDSEventStorage {
 public:
  int writeEvent(Event* event, unsigned int dsid) override {
    written.push_back(dsid);
    return refusal != 0 ? refusal : OrbDBDSEventStorage::writeEvent(event, dsid);
  }
  int refusal = 0;
  std::vector<unsigned int> written;
};

class OrbDBDSEventStorageRepair : public DatabaseStoreTest<RefusingDSStore> {
 protected:
  Caches& caches() { return (*store).*access(IdCaches()); }
  Highest& highest() { return (*store).*access(MaxIds()); }

  // The lines of a check, without the first and the last.
  std::vector<LogLine> findings() {
    std::vector<LogLine> lines = host().log();
    EXPECT_LE(2u, lines.size());
    EXPECT_EQ(info(0, "%s Starting consistency check", "checkConsistency"), lines.front());
    EXPECT_EQ(info(0, "%s Ending consistency check", "checkConsistency"), lines.back());
    return {lines.begin() + 1, lines.end() - 1};
  }

  static LogLine invalid(unsigned long eventId, int dsid, const char* text) {
    return error(32, "%s Event id %lu with data selection (%d) has an invalid event string: %s",
                 "checkConsistency", eventId, dsid, text);
  }
  static LogLine mismatch(unsigned long rowId, int dsid, unsigned long eventId) {
    return error(105,
                 "%s The event filename (%lu) with data selection (%d) does not match the event "
                 "ID (%lu).",
                 "checkConsistency", rowId, dsid, eventId);
  }
  static LogLine fixing(unsigned long rowId, unsigned long eventId) {
    return warning(105, "%s The event filename (%lu) does not match the event ID (%lu).  Fixing...",
                   "checkConsistency", rowId, eventId);
  }
  static LogLine tooLow(int dsid, unsigned long stored, unsigned long found) {
    return error(9,
                 "%s The max ID of data selection (%d) in the database (%lu) is smaller than the "
                 "largest ID found (%lu).",
                 "checkConsistency", dsid, stored, found);
  }
};

TEST_F(OrbDBDSEventStorageRepair, TheCachesAreFilledByDataSelection) {
  putDSRow(1, 3);
  putDSRow(2, 5);
  putDSRow(4, 3);
  build();
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1, 4)), Pair(5u, ElementsAre(2))));
  EXPECT_THAT(highest(), ElementsAre(Pair(3u, 4ul), Pair(5u, 2ul)));
}

TEST_F(OrbDBDSEventStorageRepair, RowsOfInvalidDataSelectionsStayOutOfTheCaches) {
  putDSRow(1, 3);
  putDSRow(2, 5);
  putMaxId(2, 3, 1);
  putMaxId(3, 5, 2);
  host().setDataSelectionValid(3, false);
  build();
  EXPECT_THAT(caches(), ElementsAre(Pair(5u, ElementsAre(2))));
  EXPECT_THAT(highest(), ElementsAre(Pair(5u, 2ul)));
  Event* event = nullptr;
  EXPECT_EQ(0, store->getNextEvent(0, &event, 3));
  EXPECT_EQ(nullptr, event);
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(host().log(), IsEmpty());
  EXPECT_TRUE(dsevents().has("1"));
}

TEST_F(OrbDBDSEventStorageRepair, TheCheckReadsRowsOfInvalidDataSelectionsToo) {
  putMaxId(2, 3, 9);
  build();
  putDSRow(1, 1, "nonsense", "3");
  host().setDataSelectionValid(3, false);
  EXPECT_EQ(1, store->checkConsistency(false));
  EXPECT_EQ(invalid(1, 3, "nonsense"), findings().back());
}

TEST_F(OrbDBDSEventStorageRepair, ARowKeepsTheValueOfTheRowBeforeForAMissingColumn) {
  build();
  putDSRow(1, 3);
  putDSRow(2, 5);
  putDSRow(4, 6);
  dsevents().removeColumn("2", "dataselection");
  dsevents().removeColumn("4", "eventid");
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1, 2)), Pair(6u, ElementsAre(2))));
  EXPECT_THAT(highest(), ElementsAre(Pair(3u, 2ul), Pair(6u, 2ul)));
}

TEST_F(OrbDBDSEventStorageRepair, StoredHighestIdsGoToTheDataSelectionOfTheLastRow) {
  putDSRow(1, 3);
  putDSRow(2, 5);
  putMaxId(2, 3, 100);
  putMaxId(3, 5, 2);
  build();
  EXPECT_THAT(highest(), ElementsAre(Pair(3u, 1ul), Pair(5u, 100ul)));
  EXPECT_EQ(101u, store->getNextEventID(3));
}

TEST_F(OrbDBDSEventStorageRepair, StoredHighestIdsAreReadInTheOrderOfTheDataSelections) {
  putDSRow(1, 9);
  putDSRow(2, 3);
  putDSRow(4, 5);
  build();
  store->populateIdCache();
  EXPECT_THAT(host().databaseCalls(),
              ::testing::IsSupersetOf({"ListRecordsStart(eventproperties, propname=maxid_3)",
                                       "ListRecordsStart(eventproperties, propname=maxid_5)",
                                       "ListRecordsStart(eventproperties, propname=maxid_9)"}));
  std::vector<std::string> filters;
  for (const std::string& call : host().callsNamed({"ListRecordsStart"})) {
    if (call.find("maxid_") != std::string::npos) filters.push_back(call);
  }
  EXPECT_TRUE(std::is_sorted(filters.begin(), filters.end()));
  EXPECT_EQ(3u, filters.size());
}

TEST_F(OrbDBDSEventStorageRepair, ALastRowOfAnInvalidDataSelectionLeavesStoredHighestIdsUnused) {
  putDSRow(1, 3);
  putDSRow(2, 5);
  putMaxId(2, 3, 100);
  host().setDataSelectionValid(5, false);
  build();
  EXPECT_THAT(highest(), ElementsAre(Pair(3u, 1ul)));
}

TEST_F(OrbDBDSEventStorageRepair, AnEmptyTableStartsAtOneWhateverIsStored) {
  putMaxId(2, 3, 100);
  build();
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(0, store->writeEvent(event.get(), 3));
  EXPECT_EQ(1u, event->getId());
  EXPECT_EQ("1", properties().value("2", "propvalue"));
}

TEST_F(OrbDBDSEventStorageRepair, WithoutItsTableNothingIsFilled) {
  putDSRow(1, 3);
  build();
  host().dropTable("dsevents");
  EXPECT_EQ(4, store->populateIdCache());
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1))));
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s Failed to get dsevents table in OrbDB", "populateIdCache")));
}

TEST_F(OrbDBDSEventStorageRepair, AnEmptyTableIsSound) {
  build();
  EXPECT_EQ(0, store->checkConsistency(true));
  EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(OrbDBDSEventStorageRepair, ASoundTableIsLeftAsItIs) {
  putDSRow(1, 3);
  putDSRow(2, 5);
  putMaxId(2, 3, 1);
  putMaxId(3, 5, 2);
  build();
  EXPECT_EQ(0, store->checkConsistency(true));
  EXPECT_THAT(findings(), IsEmpty());
  EXPECT_THAT(dsevents().keys(), ElementsAre("1", "2"));
}

TEST_F(OrbDBDSEventStorageRepair, AnUnreadableEventStringIsCountedAndItsRowKept) {
  putMaxId(2, 3, 9);
  build();
  putDSRow(1, 1, "nonsense", "3");
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_EQ(invalid(1, 3, "nonsense"), findings().back());
  EXPECT_TRUE(dsevents().has("1"));
}

TEST_F(OrbDBDSEventStorageRepair, AMismatchWeighsTwiceWhenItIsOnlyReported) {
  putMaxId(2, 3, 9);
  build();
  putDSRow(5, 7, capacityText(7, 1700000000), "3");
  EXPECT_EQ(2, store->checkConsistency(false));
  EXPECT_THAT(findings(), ElementsAre(mismatch(5, 3, 7)));
  EXPECT_TRUE(dsevents().has("5"));
}

TEST_F(OrbDBDSEventStorageRepair, AMismatchIsRepairedUnderANewIdOfItsDataSelection) {
  build();
  putMaxId(2, 3, 9);
  putDSRow(5, 7, capacityText(7, 1700000000, "alpha"), "3");
  store->populateIdCache();
  host().clearCalls();
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(findings(), ElementsAre(fixing(5, 7)));
  EXPECT_THAT(store->written, ElementsAre(3u));
  EXPECT_THAT(dsevents().keys(), ElementsAre("10"));
  EXPECT_EQ("3", dsevents().value("10", "dataselection"));
  EXPECT_EQ(capacityText(10, 1700000000, "alpha"), dsevents().value("10", "eventstring"));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(7, 10))));
}

TEST_F(OrbDBDSEventStorageRepair, ARefusedRewriteKeepsTheOldRow) {
  putMaxId(2, 3, 9);
  build();
  putDSRow(5, 7, capacityText(7, 1), "3");
  store->refusal = 4;
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(dsevents().keys(), ElementsAre("5"));
}

TEST_F(OrbDBDSEventStorageRepair, AnUnreadableMismatchedRowCountsForBothAndStays) {
  putMaxId(2, 3, 9);
  build();
  putDSRow(5, 7, "nonsense", "3");
  EXPECT_EQ(2, store->checkConsistency(true));
  EXPECT_EQ(fixing(5, 7), findings().back());
  host().clearCalls();
  EXPECT_EQ(3, store->checkConsistency(false));
  EXPECT_EQ(mismatch(5, 3, 7), findings().back());
  EXPECT_TRUE(dsevents().has("5"));
  EXPECT_THAT(store->written, IsEmpty());
}

TEST_F(OrbDBDSEventStorageRepair, TooLowStoredHighestIdsAreReportedInOrderAndLeft) {
  putDSRow(1, 5);
  putDSRow(8, 3);
  putMaxId(2, 3, 2);
  build();
  EXPECT_EQ(2, store->checkConsistency(true));
  EXPECT_THAT(findings(), ElementsAre(tooLow(3, 2, 8), tooLow(5, 0, 1)));
  EXPECT_EQ("2", properties().value("2", "propvalue"));
}

TEST_F(OrbDBDSEventStorageRepair, WithoutItsTableThereIsOneProblemAndNoEnd) {
  build();
  host().dropTable("dsevents");
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(
      host().log(),
      ElementsAre(info(0, "%s Starting consistency check", "checkConsistency"),
                  error(4, "%s Failed to get dsevents table in OrbDB", "checkConsistency")));
}

TEST_F(OrbDBDSEventStorageRepair, WithoutThePropertiesTableThereIsOneProblemMore) {
  putDSRow(1, 3);
  build();
  host().dropTable("eventproperties");
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(findings(), ElementsAre(noPropertiesTable("checkConsistency")));
}

TEST_F(OrbDBDSEventStorageRepair, TheDataSelectionIsKeptFromTheRowBeforeTheIdsAreNot) {
  putMaxId(2, 3, 9);
  build();
  putDSRow(1, 3);
  putDSRow(2, 5);
  dsevents().removeColumn("2", "dataselection");
  dsevents().removeColumn("2", "eventid");
  EXPECT_EQ(2, store->checkConsistency(false));
  EXPECT_THAT(findings(), ElementsAre(mismatch(2, 3, 0)));
}

TEST_F(OrbDBDSEventStorageRepair, AnUnusableStoreCanBeFilledAndChecked) {
  putDSRow(1, 3);
  putMaxId(2, 3, 1);
  configureWithoutDirectory();
  build();
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1))));
  EXPECT_EQ(0, store->checkConsistency(false));
}

TEST_F(OrbDBDSEventStorageRepair, ARowWhoseDataSelectionCannotBeReadIsLeftAloneAndNotCached) {
  putMaxId(2, 3, 9);
  putMaxId(3, 4, 9);
  putDSRow(1, 3);
  putDSRow(5, 7, capacityText(7, 1), "4");
  dsevents().makeUnreadable("5", "dataselection");
  build();
  EXPECT_EQ(1, store->checkConsistency(true));
  EXPECT_THAT(store->written, IsEmpty());
  EXPECT_THAT(dsevents().keys(), ElementsAre("1", "5"));
  EXPECT_THAT(caches(), ElementsAre(Pair(3u, ElementsAre(1))));
}

}  // namespace
}  // namespace EventSystemTest
