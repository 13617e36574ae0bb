#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stop_token>
#include <thread>

#include "host/cluster/LastCall.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/Eventually.h"
#include "tests/cluster/FaultTable.h"
#include "tests/cluster/LogCapture.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/TestThread.h"
#include "tests/cluster/Workload.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterConfiguration;
using EventSystemHost::lastClusterCall;
using testing::HasSubstr;

constexpr long kSome = 40;

TEST(ClusterFault, NoneIsTheMeasureForTheOthers) {
  EtcdCluster etcd(3);
  Workload workload(etcd.configuration(), WorkloadOptions());
  ASSERT_TRUE(workload.waitForWrites(300));
  report("none", workload.finish());
  EXPECT_EQ(workload.failures(), 0);
}

TEST(ClusterFault, LeaderKilledDuringWritesCostsAFailOverAndNoError) {
  EtcdCluster etcd(3);
  Workload workload(etcd.configuration(), WorkloadOptions());
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(workload.waitForWrites(kSome));
    const int leader = etcd.leader();
    etcd.kill(leader);
    ASSERT_TRUE(workload.waitForWrites(kSome));
    etcd.start(leader);
    etcd.waitUntilServing();
  }
  report("leader killed", workload.finish());
  EXPECT_EQ(workload.failures(), 0);
}

TEST(ClusterFault, MemberStoppedAndContinuedCostsAFailOverAndNoError) {
  EtcdCluster etcd(3);
  Workload workload(etcd.configuration(), WorkloadOptions());
  const int leader = etcd.leader();
  for (const int member : {(leader + 1) % 3, leader}) {
    ASSERT_TRUE(workload.waitForWrites(kSome));
    etcd.pause(member);
    ASSERT_TRUE(workload.waitForWrites(kSome));
    etcd.resume(member);
    etcd.waitUntilServing();
  }
  report("follower, then leader stopped and continued", workload.finish());
  EXPECT_EQ(workload.failures(), 0);
}

TEST(ClusterFault, AllButOneDownFailsTheCallsAndTheyWorkAgainWhenTheyAreBack) {
  EtcdCluster etcd(3);
  ClusterConfiguration configuration = etcd.configuration();
  configuration.deadline = std::chrono::seconds(2);
  WorkloadOptions options;
  options.tryAgain = false;
  Workload workload(configuration, options);
  ASSERT_TRUE(workload.waitForWrites(kSome));
  clearLog();
  etcd.kill(0);
  etcd.kill(1);
  ASSERT_TRUE(workload.waitForFailures(3));
  for (const std::string& endpoint : etcd.endpoints()) {
    EXPECT_THAT(logged(), testing::HasSubstr(endpoint));
  }
  etcd.start(0);
  etcd.start(1);
  etcd.waitUntilServing();
  ASSERT_TRUE(workload.waitForWrites(kSome));
  report("all but one down, then back", workload.finish());
}

TEST(ClusterFault, AllMembersKilledAtOnceLoseNothing) {
  EtcdCluster etcd(3);
  Workload workload(etcd.configuration(), WorkloadOptions());
  ASSERT_TRUE(workload.waitForWrites(kSome));
  for (int i = 0; i < 3; ++i) etcd.kill(i);
  for (int i = 0; i < 3; ++i) etcd.start(i);
  etcd.waitUntilServing();
  ASSERT_TRUE(workload.waitForWrites(kSome));
  report("all killed at once and restarted", workload.finish());
}

TEST(ClusterFault, OnlyMemberKilledAndRestartedLosesNothing) {
  EtcdCluster etcd(1);
  Workload workload(etcd.configuration(), WorkloadOptions());
  for (int round = 0; round < 3; ++round) {
    ASSERT_TRUE(workload.waitForWrites(kSome));
    etcd.kill(0);
    etcd.start(0);
    etcd.waitUntilServing();
  }
  ASSERT_TRUE(workload.waitForWrites(kSome));
  report("the only member killed and restarted", workload.finish());
}

// A member that copies its database, is restarted and copies it again, until it is told to stop or
// fails.
void copyAgainAndAgain(const ClusterConfiguration& configuration, const std::string& member,
                       unsigned long events, const std::stop_token& stop,
                       std::atomic<int>& rounds) {
  while (!stop.stop_requested()) {
    ClusterClient client(configuration);
    for (unsigned long id = 1; id <= events; ++id) {
      const std::string text = member + " " + std::to_string(id);
      ASSERT_NE(store(client, text, id, member), 0u);
    }
    ++rounds;
  }
}

TEST(ClusterFault, LeaderKilledWhileTwoMembersCopyStoresEachEventOnce) {
  constexpr unsigned long kEvents = 150;
  EtcdCluster etcd(3);
  std::atomic<int> alphaRounds{0};
  std::atomic<int> betaRounds{0};
  const auto copier = [&](const std::string& member, std::atomic<int>& rounds) {
    return testThread([&, member](const std::stop_token& stop) {
      copyAgainAndAgain(etcd.configuration(), member, kEvents, stop, rounds);
    });
  };
  std::jthread alpha = copier("alpha", alphaRounds);
  std::jthread beta = copier("beta", betaRounds);
  etcd.kill(etcd.leader());
  EXPECT_TRUE(eventually([&] { return alphaRounds >= 2 && betaRounds >= 2; }))
      << alphaRounds << " and " << betaRounds << " rounds only";
  for (std::jthread* const member : {&alpha, &beta}) member->request_stop();
  alpha.join();
  beta.join();
  ClusterClient client(etcd.configuration());
  const auto events = allEvents(client);
  std::set<std::string> texts;
  for (const StoredEvent& event : events) texts.insert(event.text);
  EXPECT_EQ(events.size(), 2 * kEvents);
  EXPECT_EQ(texts.size(), 2 * kEvents);
}

TEST(ClusterFault, NoMajorityEndsEachCallWithinItsDeadline) {
  EtcdCluster etcd(3);
  ClusterConfiguration configuration = etcd.configuration();
  configuration.deadline = std::chrono::seconds(2);
  ClusterClient client(configuration);
  ASSERT_EQ(store(client, "first"), 1u);
  etcd.kill(0);
  etcd.kill(1);
  const auto within = [](const auto& call) {
    const auto begin = History::now();
    EXPECT_EQ(call(), EventSystemHost::kClusterUnreachable);
    EXPECT_LT(History::now() - begin, std::chrono::milliseconds(2500));
  };
  unsigned long id = 0;
  std::string text;
  within([&] { return client.newEvent("events", "alpha", "second", 0, id, 0); });
  EXPECT_THAT(lastClusterCall().failure, HasSubstr("no majority of the members answers"));
  within([&] { return client.newEvent("events", "alpha", "copy", 7, id, 0); });
  within([&] { return client.getNextEvent("events", 0, id, text, text, 0); });
  within([&] { return client.deleteEventById("events", 1, 0); });
  etcd.start(0);
  etcd.waitUntilMajority();
  EXPECT_NE(store(client, "second"), 0u);
  EXPECT_EQ(store(client, "copy", 7), 7u);
}

}  // namespace
}  // namespace EventSystemTest
