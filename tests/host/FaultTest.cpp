#include <gtest/gtest.h>
#include <sqlite3.h>

#include <set>
#include <string>
#include <vector>

#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

class Fault : public HostTest {
 protected:
  void startWith(const char* durability) {
    useDurability(durability);
    startWithTables();
    ASSERT_EQ(add(1), 0);
    ASSERT_EQ(host().waitDurable(), 0);
  }

  static int add(long id) { return open("events").addRecord(eventRecord(id).c_str(), nullptr, 0); }

  std::vector<long> rowsAfterRestart() {
    start();
    return keysOf("events");
  }
};

TEST_F(Fault, AFailedFlushIsAFailedCall) {
  startWith("strict");
  FaultVfs::failFlush(1);
  EXPECT_GT(add(2), 0);
  EXPECT_NE(open("events").readRecord("2"), 0) << "nothing of it is there";
  EXPECT_EQ(add(3), 0) << "the file was opened anew";
  EXPECT_NE(log().find("a file operation failed; the file is opened again and checked"),
            std::string::npos)
      << log();
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1, 3}));
  EXPECT_EQ(rowsAfterRestart(), (std::vector<long>{1, 3}));
}

// After a failed flush the kernel calls pages clean that are not on disk: what is told to be
// durable later must not stand behind them in the WAL.
TEST_F(Fault, NothingStandsInTheWalBehindAFlushThatFailed) {
  startWith("strict");
  FaultVfs::failFlush(1);
  ASSERT_GT(add(2), 0);
  const int before = FaultVfs::databaseFlushes();
  ASSERT_EQ(add(3), 0);
  EXPECT_GT(FaultVfs::databaseFlushes(), before) << "the WAL was copied into the file first";
}

TEST_F(Fault, AFailedFlushTakesTheWaitingWriteWithItAndSaysSo) {
  startWith("strict");
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=2"), 0);
  FaultVfs::failFlush(1);
  EXPECT_GT(add(2), 0);
  EXPECT_NE(log().find("a write that waited to be stored with this one is lost, too"),
            std::string::npos)
      << log();
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "0");
}

TEST_F(Fault, AFailedFlushOfAWaitingWriteIsToldToTheNextThatWaits) {
  startWith("strict");
  FaultVfs::failFlush(1);
  ASSERT_EQ(open("eventproperties").updateRecord("1", "propvalue=2"), 0);
  EXPECT_NE(host().waitDurable(), 0);
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), "0");
}

TEST_F(Fault, CallsFailUntilTheDiskWorksAgain) {
  startWith("strict");
  FaultVfs::failFlush(1, 1000000);
  for (long id = 2; id <= 4; ++id) EXPECT_GT(add(id), 0);
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1})) << "reads work";
  EXPECT_NE(host().waitDurable(), 0);
  FaultVfs::failFlush(0);
  EXPECT_EQ(add(5), 0);
  EXPECT_EQ(host().waitDurable(), 0);
  EXPECT_EQ(rowsAfterRestart(), (std::vector<long>{1, 5}));
}

TEST_F(Fault, AWalkEndsWhenTheFileIsOpenedAnew) {
  startWith("strict");
  ASSERT_EQ(add(2), 0);
  OrbDB::CTable rows = open("events");
  ASSERT_EQ(rows.ListRecordsStart(nullptr), 0);
  FaultVfs::failFlush(1);
  ASSERT_GT(add(3), 0);
  ASSERT_EQ(add(4), 0);
  EXPECT_NE(rows.ListRecordsNext(nullptr), 0);
  EXPECT_NE(log().find("a walk ended before its last row"), std::string::npos) << log();
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1, 2, 4}));
}

TEST_F(Fault, AFailedFlushFailsTheWait) {
  for (const char* durability : {"group", "relaxed"}) {
    useDurability(durability);
    start();
    if (OrbDB::COrbDatabase::Instance().GetTable("events") == nullptr) createTables(home());
    const long id = static_cast<long>(keysOf("events").size()) + 1;
    ASSERT_EQ(add(id), 0);
    FaultVfs::failFlush(1);
    EXPECT_NE(host().waitDurable(), 0) << durability;
    EXPECT_EQ(add(id + 1), 0);
    EXPECT_EQ(host().waitDurable(), 0);
  }
  EXPECT_EQ(rowsAfterRestart(), (std::vector<long>{1, 2, 3, 4}));
}

// What was lost cannot be told to the callers that have gone; so nothing is served any more.
TEST_F(Fault, CallsThatWereLostEndTheService) {
  startWith("group");
  FaultVfs::loseUnflushed(true);
  ASSERT_EQ(add(2), 0);
  ASSERT_EQ(add(3), 0);
  ASSERT_EQ(host().waitDurable(), 0);
  ASSERT_EQ(add(4), 0);
  ASSERT_EQ(add(5), 0);
  OrbDB::CTable events = open("events");
  FaultVfs::failFlush(1);
  EXPECT_NE(host().waitDurable(), 0);
  EXPECT_GT(events.addRecord(eventRecord(6).c_str(), nullptr, 0), 0);
  EXPECT_NE(events.readRecord("1"), 0);
  EXPECT_NE(host().waitDurable(), 0);
  EXPECT_NE(log().find("restart the program"), std::string::npos) << log();
  EXPECT_EQ(rowsAfterRestart(), (std::vector<long>{1, 2, 3}));
}

