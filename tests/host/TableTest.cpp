#include <sqlite3.h>

#include <array>

#include "EventSystem/platform/HostConfig.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

class Table : public HostTest {
 protected:
  Table() { startWithTables(); }
};

TEST_F(Table, IsMissingUntilItIsAdded) {
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().GetTable("nothing"), nullptr);
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().GetTable(nullptr), nullptr);
  EXPECT_NE(OrbDB::COrbDatabase::Instance().CheckAddTable("nothing", definitions().c_str()), 0);
  EXPECT_NE(log().find("has no section [nothing]"), std::string::npos) << log();
}

TEST_F(Table, OfDataSelectionsIsThereFromTheStart) {
  EXPECT_TRUE(keysOf("dataselection").empty());
}

TEST_F(Table, GivesBackARecordField) {
  EXPECT_EQ(open("events").addRecord("7,8,5,1700000000,\"say \"\"hi\"\", now\"", nullptr, 0), 0);
  OrbDB::CTable row = open("events");
  ASSERT_EQ(row.readRecord("7"), 0);
  long number = 0;
  int type = 0;
  std::array<char, 64> text{};
  EXPECT_EQ(row.GetValBigInt("eventid", number), 0);
  EXPECT_EQ(number, 8);
  EXPECT_EQ(row.GetValInt("type", type), 0);
  EXPECT_EQ(type, 5);
  EXPECT_EQ(row.GetValStr("eventstring", text.data(), text.size()), 0);
  EXPECT_STREQ(text.data(), "say \"hi\", now");
}

TEST_F(Table, CutsTextToTheBuffer) {
  ASSERT_EQ(open("events").addRecord(eventRecord(1, "abcdef").c_str(), nullptr, 0), 0);
  OrbDB::CTable row = open("events");
  ASSERT_EQ(row.readRecord("1"), 0);
  std::array<char, 8> text{};
  text.fill('x');
  EXPECT_EQ(row.GetValStr("eventstring", text.data(), 4), 0);
  EXPECT_STREQ(text.data(), "abc");
  EXPECT_EQ(text[4], 'x');
  EXPECT_NE(row.GetValStr("eventstring", text.data(), 0), 0);
}

TEST_F(Table, LeavesANumberAloneThatItDoesNotHave) {
  ASSERT_EQ(open("events").addRecord("1,5000000000,5,1,\"text\"", nullptr, 0), 0);
  OrbDB::CTable row = open("events");
  long wide = -1;
  int narrow = -1;
  EXPECT_NE(row.GetValBigInt("eventid", wide), 0) << "no row is current";
  ASSERT_EQ(row.readRecord("1"), 0);
  EXPECT_NE(row.GetValInt("eventid", narrow), 0) << "does not fit";
  EXPECT_NE(row.GetValBigInt("eventstring", wide), 0) << "is no number";
  EXPECT_NE(row.GetValBigInt("nothing", wide), 0);
  EXPECT_NE(row.GetValBigInt("2", "eventid", wide), 0) << "no such row";
  EXPECT_EQ(wide, -1);
  EXPECT_EQ(narrow, -1);
  EXPECT_EQ(row.GetValBigInt("1", "eventid", wide), 0);
  EXPECT_EQ(wide, 5000000000);
}

TEST_F(Table, ReadsAnotherRowWithoutMakingItCurrent) {
  ASSERT_EQ(open("events").addRecord(eventRecord(1, "one").c_str(), nullptr, 0), 0);
  ASSERT_EQ(open("events").addRecord(eventRecord(2, "two").c_str(), nullptr, 0), 0);
  OrbDB::CTable row = open("events");
  ASSERT_EQ(row.readRecord("1"), 0);
  long id = 0;
  EXPECT_EQ(row.GetValBigInt("2", "id", id), 0);
  EXPECT_EQ(id, 2);
  EXPECT_EQ(row.GetValBigInt("id", id), 0);
  EXPECT_EQ(id, 1);
}

TEST_F(Table, HasNoCurrentRowAfterAFailedRead) {
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  OrbDB::CTable row = open("events");
  ASSERT_EQ(row.readRecord("1"), 0);
  EXPECT_NE(row.readRecord("2"), 0);
  std::array<char, 8> text{'x'};
  EXPECT_NE(row.GetValStr("eventstring", text.data(), text.size()), 0);
  EXPECT_STREQ(text.data(), "");
  EXPECT_EQ(row.getcolumn("id"), nullptr);
}

