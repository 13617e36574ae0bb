// What becomes of a host whose threads race for the first manager: the library ends it where it was
// built without NDEBUG. Elsewhere nothing is promised, and there is nothing to test.

#include <thread>

#include "EventSystem/EventManager.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using EventSystem::EventManager;

#ifndef NDEBUG

class ConstructionRace : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
  }
  void TearDown() override {
    forgetInstance();
    FakeHostTest::TearDown();
  }

  // Does `work` once, in the middle of the construction of a manager.
  static void duringConstruction(const std::function<void()>& work) {
    host().onCall([work, done = false](const Call& call) mutable {
      if (done || call.name != "QMConfigLocate") return;
      done = true;
      work();
    });
  }
};

TEST_F(ConstructionRace, EndsTheProcessWhenASecondThreadAsksForTheFirstInstance) {
  duringConstruction([] { std::thread(EventManager::getInstance).join(); });
  EXPECT_DEATH(EventManager::getInstance(), "two threads build the EventManager at once");
}

TEST_F(ConstructionRace, EndsTheProcessWhenASecondThreadConstructsAManager) {
  duringConstruction([] { std::thread([] { const EventManager second; }).join(); });
  EXPECT_DEATH(EventManager(), "two threads build the EventManager at once");
  EXPECT_DEATH(EventManager::getInstance(), "two threads build the EventManager at once");
}

TEST_F(ConstructionRace, EndsTheProcessWhenAnotherInstanceIsThereAfterTheConstruction) {
  duringConstruction([] { EventManager::getInstance(); });
  EXPECT_DEATH(EventManager::getInstance(), "the EventManager was built twice");
}

TEST_F(ConstructionRace, LeavesThreadsAloneThatBuildOneAfterTheOther) {
  std::thread([] { const EventManager first; }).join();
  std::thread(EventManager::getInstance).join();
  EXPECT_NE(nullptr, *access(ManagerInstance()));
}

TEST_F(ConstructionRace, IsOverWhenAConstructionFailed) {
  Fault fault;
  fault.mode = FaultMode::kThrow;
  fault.kinds = {CallKind::kLog};
  host().inject(fault);
  std::thread([] { EXPECT_ANY_THROW(EventManager::getInstance()); }).join();
  EXPECT_NE(nullptr, EventManager::getInstance());
}

#endif

}  // namespace
}  // namespace EventSystemTest
