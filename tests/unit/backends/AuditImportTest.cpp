// The import of the audit database: what it reads, queues, deletes and says.

#include <fstream>

#include "AuditImportFixture.h"

namespace EventSystemTest {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class AuditImport : public AuditImportFixture {};

TEST_F(AuditImport, WithoutAFileThereIsNothingToDo) {
  EXPECT_EQ(0u, run());
  EXPECT_THAT(host().logAndTraces(), ElementsAre(trace("%s:sqlite3 db file not exists yet: %s",
                                                       "PopuAuditEventDB", path().c_str())));
  EXPECT_EQ(0u, sqlite().calls("open"));
}

TEST_F(AuditImport, AnEmptyFileIsNotOpened) {
  std::ofstream(path()).close();
  EXPECT_EQ(0u, run());
  EXPECT_THAT(host().logAndTraces(), ElementsAre(trace("%s:sqlite3 db file has no table inited: %s",
                                                       "PopuAuditEventDB", path().c_str())));
  EXPECT_EQ(0u, sqlite().calls("open"));
}

TEST_F(AuditImport, ForceOnlyAnnouncesTheRun) {
  EXPECT_EQ(0u, run(true));
  EXPECT_THAT(host().log(),
              ElementsAre(info(0, "%s orbd init poping off-line events.", "PopuAuditEventDB")));
  EXPECT_EQ(0u, run(false));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(AuditImport, WithoutRowsNothingIsDeleted) {
  file();
  EXPECT_EQ(0u, run());
  EXPECT_THAT(host().logAndTraces(), ElementsAre(exitLine()));
  EXPECT_THAT(sqlite().executed(), IsEmpty());
}

TEST_F(AuditImport, RowsBecomeEventsInOrderAndAreDeleted) {
  file().add(9, "third");
  file().add(3, "first");
  file().add(5, "second");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("first", "second", "third"));
  EXPECT_THAT(file().ids(), IsEmpty());
  EXPECT_THAT(host().log(), ElementsAre(summary(9, 3)));
  EXPECT_THAT(sqlite().executed(), ElementsAre("delete from event where _id <= 9"));
}

TEST_F(AuditImport, AsksSqliteInOneFixedWay) {
  file().add(1, "a");
  run();
  EXPECT_EQ("SELECT _id,date_created, content,etype FROM event order by _id ",
            sqlite().preparedSql());
  EXPECT_EQ(64, sqlite().preparedLength());
  EXPECT_EQ(10000, sqlite().lastBusyTimeout());
}

TEST_F(AuditImport, AnEventCarriesTheSectionAndTheTimeOfItsImport) {
  const unsigned long before = now();
  file().add(1, "1234567890", auditContent("hello"));
  run();
  const unsigned long date = std::stoul(events().value("1", "date"));
  EXPECT_LE(before, date);
  EXPECT_GE(now(), date);
  EXPECT_EQ("EVENT{version:1;type:8;id:1;date:" + std::to_string(date) +
                ";AUDITEVENT{version:1;action:2;time:3;loadSize:4;AUditMSg:hello;}}",
            events().value("1", "eventstring"));
  EXPECT_EQ("8", events().value("1", "type"));
}

TEST_F(AuditImport, EachRowIsTraced) {
  file().add(4, "17", auditContent("m"));
  run();
  EXPECT_THAT(host().logAndTraces(), Contains(rowLine(4, "17", auditContent("m").c_str(), 8)));
  EXPECT_EQ(exitLine(), host().logAndTraces().back());
  host().setTracing(false);
  file().add(5, "17", auditContent("m"));
  run();
  EXPECT_THAT(host().traces(), IsEmpty());
}

TEST_F(AuditImport, ARowWithoutContentIsNotQueuedButDeleted) {
  file().add(3, "first");
  file().add(5, "1", std::nullopt);
  file().add(9, "last");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("first", "last"));
  EXPECT_THAT(file().ids(), IsEmpty());
  EXPECT_THAT(host().log(),
              ElementsAre(error(0, "%s:eventid %d content is empty.", "PopuAuditEventDB", 5),
                          keptInLog(0, 5, "1", "(null)"), summary(9, 2)));
}

