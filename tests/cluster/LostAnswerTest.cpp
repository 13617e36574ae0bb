#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>

#include "host/cluster/LastCall.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/FaultTable.h"
#include "tests/cluster/LogCapture.h"
#include "tests/cluster/Proxy.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/Workload.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using EventSystemHost::lastClusterCall;

std::vector<std::string> textsOf(const std::vector<StoredEvent>& events) {
  std::vector<std::string> texts;
  for (const StoredEvent& event : events) texts.push_back(event.text);
  return texts;
}

// As a producer does: hands the event in until it is stored.
unsigned long storeAtLast(ClusterClient& client, const std::string& text) {
  unsigned long id = 0;
  for (int i = 0; id == 0 && i < 20; ++i) id = store(client, text);
  return id;
}

class ClusterLostAnswer : public testing::Test {
 protected:
  ClusterConfiguration through(std::chrono::milliseconds deadline) const {
    ClusterConfiguration configuration;
    configuration.endpoints = {proxy.endpoint()};
    configuration.deadline = deadline;
    return configuration;
  }

  // A write whose request arrives and whose answer does not, however often it is sent.
  void failToStore(ClusterClient& client, const std::string& text) {
    proxy.setMute(true);
    EXPECT_EQ(store(client, text), 0u);
    proxy.setMute(false);
  }

  EtcdCluster etcd{1};
  Proxy proxy{etcd.endpoint(0)};
  ClusterClient direct{etcd.configuration()};
  ClusterClient patient{through(std::chrono::seconds(8))};
};

// Of a producer that soon gives up.
class ClusterAnswerLostToAHastyProducer : public ClusterLostAnswer {
 protected:
  ClusterClient hasty{through(std::chrono::seconds(3))};
};

TEST_F(ClusterLostAnswer, ToAWriteIsSettledAndTheEventIsStoredOnce) {
  ASSERT_EQ(store(patient, "first"), 1u);
  std::vector<std::string> texts{"first"};
  for (unsigned long id = 2; id <= 20; ++id) {
    texts.push_back("event " + std::to_string(id));
    proxy.loseNextAnswer();
    ASSERT_EQ(store(patient, texts.back()), id);
  }
  EXPECT_EQ(proxy.lostAnswers(), 19);
  EXPECT_EQ(textsOf(allEvents(direct)), texts);
}

TEST_F(ClusterLostAnswer, ToTheVeryFirstRequestsIsSettled) {
  for (int i = 0; i < 3; ++i) {
    ClusterClient client(through(std::chrono::seconds(8)));
    proxy.loseNextAnswer();
    EXPECT_NE(store(client, "event " + std::to_string(i)), 0u);
  }
  EXPECT_EQ(proxy.lostAnswers(), 3);
  EXPECT_EQ(allEvents(direct).size(), 3u);
}

TEST_F(ClusterLostAnswer, ToAWriteThatRacesWithAnotherMemberIsSettled) {
  ASSERT_EQ(store(patient, "first"), 1u);
  for (unsigned long i = 0; i < 10; ++i) {
    ASSERT_NE(store(direct, "other " + std::to_string(i), 0, "beta"), 0u);
    proxy.loseNextAnswer();
    ASSERT_NE(store(patient, "own " + std::to_string(i)), 0u);
  }
  const auto texts = textsOf(allEvents(direct));
  EXPECT_EQ(texts.size(), 21u);
  EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()).size(), 21u);
}

TEST_F(ClusterLostAnswer, ToACopyIsSettledAndTheCopyIsStoredOnce) {
  for (unsigned long id = 1; id <= 10; ++id) {
    proxy.loseNextAnswer();
    ASSERT_EQ(store(patient, "event " + std::to_string(id), 10 * id), 10 * id);
  }
  EXPECT_EQ(proxy.lostAnswers(), 10);
  EXPECT_EQ(allEvents(direct).size(), 10u);
}

