#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/RawQueue.h"
#include "tests/cluster/TestThread.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;

class ClusterCopy : public testing::Test {
 protected:
  // What a start of the host does: a new client copies the whole database of its member.
  void copyDatabase(const std::string& member, unsigned long events) {
    ClusterClient started(etcd.configuration());
    for (unsigned long id = 1; id <= events; ++id) {
      EXPECT_NE(store(started, "event " + std::to_string(id) + " of " + member, id, member), 0u);
    }
  }

  unsigned long keys(const std::string& part) {
    const std::string listed =
        etcd.etcdctl({"get", "--prefix", "--keys-only", "/eventsystem/events/0000000000/" + part});
    unsigned long count = 0;
    for (std::size_t at = 0; (at = listed.find("/eventsystem/", at)) != std::string::npos; ++at) {
      ++count;
    }
    return count;
  }

  EtcdCluster etcd{1};
  ClusterClient client{etcd.configuration()};
};

TEST_F(ClusterCopy, KeepsItsIdWhenThatIsAboveAllOthersAndElseGetsTheNext) {
  EXPECT_EQ(store(client, "copied", 5), 5u);
  EXPECT_EQ(store(client, "new"), 6u);
  EXPECT_EQ(store(client, "copied low", 6), 7u);
  EXPECT_EQ(store(client, "copied high", 100), 100u);
  EXPECT_EQ(store(client, "new again"), 101u);
  EXPECT_EQ(allEvents(client).size(), 5u);
}

TEST_F(ClusterCopy, IsStoredOnceHoweverOftenItIsHandedIn) {
  EXPECT_EQ(store(client, "copied", 5), 5u);
  EXPECT_EQ(store(client, "new"), 6u);
  EXPECT_EQ(store(client, "copied", 5), 5u);
  ClusterClient restarted(etcd.configuration());
  EXPECT_EQ(store(restarted, "copied", 5), 5u);
  EXPECT_EQ(allEvents(client).size(), 2u);
}

TEST_F(ClusterCopy, DoesNotComeBackAfterItWasConsumed) {
  EXPECT_EQ(store(client, "copied", 5), 5u);
  ASSERT_EQ(client.deleteEventById("events", 5, 0), 0u);
  EXPECT_EQ(store(client, "copied", 5), 5u);
  ClusterClient restarted(etcd.configuration());
  EXPECT_EQ(store(restarted, "copied", 5), 5u);
  EXPECT_TRUE(allEvents(client).empty());
}

TEST_F(ClusterCopy, KnowsItsTextAndItsMember) {
  EXPECT_EQ(store(client, "one", 5, "alpha"), 5u);
  EXPECT_EQ(store(client, "one", 5, "beta"), 6u);
  EXPECT_EQ(store(client, "two", 5, "alpha"), 7u);
  EXPECT_EQ(store(client, "one", 5, "alpha"), 5u);
  EXPECT_EQ(store(client, "two", 5, "alpha"), 7u);
  ClusterClient restarted(etcd.configuration());
  EXPECT_EQ(store(restarted, "one", 5, "alpha"), 5u);
  EXPECT_EQ(store(restarted, "one", 5, "beta"), 6u);
  EXPECT_EQ(store(restarted, "two", 5, "alpha"), 7u);
  EXPECT_EQ(allEvents(client).size(), 3u);
}

TEST_F(ClusterCopy, OfTwoMembersAtOnceStoresEachEventOnceAlsoWhenRepeated) {
  constexpr unsigned long kEvents = 150;
  for (int start = 0; start < 3; ++start) {
    std::jthread beta =
        testThread([this](const std::stop_token&) { copyDatabase("beta", kEvents); });
    copyDatabase("alpha", kEvents);
    beta.join();
    std::set<std::string> texts;
    const auto events = allEvents(client);
    for (const StoredEvent& event : events) texts.insert(event.text);
    EXPECT_EQ(texts.size(), 2 * kEvents - static_cast<unsigned long>(start));
    EXPECT_EQ(events.size(), texts.size());
    ASSERT_EQ(client.deleteEventById("events", events.front().id, 0), 0u);
  }
}

