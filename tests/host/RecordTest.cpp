#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

class Record : public HostTest {
 protected:
  Record() { startWithTables(); }

  int add(const char* table, const std::string& record) {
    return open(table).addRecord(record.c_str(), nullptr, 0);
  }

  // Refused with a positive status and a log line that names the table and says `reason`.
  void expectRefused(const char* table, const std::string& record, const std::string& reason) {
    const std::size_t rows = keysOf(table).size();
    const std::size_t logged = log().size();
    EXPECT_GT(add(table, record), 0) << record;
    const std::string said = log().substr(logged);
    const std::string where = database().string() + ": table " + table + ": ";
    EXPECT_NE(said.find(where), std::string::npos) << said;
    EXPECT_NE(said.find(reason), std::string::npos) << said;
    EXPECT_EQ(keysOf(table).size(), rows) << record;
  }
};

TEST_F(Record, MayHaveAnyFieldInQuotes) {
  EXPECT_EQ(add("events", "\"1\",\"1\",\"5\",\"6\",\"a,\"\"b\"\"\n\""), 0);
  EXPECT_EQ(textOf("events", "1", "eventstring"), "a,\"b\"\n");
  EXPECT_EQ(add("events", "2,2,5,6,plain text"), 0);
  EXPECT_EQ(textOf("events", "2", "eventstring"), "plain text");
  EXPECT_EQ(add("events", "3,3,5,6,"), 0);
  EXPECT_EQ(textOf("events", "3", "eventstring"), "");
  EXPECT_EQ(add("events", "4,4,5,6,a=b"), 0);
  EXPECT_EQ(textOf("events", "4", "eventstring"), "a=b");
}

TEST_F(Record, MayNameItsColumns) {
  EXPECT_EQ(add("eventproperties", "propvalue=7,propname=\"a,b\"\"c\""), 0);
  EXPECT_EQ(textOf("eventproperties", "2", "propname"), "a,b\"c");
  EXPECT_EQ(add("dataselection", "id=3,dstypeid=9"), 0);
  EXPECT_EQ(textOf("dataselection", "3", "name"), "");
}

TEST_F(Record, TakesNegativeNumbersAndTheLimitsOfEachType) {
  EXPECT_EQ(add("dsevents", "1,1,5,6,\"\",-1294967296"), 0);
  EXPECT_EQ(textOf("dsevents", "1", "dataselection"), "-1294967296");
  EXPECT_EQ(
      add("dsevents", "2,-9223372036854775808,-2147483648,9223372036854775807,\"\",2147483647"), 0);
  EXPECT_EQ(textOf("dsevents", "2", "eventid"), "-9223372036854775808");
}

TEST_F(Record, IsRefusedWithADuplicateKey) {
  ASSERT_EQ(add("events", eventRecord(1, "first")), 0);
  expectRefused("events", eventRecord(1, "second"), "UNIQUE constraint failed: events.id");
  EXPECT_EQ(textOf("events", "1", "eventstring"), "first");
  expectRefused("eventproperties", "propname=maxid,propvalue=1",
                "UNIQUE constraint failed: eventproperties.propname");
}

TEST_F(Record, IsRefusedWithDamagedQuotes) {
  expectRefused("events", "1,1,5,6,\"cut", "no closing quote after '\"cut'");
  expectRefused("events", "1,1,5,6,\"cut\"\"", "no closing quote");
  expectRefused("events", "1,1,5,6,\"", "no closing quote");
  expectRefused("events", "1,1,5,6,\"a\"b", "text after a closing quote, 'b'");
  expectRefused("events", "1,1,5,6,a\"b", "a quote inside a field without quotes");
  expectRefused("eventproperties", "propname=\"cut,propvalue=1", "no closing quote");
}

TEST_F(Record, IsRefusedWithTooFewOrTooManyFields) {
  expectRefused("events", "1,1,5,6", "too few fields, column eventstring has none");
  expectRefused("events", "1,1,5,6,\"a\",7", "too many fields, the first of them '7'");
  expectRefused("events", "1,1,5,6,\"a\",", "too many fields");
  expectRefused("eventproperties", "propname=x", "too few fields, column propvalue has none");
  expectRefused("dataselection", "dstypeid=9", "too few fields, column id has none");
  EXPECT_GT(open("events").addRecord(nullptr, nullptr, 0), 0);
  EXPECT_GT(open("events").addRecord("", nullptr, 0), 0);
}

TEST_F(Record, IsRefusedWithColumnsThatAreUnknownOrNamedTwice) {
  expectRefused("eventproperties", "propname=x,value=1", "no column is named 'value'");
  expectRefused("eventproperties", "propname=x,propvalue=1,propname=y",
                "column propname is named twice");
  expectRefused("eventproperties", "propname=x,1", "column=value is expected at '1'");
}

