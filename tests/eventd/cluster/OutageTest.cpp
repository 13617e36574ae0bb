// What clients of a daemon are told when its cluster does not answer.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/Eventually.h"
#include "tests/cluster/Proxy.h"
#include "tests/eventd/cluster/MemberDaemon.h"

namespace EventSystemTest {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr int kDeadline = 1000;  // milliseconds
constexpr const char* kEvents = "/v1/queues/0/events";

// The problem that a cluster without a majority is told by.
json noMajority(const Reply& reply) {
  EXPECT_EQ(reply.status, 503U) << reply.body;
  EXPECT_EQ(problemName(reply), "no-majority");
  EXPECT_TRUE(reply.headers.contains("retry-after"));
  json problem = jsonOf(reply);
  // gRPC's words are no help to whoever reads the answer.
  EXPECT_THAT(problem["detail"].get<std::string>(),
              AllOf(HasSubstr("no majority"), Not(HasSubstr("connect"))));
  return problem;
}

// A member's answers can be lost on their way to the daemon.
class LostAnswer : public testing::Test {
 protected:
  EtcdCluster etcd{1};
  Proxy proxy{etcd.endpoint(0)};
  MemberDaemon daemon{"one", {proxy.endpoint()}, kDeadline};
};

TEST_F(LostAnswer, ToAWriteLeavesOutTheIdsAndSaysThatTheOutcomeIsNotKnown) {
  daemon.add("first");
  proxy.setMute(true);
  const json problem = noMajority(daemon.post(kEvents, statusEvent("second")));
  EXPECT_FALSE(problem.contains("ids")) << problem;
  EXPECT_THAT(problem["detail"].get<std::string>(), HasSubstr("is stored is not known"));
  proxy.setMute(false);
  EXPECT_TRUE(eventually([&] { return daemon.ids().size() == 2; })) << "it was stored";
}

TEST_F(LostAnswer, ToADeletionSaysThatTheOutcomeIsNotKnown) {
  daemon.add("first");
  EXPECT_EQ(daemon.get(kEvents).status, 200U);
  proxy.setMute(true);
  noMajority(daemon.remove(1));
}

TEST_F(LostAnswer, EndsAnImportWithTheWordsThatTheOutcomeIsNotKnown) {
  daemon.add("first");
  proxy.setMute(true);
  const Outcome outcome = daemon.eventctl({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("whether the events were stored is not known"));
  proxy.setMute(false);
}

// Nothing was sent yet when the cluster turns out to be away.
TEST_F(LostAnswer, BeforeAnythingWasSentSaysThatNothingIsStored) {
  proxy.setDown(true);
  const json problem = noMajority(daemon.post(kEvents, statusEvent("first")));
  EXPECT_EQ(problem["ids"], json::array());
}

class Outage : public testing::Test {
 protected:
  Outage() {
    daemon.add("first");
    for (const int member : {1, 2}) etcd.kill(member);
  }

  EtcdCluster etcd{3};
  MemberDaemon daemon{"one", etcd.endpoints(), kDeadline};
};

TEST_F(Outage, IsToldAsNoMajorityAndOverWhenThereIsOneAgain) {
  for (const char* const path : {kEvents, "/v1/queues/0/events/1", "/v1/queues", "/v1/stats"}) {
    SCOPED_TRACE(path);
    noMajority(daemon.get(path));
  }
  noMajority(daemon.post(kEvents, statusEvent("second")));
  noMajority(daemon.remove(1));
  etcd.start(1);
  EXPECT_TRUE(eventually([&] { return daemon.get(kEvents).status == 200U; }));
  EXPECT_EQ(daemon.remove(1).status, 204U);
}

TEST_F(Outage, LeavesTheMembersToEventctlStats) {
  const Outcome text = daemon.eventctl({"stats"});
  EXPECT_EQ(text.status, 1);
  EXPECT_THAT(text.out, AllOf(HasSubstr(etcd.endpoint(0)), HasSubstr("not reachable")));
  EXPECT_THAT(text.err, HasSubstr("the queues at the cluster service cannot be read"));
  const json stats = json::parse(daemon.eventctl({"stats", "--json"}).out);
  EXPECT_FALSE(stats.contains("queues"));
  EXPECT_THAT(stats["cluster"]["members"], ::testing::SizeIs(3));
  EXPECT_THAT(stats["cluster"]["failure"].get<std::string>(), HasSubstr("no majority"));
}

}  // namespace
}  // namespace EventSystemTest
