// How the global database store comes up: tables, audit path, cache and repair, in this order.

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class OrbDBEventStorageConstruction : public DatabaseStoreTest<OrbDBEventStorage> {
 protected:
  // Builds the store and keeps the calls that this made.
  void construct() { store = std::make_unique<OrbDBEventStorage>(); }

  bool initialized() { return (*store).*access(Initialized()); }
  std::string auditPath() { return (*store).*access(AuditDbPath()); }

  static LogLine importLine() {
    return info(0, "%s orbd init poping off-line events.", "PopuAuditEventDB");
  }
  static LogLine startLine() {
    return info(0, "%s Starting consistency check", "checkConsistency");
  }
  static LogLine endLine() { return info(0, "%s Ending consistency check", "checkConsistency"); }
  static LogLine eventsMissing() {
    return info(0, "%s Events table missing.  Adding from ini file: %s", "OrbDBEventStorage",
                kIniPath);
  }
  static LogLine propertiesMissing() {
    return info(0, "%s EventProperties table missing.  Adding from ini file: %s",
                "OrbDBEventStorage", kIniPath);
  }
};

TEST_F(OrbDBEventStorageConstruction, LooksForTablesFillsTheCacheImportsAndRepairsInThisOrder) {
  construct();
  EXPECT_TRUE(initialized());
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(events)", "GetTable(eventproperties)", "GetTable(events)",
                          "ListRecordsStart(events, NULL)", "GetTable(eventproperties)",
                          "GetValBigInt(eventproperties, 1, propvalue)", "GetTable(events)",
                          "ListRecordsStart(events, columns, NULL)", "GetTable(eventproperties)",
                          "GetValBigInt(eventproperties, 1, propvalue)"));
  EXPECT_THAT(host().log(), ElementsAre(importLine(), startLine(), endLine()));
}

// Numbered from the rows that are left, an id of a deleted event would be given again.
TEST_F(OrbDBEventStorageConstruction, IsRefusedWhereTheStoredMaximumIsThereAndCannotBeRead) {
  Fault fault;
  fault.call = "GetValBigInt";
  host().inject(fault);
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_THAT(host().log(), ElementsAre(error(4,
                                              "%s Failed to read the max event id in the "
                                              "eventproperties table",
                                              "populateIdCache")));
}

TEST_F(OrbDBEventStorageConstruction, GoesOnWithoutAStoredMaximumWhereThereIsNone) {
  host().table("eventproperties").remove("1");
  construct();
  EXPECT_TRUE(initialized());
}

TEST_F(OrbDBEventStorageConstruction, ReadsTheAuditDirectoryAfterTheTablesWereLookedFor) {
  construct();
  EXPECT_EQ("/nonexistent/fake/audit/audit.db", auditPath());
  const auto calls = host().callsNamed({"lock", "InifileGetValueA", "GetTable"});
  ASSERT_LE(6u, calls.size());
  EXPECT_THAT(std::vector<std::string>(calls.begin(), calls.begin() + 3),
              ElementsAre("lock()", "GetTable(events)", "GetTable(eventproperties)"));
  EXPECT_EQ("lock()", calls[3]);
  EXPECT_THAT(calls[4], StartsWith("InifileGetValueA(fake audit section, fake audit directory "
                                   "entry, "));
  EXPECT_THAT(calls[4], HasSubstr("\"\", /fake/host.ini)"));
  EXPECT_EQ("GetTable(events)", calls[5]);
}

TEST_F(OrbDBEventStorageConstruction, NeverOpensTheDatabaseItself) {
  construct();
  EXPECT_EQ(0u, host().countCalls("open"));
}

