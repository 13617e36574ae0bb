// The import of an audit database that is not what it should be: another kind of file, a file that
// cannot be read or written, a schema or values of another kind, a file that somebody holds.

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "AuditImportFixture.h"
#include "tests/unit/backends/LockedFile.h"

namespace EventSystemTest {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr char kQuery[] = "SELECT _id,date_created, content,etype FROM event order by _id ";

// While it lives the process has no more rights than anybody, also where it is root's.
class WithoutRights {
 public:
  WithoutRights() : m_user(geteuid()) {
    if (m_user == 0 && seteuid(kNobody) != 0) throw std::runtime_error("seteuid");
  }
  ~WithoutRights() {
    if (seteuid(m_user) != 0) std::abort();
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;
  uid_t m_user;
};

class HostileAuditFile : public AuditImportFixture {
 protected:
  void TearDown() override {
    chmod(directory.path().c_str(), 0700);
    AuditImportFixture::TearDown();
  }

  static LogLine notThere(const std::string& path) {
    return trace("%s:sqlite3 db file not exists yet: %s", "PopuAuditEventDB", path.c_str());
  }
  static LogLine noTable(const std::string& path) {
    return trace("%s:sqlite3 db file has no table inited: %s", "PopuAuditEventDB", path.c_str());
  }
  LogLine notOpened() const {
    return error(4, "%s: faile to open file (%s) ", "PopuAuditEventDB", path().c_str());
  }
  LogLine notPrepared(const char* status, const char* message) const {
    return error(4, "%s: DB[%s] failed to prepare SQL[%s] (%s):%s.", "PopuAuditEventDB",
                 path().c_str(), kQuery, status, message);
  }
  static LogLine unreadable(int row, const char* content) {
    return error(9, "%s:eventid %d failed fromString:%s.", "PopuAuditEventDB", row, content);
  }

  // A file in place of the audit database, made by one statement.
  void make(const char* sql) const {
    sqlite3* opened = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open_v2(path().c_str(), &opened,
                                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
    const SqliteProbe::Pause pause;
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(opened, sql, nullptr, nullptr, nullptr));
    sqlite3_close(opened);
  }

  void expectNothingToDo(const LogLine& line) {
    EXPECT_EQ(0u, run());
    EXPECT_THAT(host().logAndTraces(), ElementsAre(line));
    EXPECT_EQ(0u, sqlite().calls("open"));
  }
  void expectRefused(const LogLine& line) {
    EXPECT_EQ(4u, run());
    EXPECT_THAT(host().log(), ElementsAre(line));
    EXPECT_THAT(queued(), IsEmpty());
  }

  std::filesystem::path beside(const char* name) const { return directory.path() / name; }
};

TEST_F(HostileAuditFile, IsOpenedWithAllOfSqlitesDefences) {
  file();
  run();
  EXPECT_TRUE(sqlite().wasDefensive());
}

TEST_F(HostileAuditFile, MayBeASymbolicLinkToAnAuditDatabase) {
  AuditFile elsewhere(beside("elsewhere.db"));
  elsewhere.add(1, "far away");
  std::filesystem::create_symlink(beside("elsewhere.db"), path());
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("far away"));
  EXPECT_THAT(elsewhere.ids(), IsEmpty());
}

TEST_F(HostileAuditFile, ThatIsADanglingLinkIsNotThere) {
  std::filesystem::create_symlink(beside("nowhere"), path());
  expectNothingToDo(notThere(path()));
  EXPECT_FALSE(std::filesystem::exists(beside("nowhere")));
}

TEST_F(HostileAuditFile, ThatIsALinkToItselfIsNotThere) {
  std::filesystem::create_symlink(path(), path());
  expectNothingToDo(notThere(path()));
}

TEST_F(HostileAuditFile, ThatIsAnEmptyDirectoryHasNoTable) {
  std::filesystem::create_directory(path());
  expectNothingToDo(noTable(path()));
}

TEST_F(HostileAuditFile, ThatIsADirectoryIsNotOpened) {
  std::filesystem::create_directory(path());
  std::ofstream(path() + "/content") << "x";
  expectRefused(notOpened());
}

TEST_F(HostileAuditFile, ThatIsAPipeHasNoTableAndIsNotWaitedFor) {
  ASSERT_EQ(0, mkfifo(path().c_str(), 0600));
  expectNothingToDo(noTable(path()));
}

TEST_F(HostileAuditFile, WithAPipeForItsJournalIsNotOpened) {
  file().add(3, "kept");
  ASSERT_EQ(0, mkfifo((path() + "-journal").c_str(), 0600));
  expectRefused(notOpened());
  EXPECT_EQ(0u, sqlite().calls("open"));
  std::filesystem::remove(path() + "-journal");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("kept"));
}

