#include <gtest/gtest.h>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/RawQueue.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;

// The requests that it takes to find the first event after an id.
unsigned long cost(ClusterClient& client, unsigned long afterId, unsigned long expectedId) {
  const unsigned long before = client.roundTrips();
  EXPECT_EQ(eventAfter(client, afterId).id, expectedId);
  return client.roundTrips() - before;
}

TEST(ClusterWindow, CostsTheSameOnAQueueOfFiftyThousandEventsAsOnOneOfFifty) {
  EtcdCluster small(1);
  EtcdCluster large(1);
  fillQueue(small.configuration(), "events", 50);
  fillQueue(large.configuration(), "events", 50'000);
  ClusterClient few(small.configuration());
  ClusterClient many(large.configuration());
  for (const unsigned long afterId : {0UL, 1UL, 48UL, 49UL}) {
    EXPECT_EQ(cost(few, afterId, afterId + 1), 1u);
    EXPECT_EQ(cost(many, afterId, afterId + 1), 1u);
  }
  EXPECT_EQ(cost(few, 50, 0), 1u);
  EXPECT_EQ(cost(many, 25'000, 25'001), 1u);
  EXPECT_EQ(cost(many, 50'000, 0), 1u);
  // Consuming from the start costs the same however much is consumed.
  for (unsigned long id = 1; id <= 200; ++id) {
    ASSERT_EQ(many.deleteEventById("events", id, 0), 0u);
    ASSERT_EQ(cost(many, 0, id + 1), 1u);
  }
}

class ClusterGap : public testing::Test {
 protected:
  EtcdCluster etcd{1};
  ClusterClient client{etcd.configuration()};
};

TEST_F(ClusterGap, OfAnyWidthIsCrossedInAFewRequests) {
  const std::vector<unsigned long> ids{1, 64, 65, 66, 1000, 1'000'000'000, 1UL << 50, ~0UL - 1};
  for (const unsigned long id : ids) ASSERT_EQ(store(client, "copied", id), id);
  unsigned long last = 0;
  for (const unsigned long id : ids) {
    ClusterClient fresh(etcd.configuration());
    EXPECT_LE(cost(fresh, last, id), 17u);
    last = id;
  }
  EXPECT_EQ(cost(client, ~0UL - 1, 0), 1u);
}

TEST_F(ClusterGap, IsRememberedByWhoHasCrossedIt) {
  ASSERT_EQ(store(client, "low", 1), 1u);
  ASSERT_EQ(store(client, "high", 1'000'000'000), 1'000'000'000u);
  ASSERT_EQ(client.deleteEventById("events", 1, 0), 0u);
  EXPECT_GT(cost(client, 0, 1'000'000'000), 1u);
  EXPECT_EQ(cost(client, 0, 1'000'000'000), 1u);
  EXPECT_EQ(cost(client, 500, 1'000'000'000), 1u);
}

TEST_F(ClusterGap, OfWhatAnotherMemberConsumedIsCrossedAndRemembered) {
  for (int i = 0; i < 300; ++i) store(client, "event");
  EXPECT_EQ(eventAfter(client, 0).id, 1u);
  ClusterClient other(etcd.configuration());
  for (unsigned long id = 1; id < 300; ++id) other.deleteEventById("events", id, 0);
  EXPECT_EQ(cost(client, 0, 300), 2u);
  EXPECT_EQ(cost(client, 0, 300), 1u);
  other.deleteEventById("events", 300, 0);
  EXPECT_EQ(cost(client, 0, 0), 1u);
  EXPECT_EQ(store(other, "later"), 301u);
  EXPECT_EQ(cost(client, 0, 301), 1u);
}

TEST_F(ClusterGap, IsForgottenWhenTheQueueIsRemovedBehindOurBack) {
  for (int i = 0; i < 100; ++i) store(client, "event");
  for (unsigned long id = 1; id <= 100; ++id) client.deleteEventById("events", id, 0);
  EXPECT_EQ(eventAfter(client, 0).id, 0u);
  etcd.etcdctl({"del", "--prefix", "/eventsystem/"});
  EXPECT_EQ(store(client, "born again"), 1u);
  EXPECT_EQ(eventAfter(client, 0), (StoredEvent{1, "alpha", "born again"}));
}

TEST_F(ClusterGap, AtTheHighestIdThereIsEndsTheQueueAndIsToldApart) {
  ASSERT_EQ(store(client, "last", ~0UL), ~0UL);
  EXPECT_EQ(eventAfter(client, 0).id, ~0UL);
  EXPECT_EQ(store(client, "too many"), 0u);
  ASSERT_EQ(client.deleteEventById("events", ~0UL, 0), 0u);
  EXPECT_EQ(eventAfter(client, 0).id, 0u);
  EXPECT_EQ(eventAfter(client, 0).id, 0u);
}

}  // namespace
}  // namespace EventSystemTest
