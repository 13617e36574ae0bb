// The manager in cluster mode: which stores it builds, and the copy of the database queue.

#include "EventSystem/ClusterDSEventStorage.h"
#include "EventSystem/ClusterEventStorage.h"
#include "EventSystem/EventManager.h"
#include "EventSystem/platform/HostConfig.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ManagerAccess.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using EventSystem::EventManager;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;

class Upgrade : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    configManager.clusterMode = 1;
  }
  void TearDown() override {
    forgetInstance();
    FakeHostTest::TearDown();
  }

  static void putRow(unsigned long id, unsigned long textId) {
    host().table("events").put({std::to_string(id), std::to_string(id), "5", "1700000000",
                                capacityText(textId, 1700000000)});
  }
  static void putRow(unsigned long id) { putRow(id, id); }

  static std::size_t count(const LogLine& line) {
    const std::vector<LogLine> lines = host().log();
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
  }
  static LogLine writeError() {
    return info(0, "Error occurred in upgrading: error writing event to cluster storage.");
  }
  static LogLine readError() {
    return info(0, "Error occurred in upgrading: error getting event from orbd storage.");
  }
  static void fail(const char* call, FaultMode mode = FaultMode::kFail) {
    Fault fault;
    fault.mode = mode;
    fault.call = call;
    fault.nth = 0;
    host().inject(fault);
  }
};

TEST_F(Upgrade, BuildsBothClusterStores) {
  const EventManager manager;
  EXPECT_NE(nullptr,
            dynamic_cast<EventSystem::ClusterEventStorage*>(manager.*access(ManagerStore())));
  EXPECT_NE(nullptr,
            dynamic_cast<EventSystem::ClusterDSEventStorage*>(manager.*access(ManagerDSStore())));
  EXPECT_EQ(2u, manager.*access(ManagerOrigDsid()));
  EXPECT_EQ(info(-1, "%s m_orig_dsid = %d", "EventManager", 2), host().log().back());
  EXPECT_EQ(0, host().liveHandles());
}

TEST_F(Upgrade, AnyNonZeroFlagIsClusterMode) {
  configManager.clusterMode = 0x80;
  const EventManager manager;
  EXPECT_NE(nullptr,
            dynamic_cast<EventSystem::ClusterEventStorage*>(manager.*access(ManagerStore())));
}

TEST_F(Upgrade, OfAnEmptyQueueCopiesNothingAndSaysNothing) {
  const EventManager manager;
  EXPECT_THAT(host().clusterCalls(), IsEmpty());
  EXPECT_EQ(0u, count(writeError()));
  EXPECT_EQ(0u, count(readError()));
}

TEST_F(Upgrade, CopiesEveryEventWithItsOwnIdAndLeavesTheRows) {
  for (const unsigned long id : {3ul, 5ul, 9ul}) putRow(id);
  const EventManager manager;
  EXPECT_THAT(host().clusterQueue(0), ElementsAre(Key(3), Key(5), Key(9)));
  EXPECT_THAT(host().table("events").keys(), ElementsAre("3", "5", "9"));
  EXPECT_EQ(0, host().liveHandles());
}

TEST_F(Upgrade, CopiesAgainAtEachStart) {
  putRow(3);
  { const EventManager manager; }
  host().clearCalls();
  const EventManager manager;
  EXPECT_EQ(1u, host().callsNamed({"ClusterAPI::newEvent"}).size());
}

TEST_F(Upgrade, AServiceThatRefusesEveryWriteIsLoggedForEachEvent) {
  for (const FaultMode mode : {FaultMode::kFail, FaultMode::kThrow, FaultMode::kThrowOdd}) {
    host().reset();
    configManager.clusterMode = 1;
    for (const unsigned long id : {3ul, 5ul, 9ul}) putRow(id);
    fail("ClusterAPI::newEvent", mode);
    const EventManager manager;
    EXPECT_EQ(3u, count(writeError()));
    EXPECT_EQ(2u, manager.*access(ManagerOrigDsid()));
  }
}

TEST_F(Upgrade, EndsBehindAnEventWhoseIdIsZero) {
  putRow(3);
  putRow(5, 0);
  putRow(9);
  const EventManager manager;
  EXPECT_EQ(2u, host().callsNamed({"ClusterAPI::newEvent"}).size());
}

TEST_F(Upgrade, GoesOnBehindAnEventThatCarriesAnEarlierId) {
  putRow(3);
  putRow(5, 2);
  putRow(9);
  const EventManager manager;
  EXPECT_EQ(3u, host().callsNamed({"ClusterAPI::newEvent"}).size());
  EXPECT_THAT(host().clusterQueue(0), Contains(Key(9)));
}

TEST_F(Upgrade, PassesOverAnUnreadableRow) {
  putRow(3);
  host().table("events").put({"5", "5", "5", "1", "nonsense"});
  putRow(9);
  const EventManager manager;
  EXPECT_THAT(host().clusterQueue(0), ElementsAre(Key(3), Key(9)));
}

TEST_F(Upgrade, FromAnUnusableDatabaseSaysSoAndBuildsTheManager) {
  FakeConfiguration configuration;
  configuration.databaseDirectory.clear();
  configuration.clusterMode = true;
  host().configure(configuration);
  EventManager manager;
  EXPECT_EQ(1u, count(readError()));
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(0, manager.newEvent(event.get(), 0));
}

TEST_F(Upgrade, QueuesOfBothScopesLiveAtTheService) {
  EventManager manager;
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(0, manager.newEvent(event.get(), 2));
  EXPECT_EQ(0, manager.newEvent(event.get(), 5));
  EXPECT_THAT(host().clusterQueue(0), ElementsAre(Key(1)));
  EXPECT_THAT(host().clusterQueue(5), ElementsAre(Key(1)));
  EXPECT_THAT(host().table("events").keys(), IsEmpty());
}

TEST_F(Upgrade, AServiceThatThrowsLaterIsTheManagersToReport) {
  EventManager manager;
  fail("ClusterAPI::newEvent", FaultMode::kThrow);
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, manager.newEvent(event.get(), 0));
  EXPECT_EQ(
      error(-1, "%s Unable to write event to event storage: %s", "newEvent", "scripted failure"),
      host().log().back());
}

}  // namespace
}  // namespace EventSystemTest
