#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "EventSystem/platform/HostConfig.h"
#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::Access;

constexpr int kPageSize = 4096;
constexpr long kRows = 40;

class Damage : public HostTest {
 protected:
  // Ten or so rows to a page, so that a walk meets several pages.
  void SetUp() override {
    startWithTables();
    for (long id = 1; id <= kRows; ++id) ASSERT_EQ(add(id), 0);
    sqlite(database(), "INSERT INTO dataselection VALUES (7, 1, NULL)");
    stop();
  }

  static int add(long id) {
    return open("events").addRecord(eventRecord(id, std::string(400, 'x')).c_str(), nullptr, 0);
  }

  void overwritePage(const std::string& numberSql) const {
    const long page = std::stol(sqlite(database(), numberSql));
    std::fstream file(database(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp((page - 1) * kPageSize);
    file << std::string(kPageSize, '\xff');
  }

  void overwriteRootOf(const std::string& table) const {
    overwritePage("SELECT rootpage FROM sqlite_master WHERE name = '" + table + "'");
  }

  // The page that the table's last rows are on.
  void overwriteLastPage() const { overwritePage("PRAGMA page_count"); }

  void expectNothingIsWritten() {
    OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
    const std::string before = contentOf(database()) + contentOf(database().string() + "-wal");
    EXPECT_GT(open("dsevents").addRecord("1,1,5,1700000000,\"x\",1", nullptr, 0), 0);
    EXPECT_GT(open("dsevents").updateRecord("1", "type=6"), 0);
    EXPECT_GT(open("dsevents").deleteRecord("1"), 0);
    EXPECT_GT(orb.CheckAddTable("dsevents", definitions().c_str()), 0);
    EXPECT_GT(orb.insertRecordsFromIni("eventproperties", definitions().c_str()), 0);
    EXPECT_EQ(contentOf(database()) + contentOf(database().string() + "-wal"), before);
    EXPECT_EQ(host().damage().rfind(database().string() + ": is damaged", 0), 0U)
        << host().damage();
    EXPECT_NE(host().damage().find("with eventctl restore"), std::string::npos) << host().damage();
    EXPECT_NE(log().find("the record was not added: " + host().damage()), std::string::npos)
        << log();
  }
};

TEST_F(Damage, OfNothingIsNotReported) {
  start();
  EXPECT_EQ(keysOf("events").size(), static_cast<std::size_t>(kRows));
  EXPECT_NE(open("events").readRecord("99"), 0);
  EXPECT_GT(add(1), 0) << "the row is there already";
  EXPECT_EQ(QMDSIDValidate(7), 1);
  EXPECT_EQ(host().damage(), "");
}

TEST_F(Damage, OfTheHighestIdStopsWrites) {
  overwriteRootOf("eventproperties");
  start();
  EXPECT_TRUE(keysOf("eventproperties").empty());
  EXPECT_NE(host().damage().find("table eventproperties: database disk image is malformed"),
            std::string::npos)
      << host().damage();
  EXPECT_GT(add(kRows + 1), 0);
  expectNothingIsWritten();
  EXPECT_EQ(keysOf("events").size(), static_cast<std::size_t>(kRows)) << "reads go on";
}

TEST_F(Damage, ThatAReadMeetsStopsWrites) {
  overwriteRootOf("eventproperties");
  start();
  EXPECT_NE(open("eventproperties").readRecord("1"), 0);
  expectNothingIsWritten();
}

TEST_F(Damage, ThatALookUpOfOneValueMeetsStopsWrites) {
  overwriteRootOf("eventproperties");
  start();
  long value = 0;
  EXPECT_NE(open("eventproperties").GetValBigInt("1", "propvalue", value), 0);
  expectNothingIsWritten();
}

TEST_F(Damage, ThatAFilterMeetsStopsWrites) {
  overwriteRootOf("eventproperties");
  start();
  EXPECT_TRUE(keysOf("eventproperties", "id=1").empty());
  expectNothingIsWritten();
}

TEST_F(Damage, ThatADataSelectionCheckMeetsStopsWrites) {
  overwriteRootOf("dataselection");
  start();
  EXPECT_EQ(QMDSIDValidate(7), 0);
  expectNothingIsWritten();
}

TEST_F(Damage, ThatAWriteMeetsStopsTheOtherWrites) {
  overwriteRootOf("eventproperties");
  start();
  EXPECT_GT(open("eventproperties").updateRecord("1", "propvalue=5"), 0);
  expectNothingIsWritten();
}

TEST_F(Damage, ThatAWalkMeetsOnItsWayStopsWrites) {
  overwriteLastPage();
  start();
  const std::vector<long> keys = keysOf("events");
  EXPECT_FALSE(keys.empty());
  EXPECT_LT(keys.size(), static_cast<std::size_t>(kRows));
  EXPECT_NE(log().find("a walk ended before its last row"), std::string::npos) << log();
  expectNothingIsWritten();
}

TEST_F(Damage, IsNotedByAReaderToo) {
  overwriteRootOf("eventproperties");
  start(Access::kReadOnly);
  EXPECT_TRUE(keysOf("eventproperties").empty());
  EXPECT_NE(host().damage(), "");
  EXPECT_EQ(keysOf("events").size(), static_cast<std::size_t>(kRows));
}

TEST_F(Damage, IsWhatAFailedReadOfTheDiskSays) {
  start();
  FaultVfs::failReads(true);
  EXPECT_TRUE(keysOf("events").empty());
  FaultVfs::failReads(false);
  EXPECT_NE(host().damage().find("table events: disk I/O error"), std::string::npos)
      << host().damage();
  expectNothingIsWritten();
  EXPECT_EQ(keysOf("events").size(), static_cast<std::size_t>(kRows)) << "reads go on";
}

TEST_F(Damage, IsLeftAsItIsWhenTheHostEnds) {
  start();
  ASSERT_EQ(add(kRows + 1), 0);
  FaultVfs::failReads(true);
  EXPECT_TRUE(keysOf("dsevents").empty());
  FaultVfs::failReads(false);
  ASSERT_NE(host().damage(), "");
  const std::string file = contentOf(database());
  const std::string wal = contentOf(database().string() + "-wal");
  stop();
  EXPECT_EQ(contentOf(database()), file);
  EXPECT_EQ(contentOf(database().string() + "-wal"), wal);
}

}  // namespace
}  // namespace EventSystemTest
