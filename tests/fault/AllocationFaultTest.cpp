// Every allocation of the manager's operations failing in turn: result 4, no leak, no crash, no
// event lost, and the queue works afterwards.

#include <functional>

#include "EventSystem/EventManager.h"
#include "EventSystem/HashEventStorage.h"
#include "FailingNew.h"
#include "FaultTable.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;

struct ManagerOperation {
  std::string name;
  std::function<int(EventManager&, Event*)> run;
};

int dropNext(EventManager& manager, unsigned int dsid) {
  Event* event = nullptr;
  const int result = manager.getNextEvent(0, &event, dsid);
  const std::unique_ptr<Event> owned(event);
  return result;
}

std::vector<ManagerOperation> operations() {
  return {
      {"newEvent, global", [](EventManager& m, Event* e) { return m.newEvent(e, 0); }},
      {"newEvent, data selection", [](EventManager& m, Event* e) { return m.newEvent(e, 3); }},
      {"newEvent, new data selection", [](EventManager& m, Event* e) { return m.newEvent(e, 8); }},
      {"getNextEvent, global", [](EventManager& m, Event*) { return dropNext(m, 0); }},
      {"getNextEvent, data selection", [](EventManager& m, Event*) { return dropNext(m, 3); }},
      {"checkConsistency(false)",
       [](EventManager& m, Event*) { return m.checkConsistency(false); }},
      {"checkConsistency(true)", [](EventManager& m, Event*) { return m.checkConsistency(true); }},
  };
}

class AllocationFault : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    FailingNew::exempt(FakeHost::isInside);
  }

  // A manager over rows of both scopes, one of them misfiled, and an age limit.
  void prepare() {
    manager.reset();
    host().reset();
    FakeConfiguration configuration;
    configuration.ageLimit = 1;
    host().configure(configuration);
    manager = std::make_unique<EventManager>();
    for (const char* name : {"events", "dsevents"}) {
      host().table(name).put({"1", "1", "5", "1", capacityText(1, 1, "kept"), "3"});
      host().table(name).put({"2", "4", "5", "1", capacityText(4, 1, "misfiled"), "3"});
    }
    host().table("eventproperties").put({"1", "maxid", "20"});
    host().table("eventproperties").put({"2", "maxid_3", "20"});
    ((*manager).*access(ManagerStore()))->populateIdCache();
    ((*manager).*access(ManagerDSStore()))->populateIdCache();
    host().clearCalls();
  }

  void TearDown() override {
    manager.reset();
    FakeHostTest::TearDown();
  }

  void checkAfterwards() {
    EXPECT_TRUE(isFree(*manager));
    EXPECT_EQ(0, host().liveHandles());
    EXPECT_EQ(0, host().heldConfigurationLocks());
    for (const char* name : {"events", "dsevents"}) {
      EXPECT_TRUE(holds(name, "kept")) << name;
      EXPECT_TRUE(holds(name, "misfiled")) << name;
    }
    for (const unsigned int dsid : {0u, 3u, 8u}) {
      const std::unique_ptr<Event> event = newCapacityEvent("after");
      ASSERT_EQ(0, manager->newEvent(event.get(), dsid));
      Event* found = nullptr;
      EXPECT_EQ(0, manager->getNextEvent(event->getId() - 1, &found, dsid));
      const std::unique_ptr<Event> owned(found);
      EXPECT_TRUE(found != nullptr && textOf(*found) == textOf(*event));
    }
  }

  static bool holds(const std::string& table, const std::string& server) {
    for (const std::string& key : host().table(table).keys()) {
      const std::string text = host().table(table).value(key, "eventstring");
      if (text.find("server:" + server + ";") != std::string::npos) return true;
    }
    return false;
  }

  std::unique_ptr<EventManager> manager;
};