TEST_F(ClusterAnswerLostToAHastyProducer, ToACopyThatFailedIsFoundByTheNextTry) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  proxy.setMute(true);
  EXPECT_EQ(store(hasty, "copied", 7), 0u);
  proxy.setMute(false);
  ASSERT_EQ(store(hasty, "copied", 7), 7u);
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first", "copied"}));
}

TEST_F(ClusterLostAnswer, ToADeleteIsSettled) {
  for (int i = 0; i < 5; ++i) store(patient, "event");
  for (unsigned long id = 1; id <= 5; ++id) {
    proxy.loseNextAnswer();
    ASSERT_EQ(patient.deleteEventById("events", id, 0), 0u);
  }
  EXPECT_EQ(proxy.lostAnswers(), 5);
  EXPECT_TRUE(allEvents(direct).empty());
  EXPECT_EQ(eventAfter(patient, 0).id, 0u);
}

TEST_F(ClusterAnswerLostToAHastyProducer, UntilTheDeadlineFailsTheCallAndNamesTheEndpoint) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  clearLog();
  const auto begin = History::now();
  failToStore(hasty, "second");
  EXPECT_LT(History::now() - begin, std::chrono::seconds(20));
  EXPECT_THAT(logged(), testing::AllOf(testing::HasSubstr("newEvent queue events"),
                                       testing::HasSubstr(proxy.endpoint())));
}

TEST_F(ClusterAnswerLostToAHastyProducer, LeavesTheOutcomeOpenUnlessNothingWasSent) {
  proxy.setDown(true);
  EXPECT_EQ(store(hasty, "first"), 0u);
  EXPECT_TRUE(lastClusterCall().lacksMajority);
  EXPECT_FALSE(lastClusterCall().open);
  proxy.setDown(false);
  ASSERT_NE(storeAtLast(hasty, "first"), 0u);
  EXPECT_FALSE(lastClusterCall().open);
  failToStore(hasty, "second");
  EXPECT_TRUE(lastClusterCall().lacksMajority);
  EXPECT_TRUE(lastClusterCall().open);
  EXPECT_EQ(store(hasty, std::string(2'000'000, 'x')), 0u);
  EXPECT_FALSE(lastClusterCall().open) << "etcd refused it";
}

TEST_F(ClusterAnswerLostToAHastyProducer, IsFoundWhenTheSameEventIsHandedInAgain) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  failToStore(hasty, "second");
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first", "second"}));
  EXPECT_EQ(storeAtLast(hasty, "second"), 2u);
  EXPECT_EQ(store(hasty, "second"), 3u);
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first", "second", "second"}));
}

TEST_F(ClusterAnswerLostToAHastyProducer, IsFoundAlsoAfterTheEventWasConsumed) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  failToStore(hasty, "second");
  ASSERT_EQ(direct.deleteEventById("events", 2, 0), 0u);
  EXPECT_EQ(storeAtLast(hasty, "second"), 2u);
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first"}));
}

TEST_F(ClusterAnswerLostToAHastyProducer, IsFoundAlsoWhenOtherEventsCameInBetween) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  failToStore(hasty, "second");
  ASSERT_EQ(store(hasty, "copied", 2), 3u);
  ASSERT_EQ(store(hasty, "third"), 4u);
  ASSERT_EQ(store(direct, "fourth"), 5u);
  EXPECT_EQ(store(hasty, "second"), 2u);
  EXPECT_EQ(textsOf(allEvents(direct)),
            (std::vector<std::string>{"first", "second", "copied", "third", "fourth"}));
}

TEST_F(ClusterAnswerLostToAHastyProducer, OfSeveralFailedCallsStoresEachEventOnce) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  const std::vector<std::string> texts{"a", "b", "c"};
  for (const std::string& text : texts) failToStore(hasty, text);
  for (const std::string& text : texts) EXPECT_NE(storeAtLast(hasty, text), 0u);
  auto stored = textsOf(allEvents(direct));
  std::sort(stored.begin(), stored.end());
  EXPECT_EQ(stored, (std::vector<std::string>{"a", "b", "c", "first"}));
}

