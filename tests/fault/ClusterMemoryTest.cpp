// Each allocation of the cluster stores, of the start that copies the database's queue to the
// service, and of the in-memory store's reading and deleting fails once.

#include <functional>
#include <map>
#include <new>

#include "EventSystem/ClusterDSEventStorage.h"
#include "EventSystem/ClusterEventStorage.h"
#include "EventSystem/EventManager.h"
#include "EventSystem/HashEventStorage.h"
#include "FailingNew.h"
#include "FaultTable.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using namespace EventSystem;

class StoreMemory : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    FailingNew::exempt(FakeHost::isInside);
  }

  // Runs it with each allocation failing in turn, after `before` and followed by `after`.
  static std::size_t failEach(const std::string& operation, const std::function<void()>& before,
                              const std::function<int()>& body,
                              const std::function<void(bool done)>& after) {
    std::size_t allocations = 0;
    for (std::size_t n = 0; n <= allocations; ++n) {
      SCOPED_TRACE(operation + ", allocation " + std::to_string(n));
      before();
      std::string result = "bad_alloc";
      try {
        const FailingNew failing(n);
        const int code = body();
        if (n == 0) allocations = failing.count();
        const AllocationPause pause;
        result = std::to_string(code);
      } catch (const std::bad_alloc&) {
      }
      if (n == 0) {
        EXPECT_EQ("0", result);
      } else {
        FaultTable::instance().note(operation, "allocation fails", result);
      }
      EXPECT_EQ(0, host().liveHandles());
      after(result == "0");
    }
    return allocations;
  }

  static int drop(Event* event, int result) {
    delete event;
    return result;
  }

  static std::size_t timesAtTheService(unsigned int dsid, const std::string& server) {
    std::size_t times = 0;
    for (const auto& [id, event] : host().clusterQueue(dsid)) {
      if (event.text.find("server:" + server + ";") != std::string::npos) ++times;
    }
    return times;
  }
};

TEST_F(StoreMemory, OfTheClusterStoreIsWantedInVainAndNothingIsWrittenTwice) {
  ClusterEventStorage store;
  std::unique_ptr<Event> event;
  const auto before = [&] {
    host().reset();
    event = newCapacityEvent("written");
  };
  const std::size_t allocations = failEach(
      "ClusterEventStorage::writeEvent", before, [&] { return store.writeEvent(event.get()); },
      [&](bool done) {
        EXPECT_EQ(done ? 1u : 0u, timesAtTheService(0, "written"));
        EXPECT_EQ(0, store.writeEvent(event.get()));
      });
  EXPECT_LT(0u, allocations);
}

TEST_F(StoreMemory, OfTheClusterStoreIsWantedInVainAndNothingReadIsGone) {
  ClusterEventStorage store;
  const auto before = [&] {
    host().reset();
    store.writeEvent(newCapacityEvent("kept").get());
  };
  const auto next = [&] {
    Event* event = nullptr;
    const int result = store.getNextEvent(0, &event);
    return drop(event, result);
  };
  EXPECT_LT(0u, failEach("ClusterEventStorage::getNextEvent", before, next, [&](bool) {
              EXPECT_EQ(1u, timesAtTheService(0, "kept"));
              EXPECT_EQ(0, next());
            }));
}

TEST_F(StoreMemory, OfTheClusterStoreIsWantedInVainForADeletion) {
  ClusterEventStorage store;
  const auto before = [&] {
    host().reset();
    store.writeEvent(newCapacityEvent("kept").get());
  };
  const auto remove = [&] {
    store.deleteEvent(1);
    return 0;
  };
  failEach("ClusterEventStorage::deleteEvent", before, remove,
           [&](bool done) { EXPECT_EQ(done ? 0u : 1u, timesAtTheService(0, "kept")); });
}

TEST_F(StoreMemory, OfTheClusterStoreOfDataSelectionsIsWantedInVain) {
  ClusterDSEventStorage store;
  std::unique_ptr<Event> event;
  const auto before = [&] {
    host().reset();
    event = newCapacityEvent("written");
    store.writeEvent(newCapacityEvent("kept").get(), 5);
  };
  failEach(
      "ClusterDSEventStorage::writeEvent", before, [&] { return store.writeEvent(event.get(), 5); },
      [&](bool done) { EXPECT_EQ(done ? 1u : 0u, timesAtTheService(5, "written")); });
  const auto next = [&] {
    Event* found = nullptr;
    const int result = store.getNextEvent(0, &found, 5);
    return drop(found, result);
  };
  failEach("ClusterDSEventStorage::getNextEvent", before, next,
           [&](bool) { EXPECT_EQ(1u, timesAtTheService(5, "kept")); });
  const auto remove = [&] {
    store.deleteEvent(1, 5);
    return 0;
  };
  failEach("ClusterDSEventStorage::deleteEvent", before, remove,
           [&](bool done) { EXPECT_EQ(done ? 0u : 1u, timesAtTheService(5, "kept")); });
}

TEST_F(StoreMemory, OfTheStartThatCopiesTheQueueIsWantedInVainAndTheNextOneCopiesTheRest) {
  const auto before = [&] {
    host().reset();
    FakeConfiguration configuration;
    configuration.clusterMode = true;
    host().configure(configuration);
    host().table("events").put({"1", "1", "5", "1", capacityText(1, 1, "first"), "3"});
    host().table("events").put({"2", "2", "5", "1", capacityText(2, 1, "second"), "3"});
    host().table("eventproperties").put({"1", "maxid", "2"});
  };
  const auto start = [] {
    const EventManager manager;
    return 0;
  };
  EXPECT_LT(5u, failEach("EventManager() in cluster mode", before, start, [&](bool) {
              EXPECT_EQ(2u, host().table("events").keys().size());
              start();
              EXPECT_EQ(1u, timesAtTheService(0, "first"));
              EXPECT_EQ(1u, timesAtTheService(0, "second"));
            }));
}

TEST_F(StoreMemory, OfTheMemoryStoreIsWantedInVainAndItsEventsStay) {
  HashEventStorage store;
  const std::unique_ptr<Event> event = newCapacityEvent("kept");
  ASSERT_EQ(0, store.writeEvent(event.get()));
  const auto isThere = [&](bool) {
    Event* found = nullptr;
    EXPECT_EQ(0, store.readEvent(1, &found));
    ASSERT_NE(nullptr, found);
    EXPECT_EQ(textOf(*event), textOf(*found));
    delete found;
  };
  const auto nothing = [] {};
  const auto read = [&] {
    Event* found = nullptr;
    const int result = store.readEvent(1, &found);
    return drop(found, result);
  };
  const auto next = [&] {
    Event* found = nullptr;
    const int result = store.getNextEvent(0, &found);
    return drop(found, result);
  };
  EXPECT_LT(0u, failEach("HashEventStorage::readEvent", nothing, read, isThere));
  EXPECT_LT(0u, failEach("HashEventStorage::getNextEvent", nothing, next, isThere));
  EXPECT_LT(0u, failEach(
                    "HashEventStorage::checkConsistency", nothing,
                    [&] { return store.checkConsistency(true); }, isThere));
  const auto remove = [&] {
    store.deleteEvent(1);
    return 0;
  };
  EXPECT_EQ(0u, failEach("HashEventStorage::deleteEvent", nothing, remove, [](bool) {}));
  failEach(
      "HashEventStorage()", nothing, [] { return HashEventStorage().checkConsistency(false); },
      [](bool) {});
}

}  // namespace
}  // namespace EventSystemTest
