// The manager's operations over scripted stores: routing, results, log lines and the mutex.

#include <chrono>
#include <thread>

#include "EventSystem/EventManager.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"
#include "tests/support/ScriptedStores.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventManagerTest : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    manager = std::make_unique<EventManager>();
    replaceStores();
    host().clearCalls();
  }
  void TearDown() override {
    EXPECT_TRUE(!manager || isFree(*manager)) << "the manager's mutex is still held";
    manager.reset();
    FakeHostTest::TearDown();
  }

  void replaceStores() {
    EventSystem::EventStorage*& global = (*manager).*access(ManagerStore());
    EventSystem::DSEventStorage*& selections = (*manager).*access(ManagerDSStore());
    delete global;
    delete selections;
    global = std::make_unique<ScriptedGlobalStore>(script).release();
    selections = std::make_unique<ScriptedDSStore>(script).release();
  }

  int newEvent(unsigned int dsid) {
    TextEvent event("text");
    return manager->newEvent(&event, dsid);
  }

  static int throwStandard() { throw std::runtime_error("x"); }
  static int throwOther() { throw 42; }

  static LogLine adding(unsigned int dsid) {
    return info(-1, "%s Adding new event. type:%d, dsid:%d", "newEvent", 5, static_cast<int>(dsid));
  }
  static LogLine getting(unsigned int dsid, unsigned long afterId) {
    return info(-1, "%s [dsid=%d] Getting the next event after (%lu)", "getNextEvent",
                static_cast<int>(dsid), afterId);
  }
  static LogLine deleting(unsigned int dsid, unsigned long id) {
    return info(-1, "%s [dsid=%d] Deleting event(%lu)", "deleteEvent", static_cast<int>(dsid), id);
  }
  static LogLine checking(bool fix) {
    return info(-1, "%s Checking event consistency.  Any issues found will %sbe fixed",
                "checkConsistency", fix ? "" : "not ");
  }

  StoreScript script;
  std::unique_ptr<EventManager> manager;
};

TEST_F(EventManagerTest, RoutesByDataSelection) {
  Event* event = nullptr;
  for (const unsigned int dsid : {0u, 2u, 1u, 3u, 4294967295u}) {
    newEvent(dsid);
    manager->getNextEvent(7, &event, dsid);
    manager->deleteEvent(8, dsid);
  }
  EXPECT_THAT(
      script.calls,
      ElementsAre("global writeEvent", "global getNextEvent 7", "global deleteEvent 8",
                  "global writeEvent", "global getNextEvent 7", "global deleteEvent 8",
                  "ds writeEvent 1", "ds getNextEvent 7 1", "ds deleteEvent 8 1", "ds writeEvent 3",
                  "ds getNextEvent 7 3", "ds deleteEvent 8 3", "ds writeEvent 4294967295",
                  "ds getNextEvent 7 4294967295", "ds deleteEvent 8 4294967295"));
}

TEST_F(EventManagerTest, TheSharedDataSelectionIsWhatTheMemberSays) {
  (*manager).*access(ManagerOrigDsid()) = 9;
  newEvent(9);
  newEvent(2);
  EXPECT_THAT(script.calls, ElementsAre("global writeEvent", "ds writeEvent 2"));
}

TEST_F(EventManagerTest, ANewEventIsAnnouncedAndPassedOn) {
  EXPECT_EQ(0, newEvent(5));
  EXPECT_THAT(host().log(), ElementsAre(adding(5)));
}

TEST_F(EventManagerTest, ANullEventIsRefusedWithoutTheMutex) {
  pthread_mutex_t& mutex = (*manager).*access(ManagerMutex());
  pthread_mutex_lock(&mutex);
  EXPECT_EQ(9, manager->newEvent(nullptr, 5));
  pthread_mutex_unlock(&mutex);
  EXPECT_THAT(host().log(), ElementsAre(error(-1, "%s New event is NULL!", "newEvent")));
  EXPECT_THAT(script.calls, IsEmpty());
}

