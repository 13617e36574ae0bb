#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <string>
#include <vector>

#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

class Walk : public HostTest {
 protected:
  Walk() {
    useDurability("relaxed");
    startWithTables();
  }

  void addEvents(long first, long last, const std::string& text = "text") {
    OrbDB::CTable table = open("events");
    for (long id = first; id <= last; ++id) {
      ASSERT_EQ(table.addRecord(eventRecord(id, text).c_str(), nullptr, 0), 0);
    }
  }
};

TEST_F(Walk, OverAnEmptyTableHasNoRow) {
  OrbDB::CTable rows = open("events");
  EXPECT_NE(rows.ListRecordsStart(nullptr), 0);
  EXPECT_NE(rows.ListRecordsNext(nullptr), 0);
}

TEST_F(Walk, GoesInKeyOrderAndEnds) {
  for (const long id : {9, 3, 5, -1}) addEvents(id, id);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{-1, 3, 5, 9}));
  OrbDB::CTable rows = open("events");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  for (int i = 0; i < 3; ++i) ASSERT_EQ(rows.ListRecordsNext(nullptr), 0);
  long id = 0;
  EXPECT_NE(rows.ListRecordsNext(nullptr), 0);
  EXPECT_NE(rows.GetValBigInt("id", id), 0) << "no row is current after the last one";
  EXPECT_EQ(rows.getcolumn("id"), nullptr);
  EXPECT_NE(rows.ListRecordsNext(nullptr), 0);
}

TEST_F(Walk, SeesTheTableAsItWasWhenItStarted) {
  addEvents(1, 4);
  OrbDB::CTable rows = open("events");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  addEvents(5, 6);
  ASSERT_EQ(open("events").deleteRecord("3"), 0);
  ASSERT_EQ(open("events").updateRecord("4", "eventstring=changed"), 0);
  std::vector<long> seen;
  std::array<char, 32> text{};
  for (int end = 0; end == 0; end = rows.ListRecordsNext(nullptr)) {
    long id = 0;
    EXPECT_EQ(rows.GetValBigInt("id", id), 0);
    EXPECT_EQ(rows.GetValStr("eventstring", text.data(), text.size()), 0);
    EXPECT_STREQ(text.data(), "text");
    seen.push_back(id);
  }
  EXPECT_EQ(seen, (std::vector<long>{1, 2, 3, 4}));
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1, 2, 4, 5, 6}));
}

TEST_F(Walk, SeesAWriteThatWaitsForTheNextOne) {
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=7"), 0);
  OrbDB::CTable rows = open("eventproperties");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  long value = 0;
  EXPECT_EQ(rows.GetValBigInt("propvalue", value), 0);
  EXPECT_EQ(value, 7);
}

TEST_F(Walk, FindsTheRowsThatMatch) {
  OrbDB::CTable table = open("dataselection");
  ASSERT_EQ(table.addRecord("1,9,\"a\"", nullptr, 0), 0);
  ASSERT_EQ(table.addRecord("2,4,\"b=c\"", nullptr, 0), 0);
  ASSERT_EQ(table.addRecord("3,9,\"x,\"\"y\"\"\"", nullptr, 0), 0);
  EXPECT_EQ(keysOf("dataselection", "dstypeid=9"), (std::vector<long>{1, 3}));
  EXPECT_EQ(keysOf("dataselection", "id=2"), (std::vector<long>{2}));
  EXPECT_EQ(keysOf("dataselection", "name=b=c"), (std::vector<long>{2}));
  EXPECT_EQ(keysOf("dataselection", "name=\"x,\"\"y\"\"\""), (std::vector<long>{3}));
  EXPECT_EQ(keysOf("eventproperties", "propname=maxid"), (std::vector<long>{1}));
  EXPECT_TRUE(keysOf("eventproperties", "propname=maxid_3").empty());
  EXPECT_TRUE(keysOf("dataselection", "name=a' OR '1'='1").empty());
}

TEST_F(Walk, WithABadFilterHasNoRowsAndIsLogged) {
  addEvents(1, 2);
  for (const char* filter :
       {"nothing=1", "id", "", "id=x", "id=", "eventstring=\"cut", "type=\"5\",id=1", "=5"}) {
    const std::size_t logged = log().size();
    EXPECT_NE(open("events").ListRecordsStart(filter), 0) << filter;
    EXPECT_NE(log().substr(logged).find("table events: no rows are listed: "), std::string::npos)
        << filter << log().substr(logged);
  }
}

