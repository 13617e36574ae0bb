#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using Clock = std::chrono::steady_clock;

class Housekeeping : public HostTest {
 protected:
  Housekeeping() {
    useDurability("relaxed");
    startWithTables();
  }

  std::uintmax_t walSize() const {
    return std::filesystem::file_size(database().string() + "-wal");
  }
  std::uintmax_t fileSize() const { return std::filesystem::file_size(database()); }

  static void add(long first, long last) {
    const std::string text(1500, 'x');
    OrbDB::CTable table = open("events");
    for (long id = first; id <= last; ++id) {
      ASSERT_EQ(table.addRecord(eventRecord(id, text).c_str(), nullptr, 0), 0);
    }
  }

  template <typename Condition>
  static bool becomesTrue(Condition condition) {
    const Clock::time_point end = Clock::now() + std::chrono::seconds(60);
    while (!condition()) {
      if (Clock::now() > end) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
  }
};

constexpr std::uintmax_t kMiB = 1 << 20;

TEST_F(Housekeeping, KeepsTheWalSmallWhileOneThreadWritesAllTheTime) {
  std::uintmax_t largest = 0;
  for (long id = 1; id <= 20000; id += 1000) {
    add(id, id + 999);
    largest = std::max(largest, walSize());
  }
  EXPECT_LT(largest, 20 * kMiB) << "of more than 100 MiB that went through it";
  EXPECT_GT(fileSize(), 10 * kMiB) << "the rows are in the file";
}

TEST_F(Housekeeping, CopiesTheWalIntoTheFileBetweenCalls) {
  const int before = FaultVfs::databaseFlushes();
  add(1, 600);
  EXPECT_TRUE(becomesTrue([&] { return FaultVfs::databaseFlushes() > before; }));
}

TEST_F(Housekeeping, TheWalStartsOverWhenALongWalkHasEnded) {
  add(1, 10);
  {
    OrbDB::CTable rows = open("events");
    ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
    add(11, 8000);
    EXPECT_GT(walSize(), 20 * kMiB) << "the walk needs the rows as they were";
  }
  add(8001, 16000);
  EXPECT_TRUE(becomesTrue([&] {
    // Each round writes, so that the WAL can start over and be cut.
    EXPECT_EQ(open("events").updateRecord("1", "type=6"), 0);
    return walSize() < 20 * kMiB;
  }));
}

TEST_F(Housekeeping, GivesSpaceBackAfterDeletes) {
  add(1, 20000);
  const auto rowsInFile = [&] { return fileSize() > 20 * kMiB; };
  EXPECT_TRUE(becomesTrue(rowsInFile));
  OrbDB::CTable table = open("events");
  for (long id = 1; id <= 19990; ++id) {
    ASSERT_EQ(table.deleteRecord(std::to_string(id).c_str()), 0);
  }
  EXPECT_TRUE(becomesTrue([&] { return fileSize() < 8 * kMiB; })) << fileSize();
  EXPECT_EQ(keysOf("events").size(), 10U);
  EXPECT_EQ(sqlite(database(), "PRAGMA integrity_check"), "ok");
}

TEST_F(Housekeeping, SurvivesACheckpointThatFails) {
  add(1, 100);
  FaultVfs::failFlush(1);
  add(101, 200);
  OrbDB::CTable table = open("events");
  const std::string text(1500, 'x');
  long id = 200;
  EXPECT_TRUE(becomesTrue([&] {
    ++id;
    EXPECT_EQ(table.addRecord(eventRecord(id, text).c_str(), nullptr, 0), 0);
    return log().find("the WAL cannot be copied into the database file") != std::string::npos;
  }));
  EXPECT_EQ(table.addRecord(eventRecord(id + 1).c_str(), nullptr, 0), 0);
  EXPECT_EQ(keysOf("events").size(), static_cast<std::size_t>(id) + 1);
  EXPECT_EQ(host().waitDurable(), 0);
  start();
  EXPECT_EQ(keysOf("events").size(), static_cast<std::size_t>(id) + 1);
}

}  // namespace
}  // namespace EventSystemTest