TEST_F(EventManagerTest, AFailedWriteIsLoggedInTheSameWordsForBothStores) {
  script.onCall = [] { return 7; };
  for (const unsigned int dsid : {0u, 5u}) {
    host().clearCalls();
    EXPECT_EQ(7, newEvent(dsid));
    EXPECT_THAT(host().log(),
                ElementsAre(adding(dsid),
                            error(-1,
                                  "%s Unable to write event for data selection (%d) to dsevent "
                                  "storage.",
                                  "newEvent", static_cast<int>(dsid))));
  }
}

TEST_F(EventManagerTest, AStoreThatThrowsInAWriteGives4) {
  for (const unsigned int dsid : {0u, 5u}) {
    host().clearCalls();
    script.onCall = throwStandard;
    EXPECT_EQ(4, newEvent(dsid));
    EXPECT_TRUE(isFree(*manager));
    script.onCall = throwOther;
    EXPECT_EQ(4, newEvent(dsid));
    EXPECT_THAT(
        host().log(),
        ElementsAre(adding(dsid),
                    error(-1, "%s Unable to write event to event storage: %s", "newEvent", "x"),
                    adding(dsid),
                    error(-1, "%s Unable to write event to event storage!", "newEvent")));
  }
}

TEST_F(EventManagerTest, TheNextEventIsWhatTheStoreGives) {
  TextEvent given("x");
  script.given = &given;
  Event* event = nullptr;
  EXPECT_EQ(0, manager->getNextEvent(18446744073709551615ul, &event, 5));
  EXPECT_EQ(&given, event);
  EXPECT_THAT(host().log(), ElementsAre(getting(5, 18446744073709551615ul)));
}

TEST_F(EventManagerTest, AFailedGetNextEventIsLoggedAndPassedBack) {
  script.onCall = [] { return 67; };
  Event* event = nullptr;
  EXPECT_EQ(67, manager->getNextEvent(3, &event, 0));
  EXPECT_THAT(
      host().log(),
      ElementsAre(getting(0, 3), error(-1, "%s Unable to get next event from event storage: %d",
                                       "getNextEvent", 67)));
}

TEST_F(EventManagerTest, AStoreThatThrowsInGetNextEventGives4AndLeavesItsOutput) {
  TextEvent given("x");
  script.given = &given;
  for (const unsigned int dsid : {0u, 5u}) {
    host().clearCalls();
    Event* event = nullptr;
    script.onCall = throwStandard;
    EXPECT_EQ(4, manager->getNextEvent(3, &event, dsid));
    EXPECT_EQ(&given, event);
    EXPECT_TRUE(isFree(*manager));
    script.onCall = throwOther;
    EXPECT_EQ(4, manager->getNextEvent(3, &event, dsid));
    EXPECT_THAT(
        host().log(),
        ElementsAre(
            getting(dsid, 3),
            error(-1, "%s Unable to get next event from event storage: %s", "getNextEvent", "x"),
            getting(dsid, 3),
            error(-1, "%s Unable to get next event from event storage!", "getNextEvent")));
  }
}

TEST_F(EventManagerTest, AGetNextEventWithoutAnOutputIsRefused) {
  EXPECT_EQ(9, manager->getNextEvent(0, nullptr, 0));
  EXPECT_EQ(9, manager->getNextEvent(0, nullptr, 5));
  EXPECT_THAT(script.calls, IsEmpty());
}

TEST_F(EventManagerTest, ADeleteIsAnnouncedAndItsFailureLogged) {
  for (const unsigned int dsid : {0u, 5u}) {
    host().clearCalls();
    script.onCall = nullptr;
    manager->deleteEvent(3, dsid);
    script.onCall = throwStandard;
    manager->deleteEvent(3, dsid);
    EXPECT_TRUE(isFree(*manager));
    script.onCall = throwOther;
    manager->deleteEvent(3, dsid);
    EXPECT_THAT(host().log(),
                ElementsAre(deleting(dsid, 3), deleting(dsid, 3),
                            error(-1, "%s Unable to delete event %lu in event storage: %s",
                                  "deleteEvent", 3ul, "x"),
                            deleting(dsid, 3),
                            error(-1, "%s Unable to delete event %lu in event storage!",
                                  "deleteEvent", 3ul)));
  }
}

