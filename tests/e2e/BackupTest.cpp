// eventctl backup and restore: copies beside a writer, and the way back.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class Backup : public EventctlHome {
 protected:
  std::filesystem::path file() const { return home().parent_path() / "backup.db"; }

  std::string back() const { return output({"backup", file().string()}); }

  Outcome restore(const Arguments& more = {}) const {
    Arguments arguments = {"restore", file().string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  // The files in the home that a restore has kept.
  std::vector<std::filesystem::path> kept() const {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator(home())) {
      if (entry.path().filename().string().starts_with("events.db.before-restore-")) {
        found.push_back(entry.path());
      }
    }
    return found;
  }

  Ids idsIn(const std::filesystem::path& databaseFile) const {
    const auto other = write("other/host.ini", "[database]\nfile=" + databaseFile.string() + "\n");
    Ids found;
    const Outcome outcome = runProgram({"--home", other.parent_path().string(), "list", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    for (const json& event : jsonLines(outcome.out)) found.push_back(event["id"]);
    return found;
  }
};

using Restore = Backup;

TEST_F(Backup, HasWhatWasThereAndTellsHowMuch) {
  addDataSelection(4);
  add("a");
  add("b");
  add("c", 4);
  const std::string told = back();
  EXPECT_THAT(told, AllOf(StartsWith("Backed up " + database().string() + " to " + file().string()),
                          HasSubstr("  2 events in the global queue\n"),
                          HasSubstr("  1 event in the queue of data selection 4\n"),
                          HasSubstr("  highest id of the global queue: 2\n")));
  EXPECT_THAT(idsIn(file()), ElementsAre(1, 2));
  struct stat status {};
  ASSERT_EQ(stat(file().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
}

// Written in the log and not yet in the file, by a process that has the database open.
TEST_F(Backup, IsMadeBesideAWriterAndHasItsNewestEvents) {
  Program writer(at({"import", "-"}), {.keepInputOpen = true});
  writer.write(serverStatus("held") + "\n");
  while (run({"list", "--json"}).out.find("held") == std::string::npos) {
  }
  back();
  writer.write(serverStatus("later") + "\n");
  writer.closeInput();
  EXPECT_EQ(writer.wait().status, 0);
  EXPECT_THAT(idsIn(file()), ElementsAre(1));
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

TEST_F(Backup, IsOneFileThatNeedsNoOther) {
  add("a");
  back();
  for (const char* const suffix : {"-wal", "-shm", "-journal"}) {
    EXPECT_FALSE(std::filesystem::exists(file().string() + suffix)) << suffix;
  }
  std::ifstream header(file(), std::ios::binary);
  header.seekg(18);
  EXPECT_EQ(header.get(), 1);  // a rollback journal, which is not there when nobody writes
  for (const auto& entry : std::filesystem::directory_iterator(file().parent_path())) {
    EXPECT_TRUE(entry.path() == file() || entry.path() == home()) << entry.path();
  }
}

TEST_F(Backup, ReplacesNoFileUnasked) {
  add("a");
  write("backup.db", "mine");
  const Outcome outcome = run({"backup", file().string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("exists already; --force replaces it"));
  EXPECT_EQ(std::filesystem::file_size(file()), 4u);
  output({"backup", "--force", file().string()});
  EXPECT_THAT(idsIn(file()), ElementsAre(1));
}

// What is no file, as a device, belongs to more than one.
TEST_F(Backup, NeverReplacesWhatIsNoRegularFile) {
  add("a");
  ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
  const auto link = home() / "link";
  std::filesystem::create_symlink(file(), link);
  for (const auto& target : {file(), link}) {
    const Outcome outcome = run({"backup", "--force", target.string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("is no regular file, and is not replaced"));
  }
  EXPECT_TRUE(std::filesystem::is_fifo(file()));
  EXPECT_TRUE(std::filesystem::is_symlink(link));
}

TEST_F(Backup, NeverWritesOverTheDatabaseItself) {
  add("a");
  std::filesystem::create_hard_link(database(), home() / "another-name");
  std::filesystem::remove(home() / "another-name");
  for (const char* const name : {"events.db", "events.db-wal", "events.db.lock"}) {
    const Outcome outcome = run({"backup", "--force", (home() / name).string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("a file in use"));
  }
  EXPECT_THAT(ids(), ElementsAre(1));
}

// Whether or not it is there: as the database's journal, a backup would be its undoing.
TEST_F(Backup, NeverTakesThePlaceOfAFileOfTheHome) {
  add("a");
  write("home/eventd.ini", "[access]\ntokens_file = other.tokens\n");
  for (const char* const name :
       {"events.db-journal", "host.ini", "OrbCentral.ini", "orbdb.ini", "eventd.ini",
        "other.tokens", "eventd-tables.ini", "audit/audit.db", "log/eventsystem.log"}) {
    const bool wasThere = std::filesystem::exists(home() / name);
    for (const char* const command : {"backup", "export"}) {
      const Outcome outcome = run({command, "--force", (home() / name).string()});
      EXPECT_EQ(outcome.status, 1) << command << " " << name;
      EXPECT_THAT(outcome.err, HasSubstr(name)) << command;
    }
    EXPECT_EQ(std::filesystem::exists(home() / name), wasThere) << name;
  }
}

// Those of a process that was killed; not one that somebody works at, or another's file.
TEST_F(Backup, RemovesUnfinishedOnesThatNobodyWorksAt) {
  add("a");
  const auto abandoned = write("backup.db.partial-Ab12Cd", "half");
  const auto itsJournal = write("backup.db.partial-Ab12Cd-journal", "half");
  const auto inWork = write("backup.db.partial-Xy34Zw", "half");
  const auto another = write("backup.db.partial-notes.txt", "mine");
  const int descriptor = ::open(inWork.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(::flock(descriptor, LOCK_EX | LOCK_NB), 0);
  back();
  ::close(descriptor);
  EXPECT_FALSE(std::filesystem::exists(abandoned));
  EXPECT_FALSE(std::filesystem::exists(itsJournal));
  EXPECT_TRUE(std::filesystem::exists(inWork));
  EXPECT_TRUE(std::filesystem::exists(another));
}

TEST_F(Backup, FailsOnADamagedDatabaseAndLeavesNothing) {
  for (int i = 0; i < 50; ++i) add(std::string(100, 'x'));
  execute(database(), "PRAGMA wal_checkpoint(TRUNCATE)");
  {
    std::fstream opened(database(), std::ios::binary | std::ios::in | std::ios::out);
    opened.seekp(8 * 4096);
    const std::string garbage(4096, '\xee');
    opened.write(garbage.data(), static_cast<std::streamsize>(garbage.size()));
  }
  const Outcome outcome = run({"backup", file().string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("is damaged"));
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Backup, SaysWhereThereIsNothing) {
  const Outcome outcome = run({"backup", file().string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("there is no database"));
  EXPECT_FALSE(std::filesystem::exists(home()));
}

TEST_F(Restore, BringsBackWhatWasThereAndKeepsWhatIsReplaced) {
  add("a");
  add("b");
  back();
  output({"delete", "1"});
  add("c");
  const Outcome outcome = restore();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(ids(), ElementsAre(1, 2));
  ASSERT_THAT(kept(), SizeIs(1));
  EXPECT_THAT(outcome.out, HasSubstr("The database that it replaces is " + kept()[0].string()));
  EXPECT_THAT(idsIn(kept()[0]), ElementsAre(2, 3));
  struct stat status {};
  ASSERT_EQ(stat(database().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
  EXPECT_EQ(status.st_nlink, 1u);
}

TEST_F(Restore, GivesNoIdAgainThatWasHandedOutSince) {
  add("a");
  back();
  add("b");
  add("c");
  output({"delete", "3"});
  const Outcome outcome = restore();
  EXPECT_THAT(outcome.out, HasSubstr("highest id of the global queue: 3\n  raised from 1,"));
  EXPECT_EQ(add("d"), 4u);
}

TEST_F(Restore, KeepsTheIdsOfDataSelectionsToo) {
  addDataSelection(4);
  add("a", 4);
  back();
  for (int i = 0; i < 5; ++i) add("b", 4);
  output({"purge", "--yes", "--upto", "5", "--dsid", "4"});
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(add("c", 4), 7u);
}

TEST_F(Restore, KeepsTheIdsAlsoWhereTheBackupHasNoQueueYet) {
  addDataSelection(4);  // makes a database in which no queue was used
  back();
  add("a");
  add("b");
  EXPECT_EQ(restore().status, 0);
  EXPECT_THAT(ids(), IsEmpty());
  EXPECT_EQ(add("c"), 3u);
}

TEST_F(Restore, KeepsTheIdsOfABackupThatIsAheadOfTheDatabase) {
  const std::string early = (home().parent_path() / "early.db").string();
  add("a");
  output({"backup", early});
  add("b");
  output({"delete", "2"});
  back();
  output({"restore", early, "--no-keep-ids"});
  EXPECT_EQ(restore().status, 0);
  EXPECT_EQ(add("c"), 3u);
}

TEST_F(Restore, GivesIdsAgainOnlyWhenToldTo) {
  add("a");
  back();
  add("b");
  const Outcome outcome = restore({"--no-keep-ids"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("ids from 2 to 2 were handed out since the backup"));
  EXPECT_EQ(add("c"), 2u);
}

TEST_F(Restore, RefusesWhileSomebodyWrites) {
  add("a");
  back();
  Program writer(at({"import", "-"}), {.keepInputOpen = true});
  writer.write(serverStatus("held") + "\n");
  while (run({"list", "--json"}).out.find("held") == std::string::npos) {
  }
  const Outcome outcome = restore();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("is open for writing in process " + std::to_string(writer.pid())));
  writer.closeInput();
  writer.wait();
  EXPECT_THAT(ids(), ElementsAre(1, 2));
  EXPECT_THAT(kept(), IsEmpty());
}

TEST_F(Restore, UndoesItselfWithWhatItKept) {
  add("a");
  back();
  add("b");
  restore();
  ASSERT_THAT(kept(), SizeIs(1));
  output({"restore", kept()[0].string()});
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

TEST_F(Restore, WorksWhereThereIsNoDatabaseYet) {
  add("a");
  back();
  std::filesystem::remove_all(home());
  EXPECT_EQ(restore().status, 0);
  EXPECT_THAT(kept(), IsEmpty());
  EXPECT_THAT(ids(), ElementsAre(1));
  EXPECT_EQ(add("b"), 2u);
}

TEST_F(Restore, RefusesWhatIsNoBackup) {
  add("a");
  const auto refuses = [&](const std::string& why) {
    const Outcome outcome = restore();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr(file().string()), HasSubstr(why)));
    EXPECT_THAT(ids(), ElementsAre(1));
    EXPECT_THAT(kept(), IsEmpty());
  };
  refuses("does not exist");
  write("backup.db",
        "no database at all, but long enough to be taken for the header of one, "
        "which is a hundred bytes long");
  refuses("file is not a database");
  std::filesystem::remove(file());
  execute(file(), "CREATE TABLE t (a)");
  refuses("is a SQLite database of another program");
  std::filesystem::remove(file());
  back();
  execute(file(), "PRAGMA user_version = 99");
  refuses("has layout 99");
}

TEST_F(Restore, RefusesADamagedBackup) {
  for (int i = 0; i < 50; ++i) add(std::string(100, 'x'));
  back();
  {
    std::fstream opened(file(), std::ios::binary | std::ios::in | std::ios::out);
    opened.seekp(8 * 4096);
    const std::string garbage(4096, '\xee');
    opened.write(garbage.data(), static_cast<std::streamsize>(garbage.size()));
  }
  const Outcome outcome = restore();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("is damaged"));
  EXPECT_THAT(ids(), SizeIs(50));
  EXPECT_THAT(kept(), IsEmpty());
}

// A database whose pages cannot be read is what a restore is for.
TEST_F(Restore, ReplacesADamagedDatabaseWhenItsIdsAreGivenUp) {
  for (int i = 0; i < 50; ++i) add(std::string(100, 'x'));
  back();
  execute(database(), "PRAGMA wal_checkpoint(TRUNCATE)");
  {
    std::fstream opened(database(), std::ios::binary | std::ios::in | std::ios::out);
    const std::string garbage(16 * 4096, '\xee');
    opened.write(garbage.data(), static_cast<std::streamsize>(garbage.size()));
  }
  const Outcome refused = restore();
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("it is not known which ids were handed out"));
  EXPECT_THAT(kept(), IsEmpty());
  EXPECT_EQ(restore({"--no-keep-ids"}).status, 0);
  EXPECT_THAT(ids(), SizeIs(50));
  EXPECT_THAT(kept(), SizeIs(1));
}

// Events that are only in the log of the database that is replaced go with it, not into the new
// one.
TEST_F(Restore, NeverMixesALogWithAnotherDatabase) {
  add("a");
  back();
  {
    Program writer(at({"import", "-"}), {.keepInputOpen = true});
    writer.write(serverStatus("only in the log") + "\n");
    while (run({"list", "--json"}).out.find("only in the log") == std::string::npos) {
    }
  }
  EXPECT_EQ(restore().status, 0);
  EXPECT_THAT(ids(), ElementsAre(1));
  ASSERT_THAT(kept(), SizeIs(1));
  EXPECT_THAT(idsIn(kept()[0]), ElementsAre(1, 2));
}

// The second name of the log cannot be made: the first, of the database, goes again.
TEST_F(Restore, LeavesNoSecondNameWhereItFails) {
  add("a");
  back();
  execute(database(), "PRAGMA wal_checkpoint(TRUNCATE)");
  const std::filesystem::path log = database().string() + "-wal";
  std::filesystem::remove(log);
  std::filesystem::create_directory(log);
  const Outcome outcome = restore({"--no-keep-ids"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("cannot be kept under this name"));
  EXPECT_THAT(kept(), IsEmpty());
  std::filesystem::remove(log);
  EXPECT_THAT(ids(), ElementsAre(1));
}

// A restore that is killed before its Nth call of the disk, for every N, on a database whose newest
// event is only in its log.
class KilledRestore : public Backup {
 protected:
  void SetUp() override {
    add("old 1");
    back();
    Program writer(at({"import", "-"}), {.keepInputOpen = true});
    writer.write(serverStatus("old 2") + "\n");
    while (run({"list", "--json"}).out.find("old 2") == std::string::npos) {
    }
    writer.signal(SIGKILL);
    writer.wait();
    std::filesystem::copy(home(), original(), std::filesystem::copy_options::recursive);
  }

  std::filesystem::path original() const { return home().parent_path() / "original"; }

  // With a reader, the log cannot be brought into the file before.
  void killAtEveryCall(bool besideAReader) {
    bool killed = true;
    for (int call = 1; killed; ++call) {
      ASSERT_LT(call, 500);
      std::filesystem::remove_all(home());
      std::filesystem::copy(original(), home(), std::filesystem::copy_options::recursive);
      std::unique_ptr<Program> reader;
      if (besideAReader) {
        reader = std::make_unique<Program>(at({"list", "--follow", "--json"}));
        ASSERT_TRUE(reader->waitForOutput("old 2"));
      }
      killed = restoreKilledAt(call);
      reader.reset();
      lookAfter(call);
    }
    EXPECT_THAT(m_ends, ElementsAre("between", "new", "old"));
  }

 private:
  bool restoreKilledAt(int call) const {
    const Outcome outcome = run({"restore", file().string()},
                                {.environment = {"LD_PRELOAD=" KILL_AT_FILE_CALL_LIBRARY,
                                                 "ASAN_OPTIONS=verify_asan_link_order=0",
                                                 "KILL_AT_FILE_CALL=" + std::to_string(call)}});
    EXPECT_TRUE(outcome.status == -1 || outcome.status == 0) << outcome.err;
    return outcome.status == -1;
  }

  // The queue is the old one or the new one, with all of it.
  void lookAfter(int call) {
    Outcome listed = run({"list"});
    if (listed.err.find("readonly database") != std::string::npos) {
      // A change was under way in the file itself: the next writer takes it back, a reader cannot.
      EXPECT_EQ(run({"check"}).status, 0) << call;
      listed = run({"list"});
    }
    if (listed.status != 0) {
      EXPECT_THAT(listed.err, HasSubstr("hard links")) << call;
      m_ends.insert("between");
      takeNamesBack();
    }
    if (ids().size() == 2) {
      m_ends.insert("old");
    } else {
      m_ends.insert("new");
      EXPECT_THAT(ids(), ElementsAre(1)) << call;
      EXPECT_THAT(idsIn(keptDatabase()), ElementsAre(1, 2)) << call;
    }
    EXPECT_EQ(add("next"), 3u) << call;
  }

  std::filesystem::path keptDatabase() const {
    for (const auto& name : kept()) {
      const std::string text = name.string();
      if (!text.ends_with("-wal") && !text.ends_with("-shm")) return name;
    }
    return "none";
  }

  // As the manual has it.
  void takeNamesBack() const {
    const std::string keptName = keptDatabase().string();
    const std::string log = database().string() + "-wal";
    if (std::filesystem::exists(keptName + "-wal") && !std::filesystem::exists(log)) {
      std::filesystem::rename(keptName + "-wal", log);
    }
    std::filesystem::remove(keptName);
  }

  std::set<std::string> m_ends;
};

// A log that a reader holds on to cannot be emptied before.
TEST_F(KilledRestore, LeavesNoLogBesideTheNewDatabase) {
  {
    sqlite3* opened = nullptr;
    ASSERT_EQ(sqlite3_open(database().c_str(), &opened), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> reader(opened, sqlite3_close);
    ASSERT_EQ(sqlite3_exec(opened, "BEGIN; SELECT count(*) FROM events", nullptr, nullptr, nullptr),
              SQLITE_OK);
    EXPECT_EQ(restore().status, 0);
  }
  EXPECT_THAT(ids(), ElementsAre(1));
  ASSERT_THAT(kept(), SizeIs(2)) << "with its log";
}

TEST_F(KilledRestore, LosesNothing) {
  killAtEveryCall(false);
}

TEST_F(KilledRestore, LosesNothingBesideAReader) {
  killAtEveryCall(true);
}

}  // namespace
}  // namespace EventSystemTest
