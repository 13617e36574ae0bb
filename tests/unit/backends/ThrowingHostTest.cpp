// Host calls that throw inside the database stores: each counts as that one call failing, is
// logged with its text, and the operation goes on.

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ThrowingHost : public DatabaseStoreTest<OrbDBEventStorage>,
                     public ::testing::WithParamInterface<FaultMode> {
 protected:
  // Lets the n-th call of that name from now on throw.
  void throwIn(const std::string& call, const std::string& arguments = "", std::size_t nth = 1) {
    Fault fault;
    fault.nth = nth;
    fault.mode = GetParam();
    fault.call = call;
    fault.arguments = arguments;
    fault.what = "disk on fire";
    host().inject(fault);
  }

  // The first line is the throwing call's; the lines behind it are returned.
  static std::vector<LogLine> afterTheException() {
    const std::vector<LogLine> lines = host().log();
    if (lines.empty()) {
      ADD_FAILURE() << "the exception was not logged";
      return {};
    }
    EXPECT_EQ("error", lines[0].level);
    EXPECT_EQ(4, lines[0].code);
    EXPECT_EQ(GetParam() == FaultMode::kThrow,
              lines[0].text.find("disk on fire") != std::string::npos);
    EXPECT_EQ(1u, host().faultsFired());
    return {lines.begin() + 1, lines.end()};
  }

  int write() {
    const std::unique_ptr<Event> event = newCapacityEvent();
    return store->writeEvent(event.get());
  }
  int read(unsigned long id) {
    Event* event = nullptr;
    const int result = store->readEvent(id, &event);
    delete event;
    return result;
  }
};

TEST_P(ThrowingHost, AThrowingTableLookUpIsAMissingTable) {
  build();
  throwIn("GetTable", "eventproperties");
  EXPECT_EQ(4, write());
  EXPECT_THAT(afterTheException(),
              ElementsAre(noPropertiesTable("getNewID"),
                          error(4, "%s Failed to get a new event id", "writeEvent")));
}

TEST_P(ThrowingHost, AThrowingReadOfTheHighestIdDoesNotMeanThatThereIsNone) {
  build();
  host().table("eventproperties").removeColumn("1", "propname");  // the row is not listed
  EXPECT_EQ(0, store->populateIdCache());
  throwIn("GetValBigInt");
  EXPECT_EQ(4, store->populateIdCache());
}

TEST_P(ThrowingHost, AThrowingDatabaseObjectIsAMissingTable) {
  build();
  throwIn("Instance");
  EXPECT_EQ(67, read(1));
  EXPECT_THAT(afterTheException(), ElementsAre(noEventsTable("readEvent")));
}

TEST_P(ThrowingHost, AThrowingHandleCopyIsAMissingTable) {
  build();
  throwIn("copy", "events");
  EXPECT_EQ(67, read(1));
  EXPECT_THAT(afterTheException(), ElementsAre(noEventsTable("readEvent")));
}

TEST_P(ThrowingHost, AThrowingAddIsARefusedRecord) {
  build();
  throwIn("addRecord");
  EXPECT_EQ(4, write());
  ASSERT_THAT(afterTheException(), SizeIs(1));
  EXPECT_THAT(host().log()[1].text, HasSubstr("writeEvent Failed to record the new event"));
  EXPECT_THAT((*store).*access(IdCache()), IsEmpty());
}

TEST_P(ThrowingHost, AThrowingUpdateStillGivesAUsableId) {
  build();
  throwIn("updateRecord");
  EXPECT_EQ(0, write());
  EXPECT_THAT(afterTheException(),
              ElementsAre(warning(4,
                                  "%s Failed to set the max event id in the eventproperties "
                                  "table",
                                  "getNewID")));
  EXPECT_TRUE(events().has("1"));
}

TEST_P(ThrowingHost, AThrowingEscapeStoresNothing) {
  build();
  throwIn("QMStringEscapeA");
  EXPECT_EQ(4, write());
  EXPECT_EQ(1u, host().faultsFired());
  EXPECT_EQ(0u, events().size());
}

TEST_P(ThrowingHost, AThrowingReadKeepsTheRow) {
  for (const char* call : {"readRecord", "GetValStr"}) {
    host().reset();
    putRow(5);
    build();
    throwIn(call);
    EXPECT_EQ(4, read(5));
    EXPECT_THAT(afterTheException(), ElementsAre(readFailed(5)));
    EXPECT_TRUE(events().has("5"));
  }
}

TEST_P(ThrowingHost, AThrowingDeleteIsAFailedDelete) {
  putRow(5);
  build();
  throwIn("deleteRecord");
  store->deleteEvent(5);
  EXPECT_THAT(afterTheException(),
              ElementsAre(error(4, "%s Failed to delete the event from OrbDB", "deleteEvent")));
  EXPECT_THAT((*store).*access(IdCache()), IsEmpty());
}

TEST_P(ThrowingHost, AThrowingWalkEndsTheWalk) {
  putRow(5);
  putRow(6);
  putMaxId(6);
  build();
  throwIn("ListRecordsNext");
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT(afterTheException(), IsEmpty());
  EXPECT_THAT((*store).*access(IdCache()), ElementsAre(5));
}

TEST_P(ThrowingHost, AThrowingColumnIsAMissingColumn) {
  putRow(5);
  putRow(6);
  putMaxId(6);
  build();
  throwIn("getcolumn", "", 2);
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_THAT((*store).*access(IdCache()), ElementsAre(5));
  EXPECT_THAT(afterTheException(), IsEmpty());
}

TEST_P(ThrowingHost, AThrowingColumnValueInTheCheckIsAMissingValue) {
  putRow(5);
  putMaxId(5);
  build();
  throwIn("CColumn::GetDataStr");
  EXPECT_EQ(1, store->checkConsistency(false));
  EXPECT_EQ(1u, host().faultsFired());
}

TEST_P(ThrowingHost, ConstructionSurvivesAThrowingTableCreation) {
  host().dropTable("events");
  throwIn("CheckAddTable");
  ASSERT_NO_THROW(store = std::make_unique<OrbDBEventStorage>());
  EXPECT_FALSE((*store).*access(Initialized()));
  EXPECT_EQ(error(4, "%s Failed to add the events table in OrbDB", "OrbDBEventStorage"),
            host().log().back());
}

TEST_P(ThrowingHost, ADataSelectionThatCannotBeValidatedIsInvalid) {
  putDSRow(1, 3);
  putDSRow(2, 5);
  OrbDBDSEventStorage dsStore;
  (dsStore.*access(IdCaches())).clear();
  host().clearCalls();
  throwIn("QMDSIDValidate");
  EXPECT_EQ(0, dsStore.populateIdCache());
  EXPECT_THAT(dsStore.*access(IdCaches()), ElementsAre(::testing::Pair(5u, ElementsAre(2))));
  afterTheException();
}

TEST_P(ThrowingHost, AThrowingOpenIsAnUnavailableDatabase) {
  OrbDBDSEventStorage dsStore;
  host().clearCalls();
  throwIn("open");
  unsigned int dsid = 77;
  EXPECT_EQ(67, dsStore.getFirstDsid(dsid));
  EXPECT_EQ(0u, dsid);
  afterTheException();
}

INSTANTIATE_TEST_SUITE_P(Exceptions, ThrowingHost,
                         ::testing::Values(FaultMode::kThrow, FaultMode::kThrowOdd),
                         [](const ::testing::TestParamInfo<FaultMode>& instance) {
                           return instance.param == FaultMode::kThrow ? "Standard" : "Other";
                         });

}  // namespace
}  // namespace EventSystemTest