TEST_F(EventManagerTest, TheCheckSaysWhetherItRepairsAndAsksBothStores) {
  EXPECT_EQ(0, manager->checkConsistency(true));
  EXPECT_EQ(0, manager->checkConsistency(false));
  EXPECT_THAT(script.calls, ElementsAre("global fix", "ds fix", "global check", "ds check"));
  const LogLine event = info(0, "No consistency issues found for event.");
  const LogLine dsevent = info(0, "No consistency issues found for dsevent.");
  EXPECT_THAT(host().log(),
              ElementsAre(checking(true), event, dsevent, checking(false), event, dsevent));
  EXPECT_EQ("checkConsistency Checking event consistency.  Any issues found will be fixed",
            host().log()[0].text);
  EXPECT_EQ("checkConsistency Checking event consistency.  Any issues found will not be fixed",
            host().log()[3].text);
}

TEST_F(EventManagerTest, FoundProblemsAreLoggedAndNeverReturned) {
  script.onDSCheck = [] { return 3; };
  EXPECT_EQ(0, manager->checkConsistency(false));
  EXPECT_THAT(
      host().log(),
      ElementsAre(checking(false), info(0, "No consistency issues found for event."),
                  error(-1, "%d issues were found that were unable to be fixed for dsevent", 3)));
  script.onCall = [] { return 12; };
  script.onDSCheck = [] { return 0; };
  host().clearCalls();
  EXPECT_EQ(0, manager->checkConsistency(true));
  EXPECT_THAT(
      host().log(),
      ElementsAre(checking(true),
                  error(-1, "%d issues were found that were unable to be fixed for event", 12),
                  info(0, "No consistency issues found for dsevent.")));
}

TEST_F(EventManagerTest, NegativeCountsAreNotLogged) {
  script.onCall = [] { return -1; };
  EXPECT_EQ(0, manager->checkConsistency(false));
  EXPECT_THAT(host().log(), ElementsAre(checking(false)));
}

TEST_F(EventManagerTest, AStoreThatThrowsInTheCheckSkipsTheRest) {
  script.onCall = throwStandard;
  EXPECT_EQ(4, manager->checkConsistency(false));
  EXPECT_THAT(script.calls, ElementsAre("global check"));
  EXPECT_THAT(host().log(),
              ElementsAre(checking(false),
                          error(-1, "%s An exception was thrown while checking consistency: %s",
                                "checkConsistency", "x")));
  EXPECT_TRUE(isFree(*manager));
  script.onCall = nullptr;
  script.onDSCheck = throwOther;
  host().clearCalls();
  EXPECT_EQ(4, manager->checkConsistency(false));
  EXPECT_THAT(host().log(),
              ElementsAre(checking(false), info(0, "No consistency issues found for event."),
                          error(-1, "%s An exception was thrown while checking consistency!",
                                "checkConsistency")));
}

TEST_F(EventManagerTest, TheMutexIsHeldDuringEveryStoreCall) {
  int free = 0;
  script.onCall = [&] {
    free += isFree(*manager) ? 1 : 0;
    return 0;
  };
  Event* event = nullptr;
  for (const unsigned int dsid : {0u, 5u}) {
    newEvent(dsid);
    manager->getNextEvent(0, &event, dsid);
    manager->deleteEvent(1, dsid);
  }
  manager->checkConsistency(true);
  EXPECT_EQ(0, free);
  EXPECT_EQ(8u, script.calls.size());
}

TEST_F(EventManagerTest, EachOperationIsAnnouncedBeforeItWaitsForTheMutex) {
  Event* event = nullptr;
  const std::vector<std::function<void()> > operations = {
      [this] { newEvent(5); }, [&, this] { manager->getNextEvent(0, &event, 5); },
      [this] { manager->deleteEvent(1, 5); }, [this] { manager->checkConsistency(false); }};
  for (const std::function<void()>& operation : operations) {
    host().clearCalls();
    script.calls.clear();
    pthread_mutex_t& mutex = (*manager).*access(ManagerMutex());
    pthread_mutex_lock(&mutex);
    std::thread caller(operation);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (host().log().empty() && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::yield();
    }
    EXPECT_EQ(1u, host().log().size());
    EXPECT_THAT(script.calls, IsEmpty());
    pthread_mutex_unlock(&mutex);
    caller.join();
    EXPECT_FALSE(script.calls.empty());
  }
}