TEST_F(Record, IsRefusedWithTextWhereANumberBelongs) {
  expectRefused("events", "one,1,5,6,\"\"", "column id takes a number of 64 bits, not 'one'");
  expectRefused("events", ",1,5,6,\"\"", "not ''");
  expectRefused("events", "1,1,5x,6,\"\"", "column type takes a number of 32 bits, not '5x'");
  expectRefused("events", "1,1,2147483648,6,\"\"", "column type");
  expectRefused("events", "1,1,-2147483649,6,\"\"", "column type");
  expectRefused("events", "1,1,5,9223372036854775808,\"\"", "column date");
  expectRefused("events", " 1,1,5,6,\"\"", "column id");
  expectRefused("events", "+1,1,5,6,\"\"", "column id");
  expectRefused("events", "0x1,1,5,6,\"\"", "column id");
  expectRefused("events", "1.0,1,5,6,\"\"", "column id");
}

TEST_F(Record, IsQuotedInTheLogOnlyInPart) {
  const std::string text(3000, 'z');
  expectRefused("events", text + ",1,5,6,\"\"", "not '" + text.substr(0, 64) + "...'");
  EXPECT_EQ(log().find(text.substr(0, 65)), std::string::npos);
}

TEST_F(Record, OfAnUpdateFollowsTheSameRules) {
  OrbDB::CTable table = open("eventproperties");
  EXPECT_GT(table.updateRecord("1", "propvalue=x"), 0);
  EXPECT_GT(table.updateRecord("1", "nothing=1"), 0);
  EXPECT_GT(table.updateRecord("1", "propvalue=1,propvalue=2"), 0);
  EXPECT_GT(table.updateRecord("1", "propvalue"), 0);
  EXPECT_GT(table.updateRecord("1", ""), 0);
  EXPECT_GT(table.updateRecord("1", nullptr), 0);
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "0");
}

TEST_F(Record, OfAnUpdateMayNameAUniqueColumnThatStaysOrChanges) {
  OrbDB::CTable table = open("eventproperties");
  ASSERT_LT(table.addRecord("propname=other,propvalue=7", nullptr, 0), 1);
  EXPECT_EQ(table.updateRecord("1", "propname=maxid,propvalue=5"), 0);
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "5");
  EXPECT_EQ(table.updateRecord("1", "propname=renamed,propvalue=6"), 0);
  EXPECT_EQ(keysOf("eventproperties", "propname=renamed"), std::vector<long>{1});
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "6");
  EXPECT_GT(table.updateRecord("1", "propname=other,propvalue=8"), 0) << "row 2 has that name";
  EXPECT_GT(table.updateRecord("3", "propname=maxid,propvalue=8"), 0) << "there is no row 3";
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "6");
  EXPECT_EQ(textOf("eventproperties", "2", "propvalue"), "7");
}

TEST_F(Record, CannotCarrySql) {
  const std::string text = "'); DROP TABLE events; --";
  EXPECT_EQ(add("events", eventRecord(1, text)), 0);
  EXPECT_EQ(textOf("events", "1", "eventstring"), text);
  EXPECT_GT(add("events", "id\"=1,eventid=2"), 0);
}

TEST_F(Record, ThatATriggerKeepsOutIsAFailure) {
  stop();
  sqlite(database(),
         "CREATE TRIGGER quiet BEFORE INSERT ON events BEGIN SELECT RAISE(IGNORE); END");
  start();
  EXPECT_GT(add("events", eventRecord(1)), 0);
  EXPECT_NE(log().find("table events: the record was not added: a trigger in the database kept "
                       "the row out"),
            std::string::npos)
      << log();
  EXPECT_EQ(add("dsevents", "1,1,5,1700000000,\"x\",1"), 0) << log();
}

TEST_F(Record, KeyIsStrictDecimalText) {
  ASSERT_EQ(add("events", eventRecord(1)), 0);
  OrbDB::CTable table = open("events");
  for (const char* key : {"", " 1", "1 ", "01x", "one", "18446744073709551615"}) {
    EXPECT_NE(table.readRecord(key), 0) << key;
    EXPECT_GT(table.updateRecord(key, "type=1"), 0) << key;
    EXPECT_NE(table.deleteRecord(key), 0) << key;
  }
  EXPECT_NE(table.readRecord(nullptr), 0);
  EXPECT_EQ(table.readRecord("1"), 0);
}

}  // namespace
}  // namespace EventSystemTest