TEST_F(HostileAuditFile, WithAPipeForItsLogIsNotWaitedFor) {
  file().add(3, "read");
  file().run("pragma journal_mode = wal");
  ASSERT_EQ(0, mkfifo((path() + "-wal").c_str(), 0600));
  run();
}

TEST_F(HostileAuditFile, ThatIsADeviceHasNoTable) {
  for (const char* device : {"/dev/null", "/dev/zero", "/dev/full"}) {
    std::filesystem::remove(path());
    std::filesystem::create_symlink(device, path());
    expectNothingToDo(noTable(path()));
  }
}

TEST_F(HostileAuditFile, WithoutTheTableIsRefused) {
  make("create table events (_id, date_created, content, etype)");
  expectRefused(notPrepared("SQL logic error", "no such table: event"));
}

TEST_F(HostileAuditFile, WithoutAColumnIsRefused) {
  make("create table event (_id integer primary key, date_created text, content text)");
  expectRefused(notPrepared("SQL logic error", "no such column: etype"));
}

TEST_F(HostileAuditFile, WithAViewInPlaceOfTheTableIsRefused) {
  make(
      "create table rows (_id, date_created, content, etype);"
      "create view event as select * from rows");
  expectRefused(notPrepared("SQL logic error", "access to view \"event\" prohibited"));
}

TEST_F(HostileAuditFile, WithAViewThatHasNoEndIsRefused) {
  make(
      "create view event as with recursive n(i) as (select 1 union all select i + 1 from n) "
      "select i as _id, '1' as date_created, 'x' as content, 8 as etype from n");
  EXPECT_EQ(4u, run());
  EXPECT_EQ(0u, sqlite().calls("step"));
}

TEST_F(HostileAuditFile, OfAnotherFormatIsRefused) {
  std::ofstream(path()) << "These are no tables, but words, and more of them than a header has.";
  expectRefused(notPrepared("file is not a database", "file is not a database"));
}

TEST_F(HostileAuditFile, ThatIsCutIsRefused) {
  for (int id = 1; id <= 100; ++id) file().add(id, std::string(200, 'm'));
  std::filesystem::resize_file(path(), 4096 + 100);
  expectRefused(
      notPrepared("database disk image is malformed", "database disk image is malformed"));
}

TEST_F(HostileAuditFile, ThatNobodyMayReadIsNotOpened) {
  file().add(1, "secret");
  chmod(path().c_str(), 0);
  chmod(directory.path().c_str(), 0755);
  const WithoutRights anybody;
  expectRefused(notOpened());
}

TEST_F(HostileAuditFile, InADirectoryThatNobodyMayEnterIsNotThere) {
  file().add(1, "secret");
  chmod(directory.path().c_str(), 0);
  const WithoutRights anybody;
  expectNothingToDo(notThere(path()));
}

// Nothing is lost, and the events come again at the next run: the rows cannot be deleted.
TEST_F(HostileAuditFile, ThatCannotBeWrittenIsQueuedAndKeepsItsRows) {
  file().add(3, "kept");
  chmod(path().c_str(), 0444);
  chmod(directory.path().c_str(), 0555);
  {
    const WithoutRights anybody;
    EXPECT_EQ(4u, run());
  }
  EXPECT_THAT(queued(), ElementsAre("kept"));
  const char* const why = "attempt to write a readonly database";
  EXPECT_THAT(host().log(), ElementsAre(summary(3, 1), deleteFailed(why, 0), deleteFailed(why, 1),
                                        deleteFailed(why, 2)));
  EXPECT_THAT(file().ids(), ElementsAre(3));
}