TEST_F(EventManagerTest, ALogCallThatThrowsIsPassedOnAfterTheMutexIsReleased) {
  Event* event = nullptr;
  const std::vector<std::function<void()> > operations = {
      [this] { newEvent(5); }, [&, this] { manager->getNextEvent(0, &event, 5); },
      [this] { manager->deleteEvent(1, 5); }, [this] { manager->checkConsistency(false); }};
  const std::vector<std::function<int()> > scripts = {nullptr, [] { return 7; }, throwStandard,
                                                      throwOther};
  for (const std::function<int()>& onCall : scripts) {
    script.onCall = onCall;
    for (const std::function<void()>& operation : operations) {
      host().clearCalls();
      operation();
      const std::size_t lines = host().log().size();
      for (std::size_t n = 1; n <= lines; ++n) {
        Fault fault;
        fault.mode = n % 2 == 0 ? FaultMode::kThrow : FaultMode::kThrowOdd;
        fault.kinds = {CallKind::kLog};
        fault.nth = n;
        host().inject(fault);
        EXPECT_ANY_THROW(operation());
        EXPECT_TRUE(isFree(*manager));
        host().clearFaults();
      }
    }
  }
}

TEST_F(EventManagerTest, DestructionDeletesTheGlobalStoreFirst) {
  manager.reset();
  EXPECT_THAT(script.calls, ElementsAre("global deleted", "ds deleted"));
}

TEST_F(EventManagerTest, DestructionAcceptsMissingStores) {
  delete ((*manager).*access(ManagerStore()));
  delete ((*manager).*access(ManagerDSStore()));
  (*manager).*access(ManagerStore()) = nullptr;
  (*manager).*access(ManagerDSStore()) = nullptr;
  script.calls.clear();
  manager.reset();
  EXPECT_THAT(script.calls, IsEmpty());
}

class AccessTimes : public EventManagerTest {
 protected:
  // An access at that many seconds.
  void touch(unsigned int dsid, double seconds) {
    host().setClock(static_cast<long>(seconds * 1e9));
    manager->updateZRTTimeStamp(dsid);
  }
  static LogLine idle(unsigned int dsid, int seconds) {
    return info(-1, "%s data selection (%d) has timeout for %d seconds ", "updateZRTTimeStamp",
                static_cast<int>(dsid), seconds);
  }
};

TEST_F(AccessTimes, ADataSelectionIsIdleAfterMoreThan600WholeSeconds) {
  touch(7, 1000);
  touch(7, 1600.9);
  EXPECT_THAT(host().log(), IsEmpty());
  touch(7, 2201.9);
  EXPECT_THAT(host().log(), ElementsAre(idle(7, 601)));
  EXPECT_EQ("updateZRTTimeStamp data selection (7) has timeout for 601 seconds ",
            host().log()[0].text);
}

TEST_F(AccessTimes, AllIdleDataSelectionsAreReportedInOrderAtEachCall) {
  touch(9, 0);
  touch(3, 100);
  touch(5, 900);
  EXPECT_THAT(host().log(), ElementsAre(idle(3, 800), idle(9, 900)));
  host().clearCalls();
  touch(3, 1000);
  EXPECT_THAT(host().log(), ElementsAre(idle(3, 900), idle(9, 1000)));
  host().clearCalls();
  touch(5, 1000);
  EXPECT_THAT(host().log(), ElementsAre(idle(9, 1000)));
}

TEST_F(AccessTimes, TheFirstAccessIsNoted) {
  touch(7, 5);
  EXPECT_THAT((*manager).*access(ManagerAccessTimes()),
              ElementsAre(::testing::Pair(7u, 5000000000l)));
}

TEST_F(AccessTimes, AnAccessTakesNoMutex) {
  pthread_mutex_t& mutex = (*manager).*access(ManagerMutex());
  pthread_mutex_lock(&mutex);
  touch(7, 5);
  pthread_mutex_unlock(&mutex);
  EXPECT_EQ(1u, ((*manager).*access(ManagerAccessTimes())).size());
}

}  // namespace
}  // namespace EventSystemTest
