// Many threads at once through the manager and the real stores; run it under ThreadSanitizer too.

#include <atomic>
#include <mutex>
#include <set>
#include <thread>

#include "EventSystem/EventManager.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;

constexpr int kThreads = 16;
constexpr int kEventsPerThread = 25;

class EventManagerThreads : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    manager = std::make_unique<EventManager>();
  }
  void TearDown() override {
    manager.reset();
    FakeHostTest::TearDown();
  }

  // Runs a function in each thread, with the thread's number, all at once.
  static void runThreads(const std::function<void(int)>& work) {
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&, i] {
        ++ready;
        while (ready < kThreads) std::this_thread::yield();
        work(i);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }

  // Global for even threads, data selections 1, 3, 5 ... for odd ones.
  static unsigned int dsidOf(int thread) {
    return thread % 2 == 0 ? 0u : static_cast<unsigned int>(thread);
  }

  std::unique_ptr<EventManager> manager;
};

TEST_F(EventManagerThreads, EveryEventGetsAnIdOfItsOwnAndIsFoundAgain) {
  std::mutex mutex;
  std::set<unsigned long> globalIds;
  std::set<unsigned long> dataSelectionIds;
  runThreads([&](int thread) {
    for (int i = 0; i < kEventsPerThread; ++i) {
      const std::unique_ptr<Event> event = newCapacityEvent();
      EXPECT_EQ(0, manager->newEvent(event.get(), dsidOf(thread)));
      const std::lock_guard<std::mutex> lock(mutex);
      (thread % 2 == 0 ? globalIds : dataSelectionIds).insert(event->getId());
    }
  });
  const std::size_t half = kThreads / 2 * kEventsPerThread;
  EXPECT_EQ(half, globalIds.size());
  EXPECT_EQ(half, dataSelectionIds.size());
  EXPECT_EQ(half, host().table("events").size());
  EXPECT_EQ(half, host().table("dsevents").size());
  EXPECT_EQ(0, manager->checkConsistency(false));
  EXPECT_EQ(info(0, "No consistency issues found for dsevent."), host().log().back());
}

TEST_F(EventManagerThreads, ProducersConsumersAndChecksDoNotDisturbEachOther) {
  std::atomic<int> consumed{0};
  runThreads([&](int thread) {
    const unsigned int dsid = thread < 8 ? 0u : 7u;
    for (int i = 0; i < kEventsPerThread; ++i) {
      const std::unique_ptr<Event> event = newCapacityEvent();
      EXPECT_EQ(0, manager->newEvent(event.get(), dsid));
      Event* found = nullptr;
      EXPECT_EQ(0, manager->getNextEvent(event->getId() - 1, &found, dsid));
      const std::unique_ptr<Event> owned(found);
      ASSERT_NE(nullptr, found);
      EXPECT_EQ(event->getId(), found->getId()) << "only this thread deletes this event";
      manager->deleteEvent(found->getId(), dsid);
      ++consumed;
    }
    if (thread % 4 == 0) {
      EXPECT_EQ(0, manager->checkConsistency(true));
    }
    if (thread == 0) manager->updateZRTTimeStamp(7);
  });
  EXPECT_EQ(kThreads * kEventsPerThread, consumed);
  EXPECT_EQ(0u, host().table("events").size());
  EXPECT_EQ(0u, host().table("dsevents").size());
  EXPECT_TRUE(isFree(*manager));
}

TEST_F(EventManagerThreads, FailuresInOneThreadLeaveTheOthersAlone) {
  Fault fault;
  fault.mode = FaultMode::kThrow;
  fault.call = "addRecord";
  fault.nth = 40;
  host().inject(fault);
  std::atomic<int> refused{0};
  runThreads([&](int) {
    for (int i = 0; i < kEventsPerThread; ++i) {
      const std::unique_ptr<Event> event = newCapacityEvent();
      const int result = manager->newEvent(event.get(), 0);
      EXPECT_TRUE(result == 0 || result == 4) << result;
      if (result == 4) ++refused;
    }
  });
  EXPECT_EQ(1, refused);
  EXPECT_EQ(kThreads * kEventsPerThread - 1u, host().table("events").size());
}

TEST_F(EventManagerThreads, InClusterModeTheServiceIsHandedEveryEventOnce) {
  FakeConfiguration configuration;
  configuration.clusterMode = true;
  host().configure(configuration);
  EventManager cluster;
  runThreads([&](int thread) {
    for (int i = 0; i < kEventsPerThread; ++i) {
      const std::string server = std::to_string(thread) + "-" + std::to_string(i);
      const std::unique_ptr<Event> event = newCapacityEvent(server);
      EXPECT_EQ(0, cluster.newEvent(event.get(), dsidOf(thread)));
      Event* found = nullptr;
      EXPECT_EQ(0, cluster.getNextEvent(0, &found, dsidOf(thread)));
      const std::unique_ptr<Event> owned(found);
      EXPECT_NE(nullptr, found);
      if (i % 8 == 0) {
        EXPECT_EQ(0, cluster.checkConsistency(true));
      }
    }
  });
  std::set<std::string> servers;
  for (int thread = 0; thread < kThreads; ++thread) {
    for (const auto& [id, event] : host().clusterQueue(dsidOf(thread))) {
      servers.insert(event.text.substr(event.text.find("server:")));
    }
  }
  EXPECT_EQ(static_cast<std::size_t>(kThreads) * kEventsPerThread, servers.size());
}

TEST_F(EventManagerThreads, TheCountLimitLetsInAsManyAsItSays) {
  FakeConfiguration configuration;
  configuration.countLimit = 100;
  host().configure(configuration);
  EventManager limited;
  std::atomic<int> accepted{0};
  runThreads([&](int) {
    for (int i = 0; i < kEventsPerThread; ++i) {
      const std::unique_ptr<Event> event = newCapacityEvent();
      const int result = limited.newEvent(event.get(), 0);
      EXPECT_TRUE(result == 0 || result == 50) << result;
      if (result == 0) ++accepted;
    }
  });
  EXPECT_EQ(100, accepted);
  EXPECT_EQ(100u, host().table("events").size());
}

}  // namespace
}  // namespace EventSystemTest
