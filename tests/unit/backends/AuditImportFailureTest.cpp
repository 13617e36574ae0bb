// The import of the audit database when SQLite fails.

#include <sqlite3.h>

#include <fstream>

#include "AuditImportFixture.h"

namespace EventSystemTest {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class AuditImportFailure : public AuditImportFixture {
 protected:
  // Three rows, numbered 3, 5 and 9.
  void addThreeRows() {
    file().add(3, "first");
    file().add(5, "second");
    file().add(9, "third");
  }
};

TEST_F(AuditImportFailure, AFileThatCannotBeOpenedGives4AndItsHandleIsClosed) {
  addThreeRows();
  sqlite().fail("open", 1, SQLITE_CANTOPEN);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(host().logAndTraces(), ElementsAre(error(4, "%s: faile to open file (%s) ",
                                                       "PopuAuditEventDB", path().c_str())));
  EXPECT_EQ(0u, sqlite().calls("prepare"));
  EXPECT_EQ(0u, run());
  EXPECT_EQ(3u, queued().size());
}

TEST_F(AuditImportFailure, AQueryThatCannotBePreparedGives4) {
  file();
  sqlite().fail("prepare", 1, SQLITE_SCHEMA);
  EXPECT_EQ(4u, run());
  ASSERT_EQ(1u, host().log().size());
  EXPECT_EQ(error(4, "%s: DB[%s] failed to prepare SQL[%s] (%s):%s.", "PopuAuditEventDB",
                  path().c_str(), "SELECT _id,date_created, content,etype FROM event order by _id ",
                  sqlite3_errstr(SQLITE_SCHEMA), "not an error"),
            host().log()[0]);
  EXPECT_EQ(0u, sqlite().calls("step"));
}

TEST_F(AuditImportFailure, AFileThatIsNoDatabaseFailsToPrepare) {
  std::ofstream(path()) << std::string(4096, 'x');
  EXPECT_EQ(4u, run());
  ASSERT_EQ(1u, host().log().size());
  EXPECT_THAT(host().log()[0].text, HasSubstr("failed to prepare SQL["));
}

TEST_F(AuditImportFailure, ADatabaseWithoutTheTableFailsToPrepare) {
  file().run("drop table event");
  file().run("create table other (a)");
  EXPECT_EQ(4u, run());
  EXPECT_THAT(host().log()[0].text, HasSubstr("no such table: event"));
}

TEST_F(AuditImportFailure, ThreeFailedStepsEndTheRunWithoutTheDelete) {
  addThreeRows();
  for (std::size_t n = 1; n <= 3; ++n) sqlite().fail("step", n, SQLITE_IOERR);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(stepFailed(0, SQLITE_IOERR, "not an error", 1),
                          stepFailed(0, SQLITE_IOERR, "not an error", 2),
                          stepFailed(0, SQLITE_IOERR, "not an error", 3), exitLine()));
  EXPECT_THAT(file().ids(), ElementsAre(3, 5, 9));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(sqlite().executed(), IsEmpty());
}

TEST_F(AuditImportFailure, TwoFailedStepsAreRetriedAtOnce) {
  addThreeRows();
  sqlite().fail("step", 1, SQLITE_BUSY);
  sqlite().fail("step", 2, SQLITE_BUSY);
  EXPECT_EQ(0u, run()) << "the last row's result is the run's";
  EXPECT_THAT(queued(), ElementsAre("first", "second", "third"));
  EXPECT_THAT(file().ids(), IsEmpty());
}

TEST_F(AuditImportFailure, FailedStepsAreCountedOverTheWholeRun) {
  addThreeRows();
  sqlite().fail("step", 2, SQLITE_IOERR);  // behind the first row; then 3 passes over it
  sqlite().fail("step", 5, SQLITE_IOERR);  // behind the second row; then 6 and 7 pass over
  sqlite().fail("step", 9, SQLITE_IOERR);  // behind the third
  EXPECT_EQ(4u, run());
  EXPECT_EQ(stepFailed(9, SQLITE_IOERR, "another row available", 3), host().log().back());
  EXPECT_THAT(queued(), ElementsAre("first", "second", "third"));
  EXPECT_THAT(file().ids(), ElementsAre(3, 5, 9));
}

TEST_F(AuditImportFailure, ARetryAfterTheLastRowLeavesTheResultAt4AndDeletes) {
  addThreeRows();
  sqlite().fail("step", 4, SQLITE_IOERR);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(queued(), ElementsAre("first", "second", "third"));
  EXPECT_THAT(file().ids(), IsEmpty());
  EXPECT_EQ(summary(9, 3), host().log().back());
}

