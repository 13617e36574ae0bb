#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <set>
#include <thread>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/LogCapture.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/TestThread.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;

class ClusterQueue : public testing::Test {
 protected:
  EtcdCluster etcd{1};
  ClusterClient client{etcd.configuration()};
};

TEST_F(ClusterQueue, GivesBackWhatWasStoredWithIdsThatGrowFromOne) {
  EXPECT_EQ(store(client, "first"), 1u);
  EXPECT_EQ(store(client, "second", 0, "beta"), 2u);
  EXPECT_EQ(allEvents(client),
            (std::vector<StoredEvent>{{1, "alpha", "first"}, {2, "beta", "second"}}));
}

TEST_F(ClusterQueue, KeepsAnEventStringOfAnyBytesButZero) {
  std::string text;
  for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte);
  ASSERT_EQ(store(client, text), 1u);
  EXPECT_EQ(eventAfter(client, 0).text, text);
  ASSERT_EQ(store(client, ""), 2u);
  EXPECT_EQ(eventAfter(client, 1), (StoredEvent{2, "alpha", ""}));
}

TEST_F(ClusterQueue, SaysTheEndOfTheQueueWithTheIdZero) {
  EXPECT_EQ(eventAfter(client, 0), StoredEvent());
  store(client, "only");
  EXPECT_EQ(eventAfter(client, 1), StoredEvent());
  EXPECT_EQ(eventAfter(client, 17), StoredEvent());
  EXPECT_EQ(eventAfter(client, ~0UL), StoredEvent());
}

TEST_F(ClusterQueue, DeletesForGoodAndNeverGivesAnIdAgain) {
  store(client, "first");
  store(client, "second");
  EXPECT_EQ(client.deleteEventById("events", 2, 0), 0u);
  EXPECT_EQ(client.deleteEventById("events", 1, 0), 0u);
  EXPECT_TRUE(allEvents(client).empty());
  EXPECT_EQ(store(client, "third"), 3u);
  EXPECT_EQ(allEvents(client), (std::vector<StoredEvent>{{3, "alpha", "third"}}));
}

TEST_F(ClusterQueue, DeletesWhatIsNotThereWithSuccessAndNoConsequence) {
  EXPECT_EQ(client.deleteEventById("events", 1, 0), 0u);
  EXPECT_EQ(client.deleteEventById("events", 2, 0), 0u);
  EXPECT_EQ(store(client, "first"), 1u);
  EXPECT_EQ(client.deleteEventById("events", 2, 0), 0u);
  EXPECT_EQ(eventAfter(client, 0).id, 1u);
  EXPECT_EQ(store(client, "second"), 2u);
  EXPECT_EQ(eventAfter(client, 1).id, 2u);
}

TEST_F(ClusterQueue, KeepsQueuesAndDataSelectionsApart) {
  unsigned long id = 0;
  ASSERT_EQ(client.newEvent("events", "alpha", "global", 0, id, 0), 0u);
  EXPECT_EQ(id, 1u);
  ASSERT_EQ(client.newEvent("events", "alpha", "selected", 0, id, 4294967295u), 0u);
  EXPECT_EQ(id, 1u);
  ASSERT_EQ(client.newEvent("events.2", "alpha", "other", 0, id, 0), 0u);
  EXPECT_EQ(id, 1u);
  EXPECT_EQ(eventAfter(client, 0, "events", 0).text, "global");
  EXPECT_EQ(eventAfter(client, 0, "events", 4294967295u).text, "selected");
  EXPECT_EQ(eventAfter(client, 0, "events.2", 0).text, "other");
  ASSERT_EQ(client.deleteEventById("events", 1, 0), 0u);
  EXPECT_EQ(eventAfter(client, 0, "events", 4294967295u).id, 1u);
}

TEST_F(ClusterQueue, IsOneQueueForAllItsMembers) {
  ClusterClient other(etcd.configuration());
  for (unsigned long id = 1; id <= 20; id += 2) {
    ASSERT_EQ(store(client, "from alpha"), id);
    ASSERT_EQ(store(other, "from beta", 0, "beta"), id + 1);
  }
  EXPECT_EQ(allEvents(client), allEvents(other));
  EXPECT_EQ(allEvents(client).size(), 20u);
}

