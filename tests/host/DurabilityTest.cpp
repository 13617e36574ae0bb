#include <gtest/gtest.h>
#include <sqlite3.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using Clock = std::chrono::steady_clock;

// A waiting write is stored after 100 ms without its partner; a test that was held up for longer
// between two calls sees that flush, too.
constexpr std::chrono::milliseconds kHeldUp(80);

class Durability : public HostTest {
 protected:
  void startWith(const char* durability) {
    useDurability(durability);
    startWithTables();
    // The WAL's header has been flushed after the first write.
    ASSERT_EQ(open("events").addRecord(eventRecord(1000).c_str(), nullptr, 0), 0);
  }

  void newEvent(long id) {
    const Clock::time_point begin = Clock::now();
    const std::string property = "propname=maxid,propvalue=" + std::to_string(id);
    ASSERT_EQ(open("eventproperties").updateRecord("1", property.c_str()), 0);
    ASSERT_EQ(open("events").addRecord(eventRecord(id).c_str(), nullptr, 0), 0);
    if (Clock::now() - begin > kHeldUp) ++m_heldUp;
  }

  void newDataSelectionEvent(long id) {
    const Clock::time_point begin = Clock::now();
    const std::string value = "propvalue=" + std::to_string(id);
    OrbDB::CTable properties = open("eventproperties");
    if (properties.ListRecordsStart("propname=maxid_3") == 0) {
      std::array<char, 32> key{};
      ASSERT_EQ(properties.GetValStr("id", key.data(), key.size()), 0);
      ASSERT_EQ(properties.updateRecord(key.data(), value.c_str()), 0);
    } else {
      int key = 0;
      ASSERT_EQ(properties.addRecord(("propname=maxid_3," + value).c_str(), &key, 0), 0);
    }
    ASSERT_EQ(open("dsevents").addRecord((eventRecord(id) + ",3").c_str(), nullptr, 0), 0);
    if (Clock::now() - begin > kHeldUp) ++m_heldUp;
  }

  int m_heldUp = 0;
};

TEST_F(Durability, StrictFlushesOnceForAnEventAndItsId) {
  startWith("strict");
  const int before = FaultVfs::walFlushes();
  for (long id = 1; id <= 20; ++id) newEvent(id);
  EXPECT_GE(FaultVfs::walFlushes() - before, 20);
  EXPECT_LE(FaultVfs::walFlushes() - before, 20 + m_heldUp);
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "20");
}

TEST_F(Durability, StrictFlushesOnceForAnEventOfADataSelection) {
  startWith("strict");
  const int before = FaultVfs::walFlushes();
  for (long id = 1; id <= 20; ++id) newDataSelectionEvent(id);
  EXPECT_GE(FaultVfs::walFlushes() - before, 20);
  EXPECT_LE(FaultVfs::walFlushes() - before, 20 + m_heldUp);
  EXPECT_EQ(textOf("eventproperties", "2", "propvalue"), "20");
}

TEST_F(Durability, StrictFlushesForEachWriteOfItsOwn) {
  startWith("strict");
  const int before = FaultVfs::walFlushes();
  ASSERT_EQ(open("events").addRecord(eventRecord(1).c_str(), nullptr, 0), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 1);
  ASSERT_EQ(open("events").updateRecord("1", "type=6"), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 2);
  ASSERT_EQ(open("events").deleteRecord("1"), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 3);
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 3);
}

TEST_F(Durability, AWaitingWriteIsSeenByThisProcessAtOnce) {
  startWith("strict");
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=5"), 0);
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "5");
  OrbDB::CTable rows = open("eventproperties");
  std::array<char, 8> value{};
  ASSERT_EQ(rows.ListRecordsStart("propname=maxid"), 0);
  EXPECT_EQ(rows.GetValStr("propvalue", value.data(), value.size()), 0);
  EXPECT_STREQ(value.data(), "5");
}

TEST_F(Durability, AWaitingWriteIsStoredWithoutAFurtherCall) {
  startWith("strict");
  const int before = FaultVfs::walFlushes();
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=5"), 0);
  const Clock::time_point end = Clock::now() + std::chrono::seconds(30);
  while (FaultVfs::walFlushes() == before && Clock::now() < end) std::this_thread::yield();
  EXPECT_EQ(FaultVfs::walFlushes() - before, 1);
  const auto stored = [&] { return sqlite(database(), "SELECT propvalue FROM eventproperties"); };
  while (stored() != "5" && Clock::now() < end) std::this_thread::yield();
  EXPECT_EQ(stored(), "5");
}