TEST_F(Table, CopiesNeitherTheCurrentRowNorTheWalk) {
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  ASSERT_EQ(open("events").addRecord(eventRecord(2).c_str(), nullptr, 0), 0);
  OrbDB::CTable rows = open("events");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  OrbDB::CTable copy(rows);
  long id = 0;
  EXPECT_NE(copy.GetValBigInt("id", id), 0);
  EXPECT_NE(copy.ListRecordsNext(nullptr), 0);
  EXPECT_EQ(rows.ListRecordsNext(nullptr), 0);
}

TEST_F(Table, UpdatesOnlyTheNamedColumns) {
  EXPECT_EQ(open("eventproperties").updateRecord("1", "propname=maxid,propvalue=41"), 0);
  EXPECT_EQ(open("eventproperties").updateRecord("1", "propvalue=42"), 0);
  EXPECT_EQ(textOf("eventproperties", "1", "propname"), "maxid");
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "42");
}

TEST_F(Table, FailsToUpdateOrDeleteARowThatDoesNotExist) {
  EXPECT_GT(open("eventproperties").updateRecord("77", "propvalue=42"), 0);
  EXPECT_GT(open("events").deleteRecord("77"), 0);
  EXPECT_NE(log().find("no row has this key"), std::string::npos) << log();
}

TEST_F(Table, DeletesARow) {
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  ASSERT_EQ(open("events").addRecord(eventRecord(2).c_str(), nullptr, 0), 0);
  EXPECT_EQ(open("events").deleteRecord("1"), 0);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{2}));
}

TEST_F(Table, NumbersRowsAndNeverGivesANumberAgain) {
  OrbDB::CTable table = open("eventproperties");
  int key = 0;
  EXPECT_EQ(table.addRecord("propname=maxid_3,propvalue=7", &key, 0), 0);
  EXPECT_EQ(key, 2);
  EXPECT_EQ(table.deleteRecord("2"), 0);
  EXPECT_EQ(table.addRecord("propname=maxid_4,propvalue=7", &key, 0), 0);
  EXPECT_EQ(key, 3);
  EXPECT_EQ(table.addRecord("propname=maxid_5,propvalue=7", nullptr, 0), 0);
}

TEST_F(Table, GivesNoNumberBeyondTheKeysType) {
  OrbDB::CTable table = open("eventproperties");
  int key = 5;
  ASSERT_EQ(table.addRecord("2147483647,last,7", &key, 0), 0);
  EXPECT_EQ(key, 2147483647);
  EXPECT_EQ(table.addRecord("propname=one more,propvalue=7", &key, 0), SQLITE_FULL);
  EXPECT_EQ(key, 2147483647);
  EXPECT_EQ(keysOf("eventproperties"), (std::vector<long>{1, 2147483647}));
}

TEST_F(Table, KeepsItsRowsFromOneHostToTheNext) {
  ASSERT_EQ(open("events").addRecord(eventRecord(5, "kept").c_str(), nullptr, 0), 0);
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=5"), 0);
  start();
  EXPECT_EQ(textOf("events", "5", "eventstring"), "kept");
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "5");
}

TEST_F(Table, ReadsLikeAnOrdinaryOneInSqlite) {
  ASSERT_EQ(open("events").addRecord(eventRecord(5, "seen").c_str(), nullptr, 0), 0);
  EXPECT_EQ(sqlite(database(), "SELECT eventstring FROM events WHERE eventid = 5"), "seen");
  EXPECT_EQ(sqlite(database(),
                   "SELECT typeof(date) || typeof(id) || typeof(eventstring) "
                   "FROM events"),
            "integerintegertext");
}

TEST_F(Table, KeepsBytesThatAreNoText) {
  const std::string bytes = "\xff\xfe\x01 \xc3(";
  ASSERT_EQ(open("events").addRecord(eventRecord(5, bytes).c_str(), nullptr, 0), 0);
  EXPECT_EQ(textOf("events", "5", "eventstring"), bytes);
}