TEST_F(AuditImportFailure, WhereverAStepFailsEachRowIsQueuedOnce) {
  for (std::size_t failing = 1; failing <= 4; ++failing) {
    for (std::size_t second = failing + 1; second <= failing + 4; ++second) {
      host().reset();
      FakeConfiguration configuration;
      configuration.auditDirectory = directory.path().string();
      host().configure(configuration);
      build();
      addThreeRows();
      sqlite().reset();
      sqlite().fail("step", failing, SQLITE_IOERR);
      sqlite().fail("step", second, SQLITE_BUSY);
      run();
      EXPECT_THAT(queued(), ElementsAre("first", "second", "third"))
          << "steps " << failing << " and " << second;
      EXPECT_THAT(file().ids(), IsEmpty());
    }
  }
}

TEST_F(AuditImportFailure, RowsThatFailedToParseArePassedOverByARetryToo) {
  file().add(3, "1", "malformed");
  file().add(4, "1", std::nullopt);
  file().add(5, "fine");
  sqlite().fail("step", 4, SQLITE_IOERR);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(queued(), ElementsAre("fine"));
  std::size_t parseFailures = 0;
  for (const LogLine& line : host().log()) {
    if (line.text.find("failed fromString") != std::string::npos) ++parseFailures;
  }
  EXPECT_EQ(1u, parseFailures);
}

TEST_F(AuditImportFailure, ATextWithoutMemoryIsReadAgainAndNotTakenForAnEmptyOne) {
  for (std::size_t failing = 1; failing <= 6; ++failing) {
    addThreeRows();
    sqlite().reset();
    sqlite().fail("column_text", failing, SQLITE_NOMEM);
    const std::size_t before = queued().size();
    run();
    EXPECT_EQ(before + 3, queued().size()) << "text " << failing;
    EXPECT_THAT(file().ids(), IsEmpty());
    EXPECT_THAT(host().log(), Contains(stepFailed(failing <= 2   ? 3
                                                  : failing <= 4 ? 5
                                                                 : 9,
                                                  SQLITE_NOMEM, "another row available", 1)));
  }
}

TEST_F(AuditImportFailure, TextsThatNeverGetMemoryKeepEveryRow) {
  addThreeRows();
  for (std::size_t n = 1; n <= 6; ++n) sqlite().fail("column_text", n, SQLITE_NOMEM);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(file().ids(), ElementsAre(3, 5, 9));
}

TEST_F(AuditImportFailure, AnEmptyTextIsNotTakenForOneWithoutMemory) {
  file().run("insert into event values (3, '1', '', 8), (5, x'', x'', 8), (7, null, '', 8)");
  run();
  EXPECT_THAT(file().ids(), IsEmpty());
}

TEST_F(AuditImportFailure, AStepThatGives0EndsTheReading) {
  addThreeRows();
  sqlite().fail("step", 3, SQLITE_OK);
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("first", "second"));
  EXPECT_THAT(host().log(), ElementsAre(summary(5, 2)));
  EXPECT_THAT(file().ids(), ElementsAre(9));
}

TEST_F(AuditImportFailure, AFailedDeleteIsTriedAgainAndTheResultStays4) {
  addThreeRows();
  sqlite().fail("exec", 1, SQLITE_BUSY);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(file().ids(), IsEmpty());
  EXPECT_THAT(sqlite().executed(),
              ElementsAre("delete from event where _id <= 9", "delete from event where _id <= 9"));
  EXPECT_THAT(host().log(), ElementsAre(summary(9, 3), deleteFailed("no more rows available", 0)));
  EXPECT_EQ(exitLine(), host().logAndTraces().back());
}

TEST_F(AuditImportFailure, ThreeFailedDeletesKeepTheRows) {
  addThreeRows();
  for (std::size_t n = 1; n <= 3; ++n) sqlite().fail("exec", n, SQLITE_READONLY);
  EXPECT_EQ(4u, run());
  EXPECT_THAT(file().ids(), ElementsAre(3, 5, 9));
  EXPECT_THAT(host().log(), ElementsAre(summary(9, 3), deleteFailed("no more rows available", 0),
                                        deleteFailed("no more rows available", 1),
                                        deleteFailed("no more rows available", 2)));
  EXPECT_EQ(3u, sqlite().calls("exec"));
}

TEST_F(AuditImportFailure, ADirectoryInPlaceOfTheFileFailsAndLeaksNothing) {
  std::filesystem::create_directory(path());
  std::ofstream(path() + "/content") << "x";
  EXPECT_EQ(4u, run());
}

TEST_F(AuditImportFailure, ALogCallThatThrowsLeavesNoHandleOpen) {
  addThreeRows();
  const std::size_t lines = [this] {
    run();
    return host().countCalls(CallKind::kLog);
  }();
  for (std::size_t n = 1; n <= lines; ++n) {
    addThreeRows();
    Fault fault;
    fault.mode = FaultMode::kThrow;
    fault.kinds = {CallKind::kLog};
    fault.nth = n;
    host().inject(fault);
    EXPECT_THROW(run(), std::runtime_error);
    host().clearFaults();
    EXPECT_EQ(0, sqlite().openDatabases());
    EXPECT_EQ(0, sqlite().openStatements());
    EXPECT_EQ(0u, run());
  }
}

}  // namespace
}  // namespace EventSystemTest