TEST_F(ClusterCopy, OfWhatIsThereAlreadyCostsNextToNothing) {
  constexpr unsigned long kEvents = 2000;
  for (unsigned long id = 1; id <= kEvents; ++id) store(client, "event", id);
  ClusterClient restarted(etcd.configuration());
  const unsigned long before = restarted.roundTrips();
  for (unsigned long id = 1; id <= kEvents; ++id) ASSERT_EQ(store(restarted, "event", id), id);
  EXPECT_LE(restarted.roundTrips() - before, 2u);
}

TEST_F(ClusterCopy, LeavesMarkersOnlyForWhatTheDatabaseStillHolds) {
  for (unsigned long id = 1; id <= 10; ++id) store(client, "event", id, "alpha");
  store(client, "event", 3, "beta");
  EXPECT_EQ(keys("copied/alpha/"), 10u);
  ASSERT_EQ(client.forgetCopies("events", "alpha", 8, 0), 0u);
  EXPECT_EQ(keys("copied/alpha/"), 3u);
  EXPECT_EQ(keys("copied/beta/"), 1u);
  ClusterClient restarted(etcd.configuration());
  for (unsigned long id = 8; id <= 10; ++id) EXPECT_EQ(store(restarted, "event", id), id);
  EXPECT_EQ(allEvents(client).size(), 11u);
}

TEST_F(ClusterCopy, DoesNotOvertakeOneThatFailed) {
  EtcdCluster cluster(1);
  auto configuration = cluster.configuration();
  configuration.deadline = std::chrono::milliseconds(500);
  ClusterClient member(configuration);
  ASSERT_EQ(store(member, "first", 1), 1u);
  cluster.pause(0);
  unsigned long id = 0;
  EXPECT_EQ(member.newEvent("events", "alpha", "second", 2, id, 0),
            EventSystemHost::kClusterUnreachable);
  cluster.resume(0);
  cluster.waitUntilServing();
  const unsigned long before = member.roundTrips();
  EXPECT_EQ(member.newEvent("events", "alpha", "third", 3, id, 0), EventSystemHost::kClusterBusy);
  EXPECT_EQ(member.roundTrips(), before) << "it asked a service that may be away";
  // What failed is handed in again, and the rest follows.
  EXPECT_EQ(store(member, "second", 2), 2u);
  EXPECT_EQ(store(member, "third", 3), 3u);
}

TEST_F(ClusterCopy, IsHeldUpByAnotherOnlyUntilSomethingElseIsAskedFor) {
  EtcdCluster cluster(1);
  auto configuration = cluster.configuration();
  configuration.deadline = std::chrono::milliseconds(500);
  ClusterClient member(configuration);
  cluster.pause(0);
  unsigned long id = 0;
  EXPECT_NE(member.newEvent("events", "alpha", "given up", 2, id, 0), 0u);
  cluster.resume(0);
  cluster.waitUntilServing();
  EXPECT_NE(member.newEvent("events", "alpha", "later", 3, id, 0), 0u);
  eventAfter(member, 0);
  EXPECT_NE(store(member, "later", 3), 0u);
}

// etcd does nothing else while it removes, so a database of any size is given up in steps.
TEST_F(ClusterCopy, LeavesNoMarkerOfAnyNumberThatIsGivenUpAndRemovesThemInSteps) {
  constexpr unsigned long kMarkers = 10'000;
  fillMarkers(etcd.configuration(), "events", "alpha", kMarkers);
  store(client, "event", 3, "beta");
  const unsigned long before = client.roundTrips();
  ASSERT_EQ(client.forgetCopies("events", "alpha", kMarkers - 1, 0), 0u);
  EXPECT_EQ(keys("copied/alpha/"), 2u);
  EXPECT_EQ(keys("copied/beta/"), 1u);
  EXPECT_GE(client.roundTrips() - before, 2 * 3u) << "a look and a removal for each 4096";
}

}  // namespace
}  // namespace EventSystemTest
