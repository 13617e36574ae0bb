// The queue service in cluster mode, at a real etcd server.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EventSystem/ResultCode.h"
#include "host/cluster/ClusterClient.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/eventd/queue/Inbox.h"
#include "tests/eventd/queue/ServiceFixture.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ClusterService : public ServiceTest {
 protected:
  ClusterService() {
    limits.lookForOtherMembers = std::chrono::milliseconds(20);
    useMore("[cluster]\ncluster_mode = 1\nmember = node1\nendpoints = " + m_etcd.endpoint(0) +
            "\ndeadline_ms = 4000\n");
    start();
  }
  ~ClusterService() override { stop(); }

  // An event that another member stores: its id.
  unsigned long storeElsewhere() {
    EventSystemHost::ClusterClient other(m_etcd.configuration());
    unsigned long id = 0;
    EXPECT_EQ(other.newEvent("events", "node2", capacityText(0, 1700000000, "elsewhere"), 0, id, 0),
              0u);
    return id;
  }

  void removeElsewhere(unsigned long id) {
    EventSystemHost::ClusterClient other(m_etcd.configuration());
    EXPECT_EQ(other.deleteEventById("events", id, 0), 0u);
  }

  EtcdCluster m_etcd{1};
};

TEST_F(ClusterService, StoresReadsAndRemoves) {
  EXPECT_FALSE(service().supportsKeys());
  EXPECT_TRUE(readiness().ready()) << readiness().why;
  const StoreResult stored = store(eventsOf({"a", "b", "c"}));
  EXPECT_EQ(stored.code, 0) << stored.problem;
  EXPECT_THAT(stored.ids, ElementsAre(1, 2, 3));
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 2, 3));
  EXPECT_THAT(read({}).events[1]->view().eventString, HasSubstr("id:2;"));
  EXPECT_TRUE(remove(2).found);
  EXPECT_FALSE(remove(2).found);
  EXPECT_EQ(removeUpTo(std::nullopt, true).deleted, 2u);
  EXPECT_EQ(removeUpTo(1).deleted, 1u);
  EXPECT_THAT(idsAfter(0), ElementsAre(3));
  const StoreResult keyed = store(eventsOf({"a"}), 0, EventApps::IdempotencyKey{"key", "body"});
  EXPECT_EQ(keyed.code, EventSystem::kGeneralFailure);
  EXPECT_THAT(keyed.ids, IsEmpty());
}

TEST_F(ClusterService, ShowsWhatOtherMembersStoreInOrder) {
  Inbox inbox;
  const auto subscription = inbox.subscribe(service(), 0);
  Ids all = {storeOne()};
  all.push_back(storeElsewhere());
  ASSERT_TRUE(inbox.has(2)) << "found by looking";
  for (int i = 0; i < 5; ++i) {
    all.push_back(storeElsewhere());
    all.push_back(storeOne());
  }
  ASSERT_TRUE(inbox.has(all.size()));
  EXPECT_EQ(inbox.ids(), all);
  EXPECT_EQ(idsAfter(0), all);
}

TEST_F(ClusterService, ShowsNothingThatAnotherMemberHasDeleted) {
  store(eventsOf({"a", "b", "c", "d"}));
  removeElsewhere(1);
  removeElsewhere(3);
  EXPECT_THAT(idsAfter(0), ElementsAre(2, 4));
  EXPECT_THAT(idsAfter(2), ElementsAre(4));
  Inbox inbox;
  const auto subscription = inbox.subscribe(service(), 0);
  ASSERT_TRUE(inbox.has(2));
  storeElsewhere();
  ASSERT_TRUE(inbox.has(3));
  EXPECT_THAT(inbox.ids(), ElementsAre(2, 4, 5));
}

// What a subscriber could not take when it arrived is read at the service when it can.
TEST_F(ClusterService, ShowsASubscriberThatWantedNoMoreWhatIsThereLater) {
  Inbox inbox;
  inbox.wantMore(false);
  const auto subscription = inbox.subscribe(service(), 0);
  storeOne();
  ASSERT_TRUE(inbox.has(1));
  store(eventsOf({"b", "c"}));
  removeElsewhere(2);
  inbox.wantMore(true);
  subscription->resume();
  ASSERT_TRUE(inbox.has(2));
  EXPECT_THAT(inbox.ids(), ElementsAre(1, 3));
}

TEST_F(ClusterService, WakesAReaderForAnotherMembersEvent) {
  std::promise<ReadResult> answer;
  service().read({0, 0, 10, {}, std::chrono::hours(1)},
                 [&](ReadResult result) { answer.set_value(std::move(result)); });
  ASSERT_TRUE(eventually([&] { return service().counters().waitingReaders == 1; }));
  const unsigned long id = storeElsewhere();
  auto future = answer.get_future();
  ASSERT_EQ(future.wait_for(kPatience), std::future_status::ready);
  EXPECT_THAT(idsOf(future.get().events), ElementsAre(id));
}

TEST_F(ClusterService, SaysThatTheServiceIsAwayAndGoesOnWhenItIsBack) {
  storeOne();
  m_etcd.kill(0);
  const StoreResult failed = store(eventsOf({"a"}));
  EXPECT_EQ(failed.code, EventApps::kNoMajority);
  EXPECT_TRUE(failed.unsettled);
  EXPECT_THAT(failed.problem, HasSubstr(m_etcd.endpoint(0)));
  EXPECT_FALSE(readiness().ready());
  m_etcd.start(0);
  EXPECT_TRUE(eventually([&] { return readiness().ready(); }));
  EXPECT_EQ(store(eventsOf({"b"})).code, 0);
}

TEST_F(ClusterService, IsNotReadyWhenTheServiceIsAwayAndNobodyAsksItForAnything) {
  EXPECT_TRUE(readiness().ready());
  m_etcd.kill(0);
  const EventApps::Readiness away = readiness();
  EXPECT_FALSE(away.reads);
  EXPECT_FALSE(away.writes);
  m_etcd.start(0);
  EXPECT_TRUE(eventually([&] { return readiness().ready(); }));
}

TEST_F(ClusterService, HasFiguresAgainSoonAfterTheServiceIsBack) {
  stop();
  limits.figuresShare = 1e-6;  // what was read once is good for hours
  limits.figuresRetry = std::chrono::milliseconds(20);
  start();
  const auto problem = [&] {
    return answerOf<EventApps::FiguresPtr>([&](auto done) { service().figures(std::move(done)); })
        ->problem;
  };
  m_etcd.kill(0);
  EXPECT_THAT(problem(), HasSubstr(m_etcd.endpoint(0)));
  m_etcd.start(0);
  EXPECT_TRUE(eventually([&] { return problem().empty(); }));
}

}  // namespace
}  // namespace EventSystemTest