TEST_F(HostileAuditFile, InWalModeWithoutRightsForTheLogIsRefused) {
  file().add(3, "kept");
  file().run("pragma journal_mode = wal");
  chmod(path().c_str(), 0444);
  chmod(directory.path().c_str(), 0555);
  {
    const WithoutRights anybody;
    expectRefused(notPrepared("attempt to write a readonly database",
                              "attempt to write a readonly database"));
  }
  chmod(directory.path().c_str(), 0700);
  chmod(path().c_str(), 0600);
  EXPECT_THAT(file().ids(), ElementsAre(3));
}

TEST_F(HostileAuditFile, InWalModeIsReadAndEmptied) {
  file().run("pragma journal_mode = wal");
  file().add(3, "first");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("first"));
  EXPECT_THAT(file().ids(), IsEmpty());
}

// SQLite waits 10 seconds for a lock; so does the import, once, and not in a loop of its own.
TEST_F(HostileAuditFile, ThatAnotherProcessHoldsIsWaitedForAsLongAsSaid) {
  file().add(3, "kept");
  {
    const LockedFile locked(path(), "BEGIN EXCLUSIVE");
    sqlite().divideBusyTimeout(100);
    expectRefused(notPrepared("database is locked", "database is locked"));
    EXPECT_EQ(10000, sqlite().lastBusyTimeout());
    EXPECT_EQ(1u, sqlite().calls("prepare"));
  }
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("kept"));
}

TEST_F(HostileAuditFile, ThatAnotherProcessWritesIsQueuedAndKeepsItsRows) {
  file().add(3, "kept");
  const LockedFile locked(path(), "BEGIN IMMEDIATE");
  sqlite().divideBusyTimeout(100);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(queued(), ElementsAre("kept"));
  const char* const why = "database is locked";
  EXPECT_THAT(host().log(), ElementsAre(summary(3, 1), deleteFailed(why, 0), deleteFailed(why, 1),
                                        deleteFailed(why, 2)));
}

TEST_F(HostileAuditFile, MayHaveAnyTypeInAnyColumn) {
  make("create table event (_id, date_created, content, etype)");
  file().run("insert into event values (1.5, 17, '" + auditContent("real") +
             "', '8'), "
             "('2', x'31', cast('" +
             auditContent("blob") +
             "' as blob), 8.9), "
             "('x', 1, 99, 8)");
  EXPECT_EQ(9u, run());
  EXPECT_THAT(queued(), ElementsAre("real", "blob"));
  EXPECT_THAT(host().log(), Contains(unreadable(0, "99")));
}

// A type that is no number counts as 0, which is no audit event: the import stops.
TEST_F(HostileAuditFile, WithATypeThatIsNoNumberKeepsEveryRow) {
  make("create table event (_id integer primary key, date_created, content, etype)");
  file().run("insert into event values (1, '1', '" + auditContent("a") + "', 'audit')");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(host().log(), ElementsAre(error(0, "%s:only audit event is supported, wrong: %d.",
                                              "PopuAuditEventDB", 0)));
  EXPECT_THAT(file().ids(), ElementsAre(1));
}

TEST_F(HostileAuditFile, WithAHugeTextLosesNoByteOfItInTheLog) {
  const std::string content = auditContent(std::string(3 << 20, 'm'));
  file().add(7, "1", content);
  EXPECT_EQ(9u, run());
  EXPECT_THAT(host().log(), Contains(unreadable(7, content.c_str())));
  EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(HostileAuditFile, WithATriggerThatForbidsDeletingKeepsItsRows) {
  file().add(3, "kept");
  file().run("create trigger t before delete on event begin select raise(abort, 'never'); end");
  EXPECT_EQ(4u, run());
  EXPECT_THAT(queued(), ElementsAre("kept"));
  EXPECT_THAT(host().log(), Contains(deleteFailed("never", 2)));
  EXPECT_THAT(file().ids(), ElementsAre(3));
}

}  // namespace
}  // namespace EventSystemTest
