#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::HostError;

class Definition : public HostTest {
 protected:
  // The message with which the host refuses this orbdb.ini.
  std::string refusal(const std::string& text) {
    writeFile("orbdb.ini", text);
    try {
      start();
    } catch (const HostError& problem) {
      return problem.what();
    }
    return "(started)";
  }

  void expectRefused(const std::string& text, const std::string& entry, const std::string& why) {
    const std::string message = refusal(text);
    EXPECT_EQ(message.rfind(definitions() + ": [", 0), 0U) << message;
    EXPECT_NE(message.find(entry), std::string::npos) << message;
    EXPECT_NE(message.find(why), std::string::npos) << message;
  }
};

TEST_F(Definition, FileIsPutBesideTheDatabaseAndThenLeftAlone) {
  start();
  const std::string written = contentOf(definitions());
  EXPECT_NE(written.find("[eventproperties]\ndeferrable = yes\n"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(definitions() + ".new"));
  writeFile("orbdb.ini", written + "[mine]\ncolumn.1 = id int key\n");
  start();
  EXPECT_EQ(contentOf(definitions()), written + "[mine]\ncolumn.1 = id int key\n");
}

TEST_F(Definition, MakesOrdinaryTypedTables) {
  startWithTables();
  const auto columns = [&](const std::string& table) {
    return sqlite(database(),
                  "SELECT group_concat(name || ' ' || type || ' ' || pk) "
                  "FROM pragma_table_info('" +
                      table + "')");
  };
  EXPECT_EQ(columns("events"),
            "id INTEGER 1,eventid BIGINT 0,type INT 0,date BIGINT 0,"
            "eventstring TEXT 0");
  EXPECT_EQ(columns("eventproperties"), "id INTEGER 1,propname TEXT 0,propvalue BIGINT 0");
  EXPECT_EQ(columns("dsevents"),
            "id INTEGER 1,eventid BIGINT 0,type INT 0,date BIGINT 0,"
            "eventstring TEXT 0,dataselection INT 0");
  EXPECT_EQ(columns("dataselection"), "id INTEGER 1,dstypeid INT 0,name TEXT 0");
  EXPECT_EQ(sqlite(database(), "SELECT id || propname || propvalue FROM eventproperties"),
            "1maxid0");
}

TEST_F(Definition, OnlyTheHostsOwnTableIsThereAtTheStart) {
  start();
  EXPECT_EQ(sqlite(database(), "SELECT group_concat(name) FROM sqlite_master WHERE type='table'"),
            "dataselection");
}

TEST_F(Definition, OfAnExistingTableIsCreatedOnlyOnce) {
  startWithTables();
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  EXPECT_EQ(orb.CheckAddTable("events", definitions().c_str()), 0);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1}));
  EXPECT_GT(orb.insertRecordsFromIni("eventproperties", definitions().c_str()), 0)
      << "the rows are there";
}

TEST_F(Definition, MayComeFromAnyFile) {
  start();
  writeFile("mine.ini",
            "[mine]\ncolumn.1 = id bigint key auto\ncolumn.2 = text text\n"
            "row.1 = text=\"a,b\"\nrow.2 = 7,x\n");
  const std::string file = (home() / "mine.ini").string();
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  ASSERT_EQ(orb.CheckAddTable("mine", file.c_str()), 0);
  ASSERT_EQ(orb.insertRecordsFromIni("mine", file.c_str()), 0);
  EXPECT_EQ(keysOf("mine"), (std::vector<long>{1, 7}));
  EXPECT_EQ(textOf("mine", "1", "text"), "a,b");
  EXPECT_NE(orb.CheckAddTable("other", file.c_str()), 0);
  EXPECT_NE(orb.CheckAddTable("mine", (home() / "none.ini").c_str()), 0);
  EXPECT_NE(orb.CheckAddTable(nullptr, file.c_str()), 0);
  EXPECT_NE(orb.insertRecordsFromIni("mine", nullptr), 0);
}

