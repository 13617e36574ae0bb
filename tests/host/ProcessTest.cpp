#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/backup/Backup.h"
#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"
#include "tests/host/OtherProcess.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::Access;
using EventSystemHost::DatabaseBusy;
using EventSystemHost::Host;
using EventSystemHost::HostOptions;

class Process : public HostTest {
 protected:
  static int add(long id) { return open("events").addRecord(eventRecord(id).c_str(), nullptr, 0); }

  static HostOptions optionsFor(const std::filesystem::path& home) {
    HostOptions options;
    options.home = home;
    return options;
  }

  // Whether another process finds a lock of this one on the database file. SQLite's locks go when
  // any descriptor of the file is closed.
  bool othersSeeSqlitesLock() const {
    const pid_t child = fork();
    if (child == 0) {
      const int file = ::open(database().c_str(), O_RDWR | O_CLOEXEC);
      struct flock lock {};
      lock.l_type = F_WRLCK;
      lock.l_whence = SEEK_SET;
      const bool found = fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
      _exit(found ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 1;
  }
};

TEST_F(Process, OnlyOneMayWrite) {
  OtherProcess owner("hold", home());
  ASSERT_EQ(owner.readLine(), "open");
  try {
    start();
    FAIL() << "a second writer";
  } catch (const DatabaseBusy& problem) {
    const std::string message = problem.what();
    EXPECT_NE(message.find(database().string()), std::string::npos) << message;
    EXPECT_NE(message.find("process " + std::to_string(owner.pid()) + ";"), std::string::npos)
        << message;
  }
  owner.goOn();
  EXPECT_EQ(owner.wait(), 0);
  start();
}

TEST_F(Process, IsToldWhoWritesAlready) {
  start();
  OtherProcess second("hold", home());
  const std::string answer = second.readLine();
  EXPECT_EQ(answer.rfind("busy: " + database().string(), 0), 0U) << answer;
  EXPECT_NE(answer.find("process " + std::to_string(getpid()) + ";"), std::string::npos) << answer;
  EXPECT_EQ(second.wait(), 1);
}

TEST_F(Process, ASecondWriterTouchesNothingBeforeItIsRefused) {
  writeFile("host.ini", "[log]\nmax_bytes = 1024\n");
  startWithTables();
  const auto logSize = log().size();
  OtherProcess second("hold", home());
  EXPECT_EQ(second.readLine().rfind("busy: ", 0), 0U);
  second.wait();
  EXPECT_EQ(log().size(), logSize);
}

TEST_F(Process, ALockOfADeadProcessDoesNotBlock) {
  OtherProcess owner("hold", home());
  ASSERT_EQ(owner.readLine(), "open");
  const std::string pid = std::to_string(owner.pid());
  owner.kill();
  EXPECT_EQ(owner.wait(), -1);
  EXPECT_EQ(contentOf(database().string() + ".lock"), pid + "\n") << "nobody could take it back";
  start();
  EXPECT_EQ(contentOf(database().string() + ".lock"), std::to_string(getpid()) + "\n");
}

TEST_F(Process, ARemovedLockFileLetsNoSecondWriterIn) {
  OtherProcess owner("hold", home());
  ASSERT_EQ(owner.readLine(), "open");
  std::filesystem::remove(database().string() + ".lock");
  EXPECT_THROW(start(), DatabaseBusy);
  owner.goOn();
  EXPECT_EQ(owner.wait(), 0);
  start();
}

TEST_F(Process, TheLockStaysWhenTheFileIsOpenedAnew) {
  startWithTables();
  FaultVfs::failFlush(1);
  ASSERT_GT(add(1), 0);
  ASSERT_EQ(add(2), 0);
  EXPECT_TRUE(othersSeeSqlitesLock());
  std::filesystem::remove(database().string() + ".lock");
  OtherProcess second("hold", home());
  const std::string answer = second.readLine();
  EXPECT_EQ(answer.rfind("busy: " + database().string(), 0), 0U) << answer;
}

TEST_F(Process, TheLocksOfSqliteStandBesideTheWriters) {
  start();
  EXPECT_TRUE(othersSeeSqlitesLock());
  stop();
  EXPECT_FALSE(othersSeeSqlitesLock());
}

TEST_F(Process, ALinkToTheDatabaseIsTheSameDatabase) {
  OtherProcess owner("hold", home());
  ASSERT_EQ(owner.readLine(), "open");
  const TempDir other;
  std::filesystem::create_symlink(database(), other.path() / "events.db");
  try {
    const Host host(optionsFor(other.path()));
    FAIL() << "a second writer";
  } catch (const DatabaseBusy& problem) {
    const std::string message = problem.what();
    EXPECT_EQ(message.rfind(database().string() + ": is open for writing in process " +
                                std::to_string(owner.pid()) + ";",
                            0),
              0U)
        << message;
  }
  owner.goOn();
  EXPECT_EQ(owner.wait(), 0);
  const Host host(optionsFor(other.path()));
  EXPECT_EQ(host.configuration().databaseFile, database());
  EXPECT_FALSE(std::filesystem::exists(other.path() / "events.db-wal"));
}

// The child has no copy of the thread that its parent's host runs.
TEST_F(Process, AChildThatEndsLeavesTheParentsHostAlone) {
  OtherProcess parent("fork", home());
  EXPECT_EQ(parent.readLine(), "child: 0");
  EXPECT_EQ(contentOf(database().string() + ".lock"), std::to_string(parent.pid()) + "\n");
  EXPECT_THROW(start(), DatabaseBusy);
  parent.goOn();
  EXPECT_EQ(parent.readLine(), "1 rows up to 1");
  EXPECT_EQ(parent.wait(), 0);
}

TEST_F(Process, ThatIsRefusedTheLockKeepsItsLocksOnTheDatabase) {
  startWithTables();
  ASSERT_EQ(add(1), 0);
  const auto backup = home() / "backup.db";
  EventSystemHost::backUpDatabase(host().configuration(), backup, false);
  ASSERT_TRUE(othersSeeSqlitesLock());
  EXPECT_THROW(EventSystemHost::restoreDatabase(host().configuration(), backup, true),
               DatabaseBusy);
  EXPECT_TRUE(othersSeeSqlitesLock());
}

TEST_F(Process, MayReadBesideAWriterAndSeesWhatItWrites) {
  startWithTables();
  ASSERT_EQ(add(1), 0);
  OtherProcess reader("list", home());
  EXPECT_EQ(reader.readLine(), "1 rows up to 1");
  for (long id = 2; id <= 20; ++id) {
    ASSERT_EQ(add(id), 0);
    reader.goOn();
    EXPECT_EQ(reader.readLine(), std::to_string(id) + " rows up to " + std::to_string(id));
  }
}

TEST_F(Process, MayReadBesideAnotherReader) {
  startWithTables();
  ASSERT_EQ(add(1), 0);
  start(Access::kReadOnly);
  OtherProcess reader("list", home());
  EXPECT_EQ(reader.readLine(), "1 rows up to 1");
  EXPECT_EQ(keysOf("events"), (std::vector<long>{1}));
}

TEST_F(Process, AReaderDoesNotKeepAWriterFromStarting) {
  startWithTables();
  ASSERT_EQ(add(1), 0);
  stop();
  OtherProcess reader("walk", home());
  ASSERT_EQ(reader.readLine(), "walking");
  start();
  ASSERT_EQ(add(2), 0);
  stop();
  reader.goOn();
  EXPECT_EQ(reader.readLine(), "1 rows") << "the walk sees the table as it was";
}

TEST_F(Process, AReaderSeesATableThatTheWriterCreatesLater) {
  start();
  start(Access::kReadOnly);
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().GetTable("events"), nullptr);
  OtherProcess writer("hold", home());
  ASSERT_EQ(writer.readLine(), "open");
  EXPECT_NE(OrbDB::COrbDatabase::Instance().GetTable("events"), nullptr);
  EXPECT_EQ(OrbDB::COrbDatabase::Instance().GetTable("dsevents"), nullptr);
  writer.goOn();
  EXPECT_EQ(writer.wait(), 0);
}

class ProcessDeath : public Process, public ::testing::WithParamInterface<const char*> {};

TEST_P(ProcessDeath, LosesNothingThatWasToldToBeStored) {
  useDurability(GetParam());
  for (int round = 0; round < 3; ++round) {
    std::filesystem::remove(database());
    std::filesystem::remove(database().string() + "-wal");
    std::filesystem::remove(database().string() + "-shm");
    OtherProcess writer("write", home());
    std::string last;
    for (int i = 0; i < 50 + 100 * round; ++i) last = writer.readLine();
    writer.kill();
    for (std::string line = writer.readLine(); !line.empty(); line = writer.readLine()) last = line;
    EXPECT_EQ(writer.wait(), -1);
    ASSERT_GT(std::filesystem::file_size(database().string() + "-wal"), 0U);

    // A reader that comes first sees everything, and leaves the WAL to the next writer.
    const std::string wal = contentOf(database().string() + "-wal");
    start(Access::kReadOnly);
    const std::vector<long> rows = keysOf("events");
    stop();
    EXPECT_EQ(contentOf(database().string() + "-wal"), wal);
    // The one after the last may have been stored and not been told any more.
    ASSERT_GE(rows.size(), std::stoul(last));
    EXPECT_LE(rows.size(), std::stoul(last) + 1);
    EXPECT_EQ(rows.front(), 1);
    EXPECT_EQ(rows.back(), static_cast<long>(rows.size())) << "no gaps";

    start();
    EXPECT_EQ(keysOf("events"), rows);
    EXPECT_EQ(sqlite(database(), "PRAGMA integrity_check"), "ok");
    stop();
  }
}

INSTANTIATE_TEST_SUITE_P(InEveryMode, ProcessDeath, ::testing::Values("strict", "group", "relaxed"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace
}  // namespace EventSystemTest
