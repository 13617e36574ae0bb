// How the process's manager comes to be, over the real stores on the fake host.

#include "EventSystem/EventManager.h"
#include "EventSystem/OrbDBDSEventStorage.h"
#include "EventSystem/OrbDBEventStorage.h"
#include "EventSystem/platform/HostConfig.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventManagerConstruction : public FakeHostTest {
 protected:
  void TearDown() override {
    forgetInstance();
    FakeHostTest::TearDown();
  }

  static EventManager* instance() { return *access(ManagerInstance()); }

  // The id of the next event, 0 for none.
  static unsigned long next(EventManager& manager, unsigned long afterId, unsigned int dsid) {
    Event* event = nullptr;
    EXPECT_EQ(0, manager.getNextEvent(afterId, &event, dsid));
    const std::unique_ptr<Event> owned(event);
    return owned ? owned->getId() : 0;
  }
  static unsigned long add(EventManager& manager, unsigned int dsid) {
    const std::unique_ptr<Event> event = newCapacityEvent();
    EXPECT_EQ(0, manager.newEvent(event.get(), dsid));
    return event->getId();
  }
};

TEST_F(EventManagerConstruction, BuildsBothDatabaseStoresAndSaysSo) {
  const EventManager manager;
  EXPECT_NE(nullptr,
            dynamic_cast<EventSystem::OrbDBEventStorage*>(manager.*access(ManagerStore())));
  EXPECT_NE(nullptr,
            dynamic_cast<EventSystem::OrbDBDSEventStorage*>(manager.*access(ManagerDSStore())));
  EXPECT_EQ(2u, manager.*access(ManagerOrigDsid()));
  EXPECT_THAT(manager.*access(ManagerAccessTimes()), IsEmpty());
  EXPECT_EQ(info(-1, "%s m_orig_dsid = %d", "EventManager", 2), host().log().back());
}

TEST_F(EventManagerConstruction, TheGlobalStoreComesUpBeforeTheDataSelections) {
  const EventManager manager;
  const auto calls = host().databaseCalls();
  const auto last = std::find(calls.rbegin(), calls.rend(), "GetTable(events)");
  const auto first = std::find(calls.begin(), calls.end(), "GetTable(dsevents)");
  ASSERT_NE(calls.rend(), last);
  ASSERT_NE(calls.end(), first);
  EXPECT_LE(last.base(), first);
}

TEST_F(EventManagerConstruction, TheInstanceIsMadeOnceAndKept) {
  EXPECT_EQ(nullptr, instance());
  EventManager* const first = EventManager::getInstance();
  EXPECT_EQ(first, instance());
  host().clearCalls();
  EXPECT_EQ(first, EventManager::getInstance());
  EXPECT_THAT(host().calls(), IsEmpty());
}

TEST_F(EventManagerConstruction, DestroyingAManagerDoesNotResetTheInstance) {
  EventManager* const first = EventManager::getInstance();
  { const EventManager other; }
  EXPECT_EQ(first, instance());
}

TEST_F(EventManagerConstruction, UnusableStoresStillMakeAManager) {
  FakeConfiguration configuration;
  configuration.databaseDirectory.clear();
  host().configure(configuration);
  EventManager manager;
  EXPECT_EQ(2u, manager.*access(ManagerOrigDsid()));
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, manager.newEvent(event.get(), 0));
  EXPECT_EQ(4, manager.newEvent(event.get(), 5));
  Event* found = event.get();
  EXPECT_EQ(4, manager.getNextEvent(0, &found, 0));
  EXPECT_EQ(nullptr, found);
}

TEST_F(EventManagerConstruction, QueuesOfBothScopesWorkSideBySide) {
  EventManager manager;
  EXPECT_EQ(1u, add(manager, 0));
  EXPECT_EQ(2u, add(manager, 2));
  EXPECT_EQ(1u, add(manager, 5));
  EXPECT_EQ(2u, add(manager, 6));
  EXPECT_EQ(1u, next(manager, 0, 2));
  EXPECT_EQ(2u, next(manager, 1, 0));
  EXPECT_EQ(0u, next(manager, 2, 0));
  EXPECT_EQ(1u, next(manager, 0, 5));
  EXPECT_EQ(0u, next(manager, 1, 5));
  manager.deleteEvent(1, 0);
  EXPECT_EQ(2u, next(manager, 0, 0));
  EXPECT_EQ(1u, next(manager, 0, 5));
  host().clearCalls();
  EXPECT_EQ(0, manager.checkConsistency(true));
  EXPECT_EQ(info(0, "No consistency issues found for dsevent."), host().log().back());
}

TEST_F(EventManagerConstruction, AnEmptyQueueGivesNull) {
  EventManager manager;
  EXPECT_EQ(0u, next(manager, 0, 0));
  EXPECT_EQ(0u, next(manager, 0, 5));
}

// A log call is the one kind of host call whose exception leaves a store's constructor.
TEST_F(EventManagerConstruction, AnExceptionDuringConstructionReleasesEverythingAndIsTriedAgain) {
  host().dropTable("events");
  host().dropTable("dsevents");
  { const EventManager counted; }
  const std::size_t lines = host().countCalls(CallKind::kLog);
  ASSERT_LE(8u, lines);
  for (std::size_t n = 1; n <= lines; ++n) {
    host().reset();
    host().dropTable("events");
    host().dropTable("dsevents");
    Fault fault;
    fault.mode = n % 2 == 0 ? FaultMode::kThrow : FaultMode::kThrowOdd;
    fault.kinds = {CallKind::kLog};
    fault.nth = n;
    host().inject(fault);
    EXPECT_ANY_THROW(EventManager::getInstance()) << "line " << n;
    EXPECT_EQ(nullptr, instance());
    EXPECT_EQ(0, host().liveHandles());
    EXPECT_NE(nullptr, EventManager::getInstance());
    EXPECT_EQ(1u, add(*instance(), 0));
    forgetInstance();
  }
}

}  // namespace
}  // namespace EventSystemTest