TEST_F(ClusterAnswerLostToAHastyProducer, OfARequestThatNeverArrivedStoresTheEventOnce) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  proxy.setDown(true);
  EXPECT_EQ(store(hasty, "second"), 0u);
  EXPECT_EQ(store(hasty, "third"), 0u);
  proxy.setDown(false);
  EXPECT_EQ(storeAtLast(hasty, "third"), 2u);
  EXPECT_EQ(store(hasty, "second"), 3u);
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first", "third", "second"}));
}

TEST_F(ClusterAnswerLostToAHastyProducer, IsFoundAlsoWhenTheLeaseRanOutMeanwhile) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  failToStore(hasty, "second");
  std::string leases = etcd.etcdctl({"lease", "list"});
  leases = leases.substr(leases.find('\n') + 1);
  ASSERT_FALSE(leases.empty());
  etcd.etcdctl({"lease", "revoke", leases.substr(0, leases.find('\n'))});
  EXPECT_EQ(storeAtLast(hasty, "second"), 2u);
  EXPECT_EQ(store(hasty, "third"), 3u);
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first", "second", "third"}));
}

TEST_F(ClusterAnswerLostToAHastyProducer, DoesNotHideTheEventOfAnotherMemberWhenTheLeaseRanOut) {
  ASSERT_EQ(store(hasty, "first"), 1u);
  proxy.setDown(true);
  EXPECT_EQ(store(hasty, "second"), 0u);
  proxy.setDown(false);
  std::string leases = etcd.etcdctl({"lease", "list"});
  leases = leases.substr(leases.find('\n') + 1);
  etcd.etcdctl({"lease", "revoke", leases.substr(0, leases.find('\n'))});
  ASSERT_EQ(store(direct, "other", 0, "beta"), 2u);
  EXPECT_EQ(storeAtLast(hasty, "second"), 3u);
  EXPECT_EQ(textsOf(allEvents(direct)), (std::vector<std::string>{"first", "other", "second"}));
}

// Three members behind proxies that keep losing answers.
class LossyCluster {
 public:
  LossyCluster() {
    for (const std::string& endpoint : m_etcd.endpoints()) {
      m_proxies.push_back(std::make_unique<Proxy>(endpoint));
    }
  }

  ClusterConfiguration configuration() const {
    ClusterConfiguration configuration;
    for (const auto& proxy : m_proxies) configuration.endpoints.push_back(proxy->endpoint());
    return configuration;
  }

  void loseAnswers() {
    for (const auto& proxy : m_proxies) proxy->loseNextAnswer();
  }

  void setMute(bool mute) {
    for (const auto& proxy : m_proxies) proxy->setMute(mute);
  }

  int lostAnswers() const {
    int sum = 0;
    for (const auto& proxy : m_proxies) sum += proxy->lostAnswers();
    return sum;
  }

 private:
  EtcdCluster m_etcd{3};
  std::vector<std::unique_ptr<Proxy>> m_proxies;
};

TEST(ClusterFault, AnswersLostAfterTheirRequestsLoseAndDoubleNothing) {
  LossyCluster cluster;
  Workload workload(cluster.configuration(), WorkloadOptions());
  for (int round = 0; round < 25; ++round) {
    cluster.loseAnswers();
    ASSERT_TRUE(workload.waitForWrites(10));
  }
  const History& history = workload.finish();
  EXPECT_GE(cluster.lostAnswers(), 25);
  report("answers lost after the request was done", history);
}

TEST(ClusterFault, AllAnswersLostForLongerThanTheDeadlineDoubleNothing) {
  LossyCluster cluster;
  ClusterConfiguration configuration = cluster.configuration();
  configuration.deadline = std::chrono::seconds(1);
  Workload workload(configuration, WorkloadOptions());
  for (int round = 0; round < 3; ++round) {
    ASSERT_TRUE(workload.waitForWrites(20));
    cluster.setMute(true);
    ASSERT_TRUE(workload.waitForFailures(4));
    cluster.setMute(false);
  }
  ASSERT_TRUE(workload.waitForWrites(20));
  report("all answers lost past the deadline", workload.finish());
}

}  // namespace
}  // namespace EventSystemTest