TEST_F(ClusterQueue, ServesSeveralThreadsThroughOneClient) {
  constexpr unsigned int kThreads = 4;
  constexpr unsigned int kEach = 50;
  std::vector<std::jthread> threads;
  for (unsigned int i = 0; i < kThreads; ++i) {
    threads.push_back(testThread([this, i](const std::stop_token&) {
      for (unsigned int n = 0; n < kEach; ++n) {
        EXPECT_NE(store(client, std::to_string(i) + "/" + std::to_string(n)), 0u);
        eventAfter(client, n);
      }
    }));
  }
  for (std::jthread& thread : threads) thread.join();
  std::set<std::string> texts;
  for (const StoredEvent& event : allEvents(client)) texts.insert(event.text);
  EXPECT_EQ(texts.size(), kThreads * kEach);
  EXPECT_EQ(store(client, "last"), kThreads * kEach + 1);
}

TEST_F(ClusterQueue, HandsOutAValueThatNoMemberHasWrittenAsItIs) {
  store(client, "event");
  etcd.etcdctl({"put", "/eventsystem/events/0000000000/e/00000000000000000001", "foreign"});
  unsigned long id = 0;
  std::string member = "left over";
  std::string text;
  ASSERT_EQ(client.getNextEvent("events", 0, id, member, text, 0), 0u);
  EXPECT_EQ(id, 1u);
  EXPECT_EQ(member, "");
  EXPECT_EQ(text, "foreign");
}

TEST_F(ClusterQueue, NeverWritesOverAnEventThatTheSequenceHasForgotten) {
  for (int i = 0; i < 3; ++i) store(client, "event");
  for (const char* sequence : {"", "00000000000000000002"}) {
    if (*sequence == '\0') {
      etcd.etcdctl({"del", "/eventsystem/events/0000000000/seq"});
    } else {
      etcd.etcdctl({"put", "/eventsystem/events/0000000000/seq", sequence});
    }
    clearLog();
    EXPECT_EQ(store(client, "later"), 0u);
    EXPECT_THAT(logged(), testing::HasSubstr("does not count it: put the highest id"));
    EXPECT_EQ(store(client, "copy", 1), 0u);
    EXPECT_EQ(eventAfter(client, 2).text, "event");
  }
  etcd.etcdctl({"put", "/eventsystem/events/0000000000/seq", "00000000000000000003"});
  EXPECT_EQ(store(client, "later"), 4u);
}

TEST_F(ClusterQueue, ForgetsWhatItHasSeenWhenEtcdIsWiped) {
  for (unsigned long id = 1; id <= 5; ++id) {
    store(client, "old");
    client.deleteEventById("events", id, 0);
  }
  EXPECT_EQ(eventAfter(client, 0).id, 0u);
  etcd.kill(0);
  std::filesystem::remove_all(etcd.directory() / "node0");
  etcd.start(0);
  etcd.waitUntilServing();
  ClusterClient other(etcd.configuration());
  for (int i = 0; i < 6; ++i) store(other, "new");
  EXPECT_EQ(eventAfter(client, 0).id, 1u);
}

// One who loses the race for an id must not learn the outcome only to wait until it is stale.
TEST_F(ClusterQueue, LetsNoMemberStarve) {
  constexpr unsigned long kAll = 1200;
  constexpr unsigned long kLeast = kAll / 10;
  std::array<unsigned long, 3> stored{};
  std::atomic<unsigned long> last{0};
  std::vector<std::jthread> members;
  for (unsigned long& own : stored) {
    members.push_back(testThread([&](const std::stop_token&) {
      ClusterClient member(etcd.configuration());
      while (last < kAll) {
        const unsigned long id = store(member, "event");
        ASSERT_NE(id, 0u);
        last = id;
        ++own;
      }
    }));
  }
  for (std::jthread& member : members) member.join();
  for (const unsigned long own : stored) EXPECT_GE(own, kLeast);
}

TEST_F(ClusterQueue, CostsOneRequestForEachCallOnceItIsUnderWay) {
  store(client, "first");
  const unsigned long before = client.roundTrips();
  store(client, "second");
  eventAfter(client, 0);
  client.deleteEventById("events", 1, 0);
  EXPECT_EQ(client.roundTrips(), before + 3);
}

}  // namespace
}  // namespace EventSystemTest