TEST_F(AllocationFault, AFailedAllocationInAManagerOperationGives4AndStoresNothing) {
  for (const ManagerOperation& operation : operations()) {
    const std::unique_ptr<Event> event = newCapacityEvent("written");
    prepare();
    std::size_t allocations = 0;
    {
      const FailingNew counting(0);
      EXPECT_EQ(0, operation.run(*manager, event.get()));
      allocations = counting.count();
    }
    EXPECT_LT(0u, allocations) << operation.name;
    for (std::size_t n = 1; n <= allocations; ++n) {
      SCOPED_TRACE(operation.name + ", allocation " + std::to_string(n));
      prepare();
      int result = 0;
      {
        const FailingNew failing(n);
        result = operation.run(*manager, event.get());
      }
      EXPECT_EQ(4, result);
      for (const char* name : {"events", "dsevents"}) EXPECT_FALSE(holds(name, "written")) << name;
      FaultTable::instance().note("EventManager::" + operation.name, "allocation fails",
                                  std::to_string(result));
      checkAfterwards();
    }
  }
}

TEST_F(AllocationFault, DeletingAllocatesNothingOrLeavesNothingBehind) {
  for (const unsigned int dsid : {0u, 3u}) {
    std::size_t allocations = 0;
    for (std::size_t n = 0; n <= allocations; ++n) {
      prepare();
      {
        const FailingNew failing(n);
        manager->deleteEvent(1, dsid);
        if (n == 0) allocations = failing.count();
      }
      EXPECT_TRUE(isFree(*manager));
      EXPECT_EQ(0, host().liveHandles());
      EXPECT_FALSE(host().table(dsid == 0 ? "events" : "dsevents").has("1"));
    }
  }
}

TEST_F(AllocationFault, AFailedConstructionLeavesNoInstanceAndIsTriedAgain) {
  prepare();
  manager.reset();
  forgetInstance();
  std::size_t allocations = 0;
  {
    const FailingNew counting(0);
    EventManager::getInstance();
    allocations = counting.count();
  }
  EXPECT_LT(2u, allocations);
  forgetInstance();
  for (std::size_t n = 1; n <= allocations; ++n) {
    SCOPED_TRACE("allocation " + std::to_string(n));
    prepare();
    manager.reset();
    std::string result = "built";
    try {
      const FailingNew failing(n);
      EventManager::getInstance();
    } catch (const std::bad_alloc&) {
      result = "bad_alloc";
      EXPECT_EQ(nullptr, *access(ManagerInstance()));
    }
    FaultTable::instance().note("EventManager::getInstance", "allocation fails", result);
    EXPECT_EQ(0, host().liveHandles());
    ASSERT_NE(nullptr, EventManager::getInstance());
    forgetInstance();
  }
}

// The in-memory store passes the failure on; its copy is released, its id spent.
TEST_F(AllocationFault, TheMemoryStorePassesTheFailureOnAndStaysUsable) {
  const std::unique_ptr<Event> event = newCapacityEvent();
  std::size_t allocations = 0;
  for (std::size_t n = 0; n <= allocations; ++n) {
    EventSystem::HashEventStorage store;
    bool failed = false;
    try {
      const FailingNew failing(n);
      EXPECT_EQ(0, store.writeEvent(event.get()));
      if (n == 0) allocations = failing.count();
    } catch (const std::bad_alloc&) {
      failed = true;
    }
    EXPECT_EQ(n != 0, failed) << "allocation " << n;
    if (n == 0) continue;
    FaultTable::instance().note("HashEventStorage::writeEvent", "allocation fails", "bad_alloc");
    const unsigned long spent = store.getMaxId();
    EXPECT_LE(spent, 1u);
    Event* lost = nullptr;
    EXPECT_EQ(0, store.readEvent(1, &lost));
    EXPECT_EQ(nullptr, lost);
    // The id may have reached the cache, where it counts as one problem in each of two checks.
    EXPECT_THAT(store.checkConsistency(false), testing::AnyOf(0, 2));
    EXPECT_EQ(0, store.writeEvent(event.get()));
    EXPECT_EQ(spent + 1, event->getId());
  }
  EXPECT_LE(3u, allocations);
}

}  // namespace
}  // namespace EventSystemTest