TEST_F(Walk, GoesOnOnlyWithItsOwnFilter) {
  addEvents(1, 3);
  OrbDB::CTable rows = open("events");
  EXPECT_NE(rows.ListRecordsNext("type=5"), 0) << "not started";
  ASSERT_EQ(rows.ListRecordsStart("type=5"), 0);
  EXPECT_NE(rows.ListRecordsNext(nullptr), 0);
  EXPECT_NE(rows.ListRecordsNext("type=6"), 0);
  EXPECT_EQ(rows.ListRecordsNext(std::string("type=5").c_str()), 0);
}

TEST_F(Walk, FillsTheVectorWithTheRowsColumns) {
  addEvents(1, 2, "one");
  OrbDB::CTable rows = open("events");
  std::vector<OrbDB::CColumn*> columns(7, nullptr);
  ASSERT_EQ(rows.ListRecordsStart(columns, nullptr), 0);
  ASSERT_EQ(columns.size(), 5U);
  std::string names;
  for (const OrbDB::CColumn* column : columns) names += std::string(column->name()) + " ";
  EXPECT_EQ(names, "id eventid type date eventstring ");
  long wide = 0;
  int narrow = 0;
  std::array<char, 16> text{};
  EXPECT_EQ(columns[3]->GetDataBigInt(wide), 0);
  EXPECT_EQ(wide, 1700000000);
  EXPECT_EQ(columns[2]->GetDataInt(narrow), 0);
  EXPECT_EQ(narrow, 5);
  EXPECT_EQ(columns[4]->GetDataStr(text.data(), text.size()), 0);
  EXPECT_STREQ(text.data(), "one");
  EXPECT_EQ(columns[4], rows.getcolumn("eventstring"));
  EXPECT_EQ(rows.getcolumn("nothing"), nullptr);
  EXPECT_NE(columns[4]->GetDataInt(narrow), 0);
  EXPECT_EQ(narrow, 5);
  ASSERT_EQ(rows.ListRecordsNext(columns, nullptr), 0);
  EXPECT_EQ(columns[0]->GetDataBigInt(wide), 0);
  EXPECT_EQ(wide, 2);
  EXPECT_NE(rows.ListRecordsNext(columns, nullptr), 0);
  EXPECT_TRUE(columns.empty());
}

TEST_F(Walk, SurvivesReadingAnotherRowInBetween) {
  addEvents(1, 3);
  OrbDB::CTable rows = open("events");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  ASSERT_EQ(rows.readRecord("3"), 0);
  ASSERT_EQ(rows.ListRecordsNext(nullptr), 0);
  long id = 0;
  EXPECT_EQ(rows.GetValBigInt("id", id), 0);
  EXPECT_EQ(id, 2);
}

TEST_F(Walk, ManyMayBeOpenAtOnceWhileRowsAreWritten) {
  addEvents(1, 3);
  std::vector<std::unique_ptr<OrbDB::CTable>> walks;
  for (long i = 0; i < 40; ++i) {
    walks.push_back(std::make_unique<OrbDB::CTable>(open("events")));
    ASSERT_EQ(walks.back()->ListRecordsStart(nullptr), 0);
    addEvents(4 + i, 4 + i);
  }
  for (std::size_t i = 0; i < walks.size(); ++i) {
    std::size_t rows = 1;
    while (walks[i]->ListRecordsNext(nullptr) == 0) ++rows;
    EXPECT_EQ(rows, 3 + i);
  }
}

TEST_F(Walk, HoldsNotAllRowsInMemory) {
  const std::string text(1500, 'x');
  addEvents(1, 20000, text);
  start();  // what the writer keeps in memory is gone
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  std::size_t rows = 0;
  OrbDB::CTable walk = open("events");
  for (int end = walk.ListRecordsStart(nullptr); end == 0; end = walk.ListRecordsNext(nullptr)) {
    ++rows;
  }
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  EXPECT_EQ(rows, 20000U);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 16 * 1024) << "KiB, of 30 MB of rows";
}

}  // namespace
}  // namespace EventSystemTest