TEST_F(AuditImport, ARowWithoutADateIsNotQueuedButDeleted) {
  file().add(3, std::nullopt, auditContent("x"));
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(file().ids(), IsEmpty());
  EXPECT_THAT(host().log(),
              ElementsAre(error(0, "%s:eventid %d content is empty.", "PopuAuditEventDB", 3),
                          keptInLog(0, 3, "(null)", auditContent("x")), summary(3, 0)));
}

TEST_F(AuditImport, AnEmptyRowIsNotKeptInTheLog) {
  file().add(3, std::nullopt, std::nullopt);
  EXPECT_EQ(0u, run());
  EXPECT_THAT(host().log(),
              ElementsAre(error(0, "%s:eventid %d content is empty.", "PopuAuditEventDB", 3),
                          summary(3, 0)));
}

TEST_F(AuditImport, AnEmptyRowOfAnotherTypeIsAnEmptyRow) {
  file().add(3, "1", std::nullopt, 7);
  EXPECT_EQ(0u, run());
  EXPECT_THAT(file().ids(), IsEmpty());
}

TEST_F(AuditImport, ARowOfAnotherTypeStopsTheImportAndKeepsEverything) {
  file().add(3, "1", auditContent("x"), 7);
  file().add(4, "later");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_THAT(file().ids(), ElementsAre(3, 4));
  EXPECT_THAT(host().log(), ElementsAre(error(0, "%s:only audit event is supported, wrong: %d.",
                                              "PopuAuditEventDB", 7)));
  EXPECT_EQ(exitLine(), host().logAndTraces().back());
}

TEST_F(AuditImport, ARowOfAnotherTypeIsLoggedWithTheResultSoFar) {
  file().add(3, "1", "malformed");
  file().add(4, "1", std::nullopt);
  file().add(5, "1", auditContent("x"), 1);
  EXPECT_EQ(9u, run());
  EXPECT_THAT(file().ids(), ElementsAre(3, 4, 5));
  EXPECT_THAT(
      host().log(),
      ::testing::IsSupersetOf(
          {error(9, "%s:eventid %d content is empty.", "PopuAuditEventDB", 4),
           error(9, "%s:only audit event is supported, wrong: %d.", "PopuAuditEventDB", 1)}));
}

TEST_F(AuditImport, ARowThatDoesNotParseIsLoggedTwiceAndLost) {
  file().add(3, "1", "malformed");
  EXPECT_EQ(9u, run());
  EXPECT_THAT(file().ids(), IsEmpty());
  const std::vector<LogLine> lines = host().log();
  ASSERT_EQ(4u, lines.size());
  EXPECT_EQ(error(9, "%s:eventid %d failed fromString:%s.", "PopuAuditEventDB", 3, "malformed"),
            lines[1]);
  EXPECT_EQ(writeFailed(9, 3, 9), lines[2]);
  EXPECT_EQ(summary(3, 0), lines[3]);
  EXPECT_EQ(0, store->writes);
}

TEST_F(AuditImport, TheResultIsThatOfTheLastRow) {
  file().add(3, "1", "malformed");
  file().add(4, "fine");
  EXPECT_EQ(0u, run());
  file().add(5, "fine");
  file().add(6, "1", "malformed");
  EXPECT_EQ(9u, run());
  EXPECT_THAT(queued(), ElementsAre("fine", "fine"));
}