TEST_F(Durability, AWaitingWriteIsStoredByWhateverComesNext) {
  startWith("strict");
  const auto stored = [&] { return sqlite(database(), "SELECT propvalue FROM eventproperties"); };
  OrbDB::CTable properties = open("eventproperties");
  ASSERT_EQ(properties.updateRecord("1", "propvalue=1"), 0);
  ASSERT_EQ(properties.updateRecord("1", "propvalue=2"), 0);
  EXPECT_EQ(stored(), "2") << "the next write to the same table";
  ASSERT_EQ(properties.updateRecord("1", "propvalue=3"), 0);
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(stored(), "3") << "waitDurable()";
  ASSERT_EQ(properties.updateRecord("1", "propvalue=4"), 0);
  EXPECT_EQ(open("events").ListRecordsStart(nullptr), 0);
  EXPECT_EQ(stored(), "4") << "a walk";
  ASSERT_EQ(properties.updateRecord("1", "propvalue=5"), 0);
  stop();
  EXPECT_EQ(stored(), "5") << "the end of the host";
}

TEST_F(Durability, AWaitingWriteIsKeptWhenTheNextOneFails) {
  startWith("strict");
  const auto stored = [&] { return sqlite(database(), "SELECT propvalue FROM eventproperties"); };
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=6"), 0);
  ASSERT_GT(open("events").addRecord(eventRecord(1000).c_str(), nullptr, 0), 0);
  EXPECT_EQ(stored(), "6") << "a duplicate key";
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=7"), 0);
  ASSERT_GT(open("events").addRecord("1,1,\"cut", nullptr, 0), 0);
  EXPECT_EQ(stored(), "7") << "a bad record";
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=8"), 0);
  ASSERT_GT(open("events").deleteRecord("77"), 0);
  EXPECT_EQ(stored(), "8") << "no such row";
  EXPECT_EQ(sqlite(database(), "SELECT count(*) FROM events"), "1");
}

TEST_F(Durability, ATableIsNotSeenWithoutItsInitialRows) {
  start();
  OrbDB::COrbDatabase& orb = OrbDB::COrbDatabase::Instance();
  ASSERT_EQ(orb.CheckAddTable("eventproperties", definitions().c_str()), 0);
  EXPECT_NE(orb.GetTable("eventproperties"), nullptr);
  ASSERT_EQ(orb.insertRecordsFromIni("eventproperties", definitions().c_str()), 0);
  EXPECT_EQ(sqlite(database(), "SELECT count(*) FROM eventproperties"), "1");
}

TEST_F(Durability, RelaxedDoesNotFlush) {
  startWith("relaxed");
  const int before = FaultVfs::walFlushes();
  for (long id = 1; id <= 100; ++id) newEvent(id);
  EXPECT_EQ(FaultVfs::walFlushes(), before);
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 1);
}

TEST_F(Durability, AnEventAndItsIdTakeTwoPagesOfTheWal) {
  constexpr std::uintmax_t kPage = 4096 + 24;
  startWith("relaxed");
  newEvent(1);
  const std::filesystem::path wal = database().string() + "-wal";
  const std::uintmax_t before = std::filesystem::file_size(wal);
  newEvent(2);
  EXPECT_EQ(std::filesystem::file_size(wal) - before, 2 * kPage);
}

TEST_F(Durability, GroupFlushesOnceForAllCallsBeforeTheWait) {
  startWith("group");
  ASSERT_EQ(host().waitDurable(), 0);
  const int before = FaultVfs::walFlushes();
  for (long id = 1; id <= 100; ++id) newEvent(id);
  EXPECT_EQ(FaultVfs::walFlushes(), before);
  EXPECT_EQ(textOf("events", "100", "type"), "5") << "seen at once";
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 1);
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(FaultVfs::walFlushes() - before, 1) << "nothing was left to flush";
}

TEST_F(Durability, EveryModeIsDurableWhenTheHostEnds) {
  for (const char* durability : {"strict", "group", "relaxed"}) {
    useDurability(durability);
    start();
    if (OrbDB::COrbDatabase::Instance().GetTable("events") == nullptr) createTables(home());
    const long id = static_cast<long>(keysOf("events").size()) + 1;
    ASSERT_EQ(open("events").addRecord(eventRecord(id).c_str(), nullptr, 0), 0);
    const int before = FaultVfs::databaseFlushes();
    stop();
    EXPECT_GT(FaultVfs::databaseFlushes(), before) << durability;
  }
  EXPECT_EQ(sqlite(database(), "SELECT count(*) FROM events"), "3");
}

}  // namespace
}  // namespace EventSystemTest