TEST_F(Fault, AFailedFlushAtTheEndIsLogged) {
  startWith("group");
  FaultVfs::loseUnflushed(true);
  ASSERT_EQ(add(2), 0);
  FaultVfs::failFlush(1);
  stop();
  EXPECT_NE(log().find("the newest calls were lost when a flush failed"), std::string::npos)
      << log();
  EXPECT_EQ(rowsAfterRestart(), (std::vector<long>{1}));
}

// Below the pages that were lost are older ones, from before the WAL started over: they must not
// be copied into the file.
TEST_F(Fault, AFailedFlushAtTheEndDamagesNothing) {
  startWith("group");
  const int before = FaultVfs::databaseFlushes();
  long id = 2;
  while (FaultVfs::databaseFlushes() == before) ASSERT_EQ(add(id++), 0);
  for (const long end = id + 20; id < end; ++id) ASSERT_EQ(add(id), 0);
  ASSERT_EQ(host().waitDurable(), 0);
  FaultVfs::loseUnflushed(true);
  const long last = id;
  for (; id < last + 20; ++id) ASSERT_EQ(add(id), 0);
  FaultVfs::failFlush(1);
  stop();
  EXPECT_EQ(sqlite(database(), "PRAGMA integrity_check"), "ok");
  EXPECT_EQ(rowsAfterRestart().size(), static_cast<std::size_t>(last - 1));
}

TEST_F(Fault, AFullDiskFailsWritesAndNotReads) {
  startWith("strict");
  FaultVfs::setDiskFull(true);
  int status = 0;
  long id = 2;
  for (; status == 0 && id < 100; ++id) status = add(id);
  EXPECT_EQ(status & 0xff, SQLITE_FULL);
  const std::vector<long> rows = keysOf("events");
  EXPECT_EQ(rows.size(), static_cast<std::size_t>(id - 2));
  EXPECT_EQ(textOf("events", "1", "type"), "5");
  EXPECT_GT(add(200), 0);
  FaultVfs::setDiskFull(false);
  EXPECT_EQ(add(200), 0);
  EXPECT_EQ(keysOf("events").size(), rows.size() + 1);
  EXPECT_EQ(log().find("opened again"), std::string::npos) << "no flush failed";
}

TEST_F(Fault, StoresExactlyWhatItSaidItStoredWhicheverFlushFails) {
  bool failed = true;
  for (int n = 1; failed; ++n) {
    ASSERT_LT(n, 100);
    failed = false;
    FaultVfs::install();
    std::filesystem::remove_all(home() / "run");
    writeFile("host.ini", "[database]\nfile = run/events.db\n");
    startWithTables();
    std::vector<long> stored;
    long maxId = 0;
    FaultVfs::failFlush(n);
    for (long id = 1; id <= 6; ++id) {
      const std::string value = "propvalue=" + std::to_string(id);
      const bool first = open("eventproperties").updateRecord("1", value.c_str()) == 0;
      const bool second = first && add(id) == 0;
      if (second) stored.push_back(maxId = id);
      failed = failed || !second;
    }
    EXPECT_EQ(keysOf("events"), stored) << n;
    EXPECT_EQ(rowsAfterRestart(), stored) << n;
    EXPECT_EQ(textOf("eventproperties", "1", "propvalue"), std::to_string(maxId)) << n;
  }
}

TEST_F(Fault, AHostThatCannotFlushDoesNotStart) {
  bool failed = true;
  int failures = 0;
  for (int n = 1; failed; ++n) {
    ASSERT_LT(n, 100);
    FaultVfs::install();
    std::filesystem::remove_all(home() / "run");
    writeFile("host.ini", "[database]\nfile = run/events.db\n");
    FaultVfs::failFlush(n);
    try {
      startWithTables();
      failed = false;
      EXPECT_TRUE(keysOf("events").empty());
    } catch (const EventSystemHost::HostError& problem) {
      ++failures;
      EXPECT_NE(std::string(problem.what()).find("run/events.db"), std::string::npos);
    }
    FaultVfs::failFlush(0);
    start();
    EXPECT_EQ(OrbDB::COrbDatabase::Instance().open(), 0) << "the next start is not disturbed";
  }
  EXPECT_GT(failures, 0);
}

// The first start turns the new file into one with a WAL, which takes a flush.
TEST_F(Fault, AHostThatStartsHasAWalWhicheverFlushFailed) {
  bool failed = true;
  for (int n = 1; failed; ++n) {
    ASSERT_LT(n, 100);
    FaultVfs::install();
    std::filesystem::remove_all(home() / "run");
    writeFile("host.ini", "[database]\nfile = run/events.db\ndurability = group\n");
    FaultVfs::failFlush(n);
    try {
      start();
      failed = false;
    } catch (const EventSystemHost::HostError&) {
      continue;
    }
    FaultVfs::failFlush(0);
    EXPECT_EQ(sqlite(home() / "run" / "events.db", "PRAGMA journal_mode"), "wal") << n;
    stop();
  }
}

}  // namespace
}  // namespace EventSystemTest