TEST_F(AuditImport, ARefusedWriteLosesTheRow) {
  (*store).*access(CountLimit()) = 1;
  file().add(3, "first");
  file().add(4, "17", auditContent("second"));
  EXPECT_EQ(50u, run());
  EXPECT_THAT(queued(), ElementsAre("first"));
  EXPECT_THAT(file().ids(), IsEmpty());
  EXPECT_THAT(host().log(), Contains(writeFailed(50, 4, 50)));
  EXPECT_THAT(host().log(), Contains(keptInLog(50, 4, "17", auditContent("second"))));
  EXPECT_EQ(summary(4, 0), host().log().back()) << "the last event was given no id";
}

TEST_F(AuditImport, AFailedWriteStillReportsItsId) {
  file().add(3, "first");
  fail("addRecord");
  EXPECT_EQ(4u, run());
  EXPECT_THAT(host().log(), Contains(writeFailed(4, 3, 4)));
  EXPECT_EQ(summary(3, 1), host().log().back());
}

TEST_F(AuditImport, AContentThatIsTooLongIsCutAndHandedToTheParser) {
  const std::string content = auditContent(std::string(10300, 'm'));
  file().add(3, "17", content);
  EXPECT_EQ(9u, run());
  const int length = static_cast<int>(
      std::string("EVENT{version:1;type:8;id:0;date:17;AUDITEVENT{;}}").size() + content.size());
  EXPECT_EQ(warning(4, "%s AUDITEVENT string is too long %d than buffer size:%d",
                    "PopuAuditEventDB", length, 10240),
            host().log().front());
  EXPECT_THAT(host().log(), Contains(writeFailed(9, 3, 9)));
  EXPECT_THAT(file().ids(), IsEmpty());
}

TEST_F(AuditImport, TheLongestStringOf10239CharactersIsNotCut) {
  const std::size_t frame =
      std::string("EVENT{version:1;type:8;id:0;date:17;AUDITEVENT{;}}").size() +
      auditContent("").size();
  file().add(3, "17", auditContent(std::string(10239 - frame, 'm')));
  std::string parsedMessage;
  store->onWrite = [&](Event* event) {
    parsedMessage = textOf(*event);
    return 50;
  };
  EXPECT_EQ(50u, run());
  EXPECT_THAT(host().log(), Not(Contains(::testing::Field(&LogLine::level, "warning"))));
  EXPECT_NE(std::string::npos, parsedMessage.find(std::string(10239 - frame, 'm') + ";}}"));
  file().add(4, "17", auditContent(std::string(10240 - frame, 'm')));
  EXPECT_EQ(9u, run());
  EXPECT_EQ("warning", host().log().front().level);
}

TEST_F(AuditImport, RowsThatComeDuringTheRunSurviveIt) {
  file().add(3, "first");
  file().run("pragma journal_mode=wal");
  store->onWrite = [this](Event*) {
    file().add(12, "late");
    return 0;
  };
  EXPECT_EQ(0u, run());
  store->onWrite = nullptr;
  EXPECT_THAT(file().ids(), ElementsAre(12));
  EXPECT_THAT(queued(), ElementsAre("first"));
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("first", "late"));
}

TEST_F(AuditImport, NegativeRowNumbersArePrintedAsTheyAre) {
  file().add(-2, "a");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("a"));
  EXPECT_THAT(sqlite().executed(), ElementsAre("delete from event where _id <= -2"));
  EXPECT_THAT(file().ids(), IsEmpty());
}

TEST_F(AuditImport, ARowNumberedZeroIsQueuedAndStays) {
  file().add(0, "zero");
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("zero"));
  EXPECT_THAT(sqlite().executed(), IsEmpty());
}

TEST_F(AuditImport, RunsAtConstructionWithItsAnnouncement) {
  file().add(3, "first");
  store.reset();
  host().clearCalls();
  store = std::make_unique<ImportingStore>();
  EXPECT_EQ(info(0, "%s orbd init poping off-line events.", "PopuAuditEventDB"),
            host().log().front());
  EXPECT_THAT(queued(), ElementsAre("first"));
  EXPECT_EQ(info(0, "%s Ending consistency check", "checkConsistency"), host().log().back());
}