TEST_F(Table, HandleThatOutlivesTheHostFailsAndDoesNotCrash) {
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  ASSERT_EQ(open("events").addRecord(eventRecord(2).c_str(), nullptr, 0), 0);
  OrbDB::CTable rows = open("events");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  stop();
  EXPECT_NE(rows.ListRecordsNext(nullptr), 0);
  EXPECT_NE(rows.readRecord("1"), 0);
  EXPECT_GT(rows.addRecord(eventRecord(3).c_str(), nullptr, 0), 0);
  EXPECT_GT(rows.updateRecord("1", "type=1"), 0);
  EXPECT_NE(rows.deleteRecord("1"), 0);
}

TEST_F(Table, OfDataSelectionsSaysWhichExist) {
  OrbDB::CTable table = open("dataselection");
  ASSERT_EQ(table.addRecord("3,9,\"three\"", nullptr, 0), 0);
  ASSERT_EQ(table.addRecord("id=-1294967296,dstypeid=4", nullptr, 0), 0);
  EXPECT_NE(QMDSIDValidate(3), 0);
  EXPECT_NE(QMDSIDValidate(3000000000U), 0);
  EXPECT_EQ(QMDSIDValidate(4), 0);
  OrbDB::CTable walk = open("dataselection");
  ASSERT_EQ(walk.ListRecordsStart(nullptr), 0);
  EXPECT_NE(QMDSIDValidate(3), 0) << "also while a walk is open";
  stop();
  EXPECT_EQ(QMDSIDValidate(3), 0);
}

class HighestId : public HostTest {
 protected:
  HighestId() {
    startWithTables();
    for (const char* row : {"propname=maxid_3,propvalue=7", "propname=maxid_5,propvalue=9"}) {
      EXPECT_EQ(open("eventproperties").addRecord(row, nullptr, 0), 0);
    }
  }

  // As the library looks for the rows of data selections: "id of selection, " for each.
  static std::string count() {
    std::string found;
    OrbDB::CTable rows = open("dsevents");
    for (int end = rows.ListRecordsStart(nullptr); end == 0; end = rows.ListRecordsNext(nullptr)) {
      std::array<char, 32> id{};
      std::array<char, 32> selection{};
      EXPECT_EQ(rows.getcolumn("eventid")->GetDataStr(id.data(), id.size()), 0);
      EXPECT_EQ(rows.getcolumn("dataselection")->GetDataStr(selection.data(), selection.size()), 0);
      found += std::string(id.data()) + " of " + selection.data() + ", ";
    }
    return found;
  }

  static int add(long id) {
    return open("dsevents").addRecord((eventRecord(id) + ",3").c_str(), nullptr, 0);
  }
};

TEST_F(HighestId, OfTheDataSelectionsEndsTheWalkThatTheLibraryCountsWith) {
  EXPECT_EQ(count(), "9 of 0, ");
  ASSERT_EQ(add(4), 0);
  EXPECT_EQ(count(), "4 of 3, 9 of 0, ");
  EXPECT_NE(QMDSIDValidate(0), 0) << "it counts";
}

TEST_F(HighestId, OfTheDataSelectionsIsInNoOtherWalk) {
  ASSERT_EQ(add(4), 0);
  OrbDB::CTable rows = open("dsevents");
  std::vector<OrbDB::CColumn*> columns;
  ASSERT_EQ(rows.ListRecordsStart(columns, nullptr), 0);
  EXPECT_NE(rows.ListRecordsNext(columns, nullptr), 0);
  EXPECT_EQ(keysOf("dsevents", "dataselection=3"), std::vector<long>{4});
  EXPECT_TRUE(keysOf("dsevents", "dataselection=0").empty());
  EXPECT_TRUE(keysOf("events").empty());
  EXPECT_NE(rows.readRecord("9"), 0);
  EXPECT_EQ(sqlite(database(), "SELECT count(*) FROM dsevents"), "1");
}

TEST_F(HighestId, OfTheDataSelectionsIsNotThereBeforeOneWasGiven) {
  ASSERT_EQ(open("eventproperties").deleteRecord("2"), 0);
  ASSERT_EQ(open("eventproperties").deleteRecord("3"), 0);
  EXPECT_EQ(count(), "");
}

}  // namespace
}  // namespace EventSystemTest