TEST_F(Definition, OfAnotherFileIsTakenUpAgainAfterARestart) {
  start();
  writeFile("mine.ini", "[mine]\ncolumn.1 = id bigint key\n");
  const std::string file = (home() / "mine.ini").string();
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  ASSERT_EQ(orb.CheckAddTable("mine", file.c_str()), 0);
  ASSERT_LE(open("mine").addRecord("7", nullptr, 0), 0);
  start();
  EXPECT_EQ(orb.GetTable("mine"), nullptr);
  ASSERT_EQ(orb.CheckAddTable("mine", file.c_str()), 0);
  EXPECT_EQ(keysOf("mine"), (std::vector<long>{7}));
}

TEST_F(Definition, ThatIsWrongIsLoggedWithFileSectionAndEntry) {
  start();
  writeFile("bad.ini", "[mine]\ncolumn.1 = id number key\n");
  const std::string file = (home() / "bad.ini").string();
  EXPECT_GT(OrbDB::COrbDatabase::Instance().CheckAddTable("mine", file.c_str()), 0);
  EXPECT_NE(log().find(file + ": [mine] column.1 = \"id number key\": 'number' is not a type"),
            std::string::npos)
      << log();
}

TEST_F(Definition, IsRefusedWhenItIsWrong) {
  expectRefused("[t]\ncolumn.1 = id\n", "column.1", "is not a type");
  expectRefused("[t]\ncolumn.1 = id int key key\n", "column.1", "'key' cannot stand there");
  expectRefused("[t]\ncolumn.1 = id int auto\n", "column.1", "'auto' cannot stand there");
  expectRefused("[t]\ncolumn.1 = id text key\n", "column.1", "a key is an int or a bigint");
  expectRefused("[t]\ncolumn.1 = id int key optional\n", "column.1", "cannot be optional");
  expectRefused("[t]\ncolumn.1 = i\"d int key\n", "column.1", "is not a name");
  expectRefused("[t]\ncolumn.1 = 1id int key\n", "column.1", "is not a name");
  expectRefused("[t]\ncolumn.2 = id int key\n", "column.2", "expected is column.1");
  expectRefused("[t]\ncolumn.1 = id int key\ncolumn.2 = ID int\n", "column.2", "already");
  expectRefused("[t]\ncolumn.1 = id int key\ncolumn.2 = x int key\n", "column.2", "one key");
  expectRefused("[t]\ncolumn.1 = id int\n", "[t]", "no key");
  expectRefused("[t]\ndeferrable = yes\n", "[t]", "no key");
  expectRefused("[t]\ncolumn.1 = id int key\ndeferrable = maybe\n", "deferrable", "yes or no");
  expectRefused("[t]\ncolumn.1 = id int key\nindex = x\n", "index", "unknown entry");
  expectRefused("[t]\ncolumn.1 = id int key\nrow.1 = x\n", "row.1", "takes a number");
  expectRefused("[t]\ncolumn.1 = id int key\nrow.1 = 1,2\n", "row.1", "too many fields");
  expectRefused("[sqlite_t]\ncolumn.1 = id int key\n", "[sqlite_t]", "not a table name");
  expectRefused("[t]\ncolumn.1 = id int key\n[T]\ncolumn.1 = id int key\n", "[T]",
                "[t] is the same table name");
  expectRefused("[t;drop]\ncolumn.1 = id int key\n", "[t;drop]", "not a table name");
}

TEST_F(Definition, MustAgreeWithTheTableOfTheFile) {
  startWithTables();
  stop();
  std::string text = contentOf(definitions());
  const std::string column = "column.4 = date bigint";
  text.replace(text.find(column), column.size(), "column.4 = when bigint");
  const std::string message = refusal(text);
  EXPECT_NE(message.find(definitions() + ": [events]: the database's table has the columns"),
            std::string::npos)
      << message;
}

TEST_F(Definition, IsTakenFromTheProgramForReadingWhenTheFileIsGone) {
  startWithTables();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  stop();
  std::filesystem::remove(definitions());
  start(EventSystemHost::Access::kReadOnly);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1}));
  EXPECT_FALSE(std::filesystem::exists(definitions()));
}

}  // namespace
}  // namespace EventSystemTest