TEST_F(OrbDBEventStorageConstruction, WithoutADirectoryNothingIsTouched) {
  configureWithoutDirectory();
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_EQ("", auditPath());
  EXPECT_EQ(0u, host().countCalls(CallKind::kDatabase));
  EXPECT_EQ(0u, host().countCalls("InifileGetValueA"));
  EXPECT_EQ(1u, host().countCalls("lock"));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(OrbDBEventStorageConstruction, CreatesAMissingEventsTable) {
  host().dropTable("events");
  construct();
  EXPECT_TRUE(initialized());
  EXPECT_TRUE(host().hasTable("events"));
  EXPECT_THAT(host().callsNamed({"CheckAddTable", "insertRecordsFromIni"}),
              ElementsAre("CheckAddTable(events, /fake/config/orbdb.ini)"));
  EXPECT_THAT(host().log(), ElementsAre(eventsMissing(), importLine(), startLine(), endLine()));
}

TEST_F(OrbDBEventStorageConstruction, CreatesAMissingPropertiesTableWithItsInitialRows) {
  host().dropTable("eventproperties");
  construct();
  EXPECT_TRUE(initialized());
  EXPECT_EQ("0", maxId());
  EXPECT_THAT(host().callsNamed({"CheckAddTable", "insertRecordsFromIni"}),
              ElementsAre("CheckAddTable(eventproperties, /fake/config/orbdb.ini)",
                          "insertRecordsFromIni(eventproperties, /fake/config/orbdb.ini)"));
  EXPECT_THAT(host().log(), ElementsAre(propertiesMissing(), importLine(), startLine(), endLine()));
}

TEST_F(OrbDBEventStorageConstruction, InsertsNoInitialRowsIntoATableThatIsThere) {
  putMaxId(40);
  construct();
  EXPECT_EQ("40", maxId());
  EXPECT_EQ(0u, host().countCalls("insertRecordsFromIni"));
}

TEST_F(OrbDBEventStorageConstruction, WithoutItsEventsTableItStaysUnusableAndDoesNothingMore) {
  host().dropTable("events");
  fail("CheckAddTable", "events, ");
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_EQ("/nonexistent/fake/audit/audit.db", auditPath());
  EXPECT_THAT(host().log(),
              ElementsAre(eventsMissing(), error(4, "%s Failed to add the events table in OrbDB",
                                                 "OrbDBEventStorage")));
  EXPECT_THAT(host().databaseCalls(),
              ElementsAre("GetTable(events)", "CheckAddTable(events, /fake/config/orbdb.ini)",
                          "GetTable(eventproperties)"));
}

TEST_F(OrbDBEventStorageConstruction, TriesTheInitialRowsEvenIfTheirTableWasNotCreated) {
  host().dropTable("eventproperties");
  fail("CheckAddTable");
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_THAT(
      host().log(),
      ElementsAre(
          propertiesMissing(),
          error(4, "%s Failed to add the eventproperties table in OrbDB", "OrbDBEventStorage"),
          error(4, "%s Failed to add initial values for eventproperties", "OrbDBEventStorage")));
}

TEST_F(OrbDBEventStorageConstruction, WithoutItsInitialRowsItStaysUnusable) {
  host().dropTable("eventproperties");
  fail("insertRecordsFromIni");
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_THAT(host().log(),
              ElementsAre(propertiesMissing(),
                          error(4, "%s Failed to add initial values for eventproperties",
                                "OrbDBEventStorage")));
}

TEST_F(OrbDBEventStorageConstruction, BothTablesAreTriedEvenIfTheFirstFails) {
  host().dropTable("events");
  host().dropTable("eventproperties");
  fail("CheckAddTable", "events, ");
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_TRUE(host().hasTable("eventproperties"));
}

// Its numbers would start anew, below ids that were handed out.
TEST_F(OrbDBEventStorageConstruction, AStoreWhoseCacheCannotBeFilledStaysUnusable) {
  for (const char* table : {"events", "eventproperties"}) {
    host().reset();
    putRow(5);
    putMaxId(20);
    Fault fault;
    fault.call = "GetTable";
    fault.arguments = table;
    fault.nth = 2;
    host().inject(fault);
    construct();
    EXPECT_FALSE(initialized());
    EXPECT_THAT(host().log(),
                ElementsAre(std::string(table) == "events" ? noEventsTable("populateIdCache")
                                                           : noPropertiesTable("populateIdCache")));
    const std::unique_ptr<Event> event = newCapacityEvent();
    EXPECT_EQ(4, store->writeEvent(event.get()));
    EXPECT_EQ("20", maxId());
  }
}

TEST_F(OrbDBEventStorageConstruction, AnAbsentAuditDirectoryIsTheEmptyText) {
  FakeConfiguration configuration;
  configuration.auditDirectory.reset();
  host().configure(configuration);
  construct();
  EXPECT_EQ("/audit.db", auditPath());
}

TEST_F(OrbDBEventStorageConstruction, PathsThatDoNotFitAreCut) {
  FakeConfiguration configuration;
  configuration.databaseDirectory = "/" + std::string(4094, 'd');
  configuration.auditDirectory = "/" + std::string(4090, 'a');
  host().configure(configuration);
  host().dropTable("events");
  construct();
  EXPECT_FALSE(initialized());
  EXPECT_THAT(host().callsNamed({"CheckAddTable"}),
              ElementsAre("CheckAddTable(events, " + configuration.databaseDirectory + ")"));
  EXPECT_EQ(*configuration.auditDirectory + "/aud", auditPath());
}

TEST_F(OrbDBEventStorageConstruction, NothingMakesAnUnusableStoreUsable) {
  configureWithoutDirectory();
  construct();
  host().configure(FakeConfiguration());
  store->populateIdCache();
  store->checkConsistency(true);
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, store->writeEvent(event.get()));
  EXPECT_FALSE(initialized());
}

TEST_F(OrbDBEventStorageConstruction, NumbersGoOnAboveTheStoredHighestId) {
  putRow(3);
  putMaxId(9);
  construct();
  EXPECT_EQ(10u, store->getNextEventID());
}

TEST_F(OrbDBEventStorageConstruction, TheAuditImportSeesAUsableStoreWithAFilledCache) {
  putRow(3);
  putMaxId(3);
  construct();
  EXPECT_EQ(importLine(), host().log().at(0));
  EXPECT_THAT((*store).*access(IdCache()), ElementsAre(3));
}

}  // namespace
}  // namespace EventSystemTest