TEST_F(AuditImport, RunsAtTheStartOfEveryGetNextEvent) {
  file().add(3, "first");
  Event* event = nullptr;
  ASSERT_EQ(0, store->getNextEvent(0, &event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(1u, event->getId());
  EXPECT_EQ(EventSystem::kAuditEvent, event->getType());
  delete event;
  file().add(4, "second");
  ASSERT_EQ(0, store->getNextEvent(1, &event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(2u, event->getId());
  delete event;
}

TEST_F(AuditImport, AFailedImportDoesNotStopTheQueue) {
  putRow(7);
  putMaxId(7);
  store->populateIdCache();
  std::ofstream(path()) << "this is no database, and long enough to be looked at as one";
  Event* event = nullptr;
  EXPECT_EQ(0, store->getNextEvent(0, &event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(7u, event->getId());
  delete event;
}

TEST_F(AuditImport, AnUnusableStoreRefusesAndLeavesTheRows) {
  file().add(3, "first");
  FakeConfiguration configuration = host().configuration();
  configuration.databaseDirectory.clear();
  host().configure(configuration);
  build();
  EXPECT_EQ(4u, store->PopuAuditEventDB(true));
  EXPECT_THAT(file().ids(), ElementsAre(3));
  EXPECT_EQ(0u, sqlite().calls("open"));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(AuditImport, AStoreWithoutItsTableKeepsTheAuditRows) {
  file().add(3, "first");
  host().dropTable("events");
  fail("CheckAddTable");
  build();
  EXPECT_EQ(4u, store->PopuAuditEventDB(false));
  EXPECT_THAT(file().ids(), ElementsAre(3));
}

TEST_F(AuditImport, ARunWithinARunReturnsAtOnce) {
  file().add(3, "first");
  file().add(4, "second");
  std::vector<unsigned int> nested;
  store->onWrite = [&](Event*) {
    host().setTracing(true);
    const std::size_t lines = host().logAndTraces().size();
    nested.push_back(store->PopuAuditEventDB(false));
    EXPECT_EQ(lines, host().logAndTraces().size());
    return 0;
  };
  EXPECT_EQ(0u, run());
  EXPECT_THAT(nested, ElementsAre(0u, 0u));
  EXPECT_EQ(1u, sqlite().calls("open"));
  EXPECT_THAT(queued(), ElementsAre("first", "second"));
}

TEST_F(AuditImport, UnderAnAgeLimitEveryRowIsQueuedOnce) {
  (*store).*access(AgeLimit()) = 1;
  putRow(1, 1, capacityText(1, secondsAgo(3 * kDay)));
  putMaxId(1);
  store->populateIdCache();
  file().add(3, "first");
  file().add(4, "second");
  file().add(5, "third");
  Event* event = nullptr;
  ASSERT_EQ(0, store->getNextEvent(1, &event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(2u, event->getId());
  delete event;
  EXPECT_EQ(4u, events().size());
  EXPECT_EQ(1u, sqlite().calls("open"));
}

TEST_F(AuditImport, ARunThatThrewDoesNotBlockTheNext) {
  file().add(3, "first");
  store->onWrite = [](Event*) -> int { throw std::runtime_error("full"); };
  EXPECT_THROW(store->PopuAuditEventDB(false), std::runtime_error);
  EXPECT_EQ(0, sqlite().openDatabases());
  EXPECT_EQ(0, sqlite().openStatements());
  store->onWrite = nullptr;
  EXPECT_EQ(0u, run());
  EXPECT_THAT(queued(), ElementsAre("first"));
}

TEST_F(AuditImport, WithoutAnAuditPathTheEmptyNameIsOpened) {
  ((*store).*access(AuditDbPath()))[0] = '\0';
  EXPECT_EQ(4u, run());
  EXPECT_EQ(1u, sqlite().calls("open"));
  EXPECT_EQ("error", host().log().front().level);
}

}  // namespace
}  // namespace EventSystemTest
