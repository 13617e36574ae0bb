#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EventSystem/platform/ClusterAPI.h"
#include "apps/etcd_nodes/Ports.h"
#include "host/cluster/ClusterService.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/LogCapture.h"
#include "tests/support/NameLookup.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterConfiguration;
using EventSystemHost::ClusterReport;
using testing::AllOf;
using testing::HasSubstr;

// Why the service does not start.
std::string startFailure(const ClusterConfiguration& configuration) {
  try {
    EventSystemHost::startCluster(configuration);
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
  EventSystemHost::stopCluster();
  return "";
}

TEST(ClusterService, NotStartedFailsEveryCallWithALogLine) {
  ClusterAPI& api = ClusterAPI::instance();
  clearLog();
  unsigned long id = 0;
  std::string text;
  EXPECT_EQ(api.newEvent("events", "alpha", "event", 0, id, 0),
            EventSystemHost::kClusterNotStarted);
  EXPECT_EQ(api.getNextEvent("events", 0, id, text, text, 0), EventSystemHost::kClusterNotStarted);
  EXPECT_EQ(api.deleteEventById("events", 1, 0), EventSystemHost::kClusterNotStarted);
  EXPECT_THAT(logged(), AllOf(HasSubstr("error 4: newEvent the cluster service is not started"),
                              HasSubstr("error 4: getNextEvent the cluster"),
                              HasSubstr("error 4: deleteEventById the cluster")));
}

TEST(ClusterService, ServesTheClusterApiFromStartToStop) {
  EtcdCluster etcd(1);
  EventSystemHost::startCluster(etcd.configuration());
  ClusterAPI& api = ClusterAPI::instance();
  unsigned long id = 0;
  std::string member;
  std::string text;
  ASSERT_EQ(api.newEvent("events", "alpha", "event", 0, id, 0), 0u);
  EXPECT_EQ(id, 1u);
  ASSERT_EQ(api.getNextEvent("events", 0, id, member, text, 0), 0u);
  EXPECT_EQ(id, 1u);
  EXPECT_EQ(member, "alpha");
  EXPECT_EQ(text, "event");
  EXPECT_EQ(api.deleteEventById("events", 1, 0), 0u);
  EventSystemHost::stopCluster();
  EXPECT_NE(api.deleteEventById("events", 1, 0), 0u);
}

TEST(ClusterService, TakesItsTokensAlongWhenItStops) {
  EtcdCluster etcd(1);
  EventSystemHost::startCluster(etcd.configuration());
  unsigned long id = 0;
  ASSERT_EQ(ClusterAPI::instance().newEvent("events", "alpha", "event", 0, id, 0), 0u);
  const std::vector<std::string> listing{"get", "--prefix", "--keys-only", "/eventsystem/"};
  EXPECT_THAT(etcd.etcdctl(listing), HasSubstr("/last/"));
  EventSystemHost::stopCluster();
  EXPECT_THAT(etcd.etcdctl(listing), testing::Not(HasSubstr("/last/")));
  EXPECT_THAT(etcd.etcdctl(listing), HasSubstr("/e/00000000000000000001"));
}

TEST(ClusterService, RefusesAnEventStringThatTheLibraryHasCut) {
  EtcdCluster etcd(1);
  EventSystemHost::startCluster(etcd.configuration());
  unsigned long id = 0;
  clearLog();
  ClusterAPI& api = ClusterAPI::instance();
  EXPECT_NE(api.newEvent("events", "alpha", std::string(2047, 'x'), 0, id, 0), 0u);
  EXPECT_THAT(logged(), HasSubstr("newEvent The event string does not fit and was cut"));
  // The end of a text of JSON that happens to be cut there.
  EXPECT_NE(api.newEvent("events", "alpha", std::string(2045, 'x').append("}}"), 0, id, 0), 0u);
  EXPECT_EQ(api.newEvent("events", "alpha", std::string(2044, 'x').append(";}}"), 0, id, 0), 0u);
  EXPECT_EQ(api.newEvent("events", "alpha", std::string(2046, 'x'), 0, id, 0), 0u);
  EXPECT_EQ(id, 2u);
  EventSystemHost::stopCluster();
}

TEST(ClusterService, ReportsMembersLeaderAndSizes) {
  EtcdCluster etcd(3);
  EventSystemHost::startCluster(etcd.configuration());
  const ClusterReport report = EventSystemHost::clusterClient()->report();
  EXPECT_EQ(report.failure, "");
  ASSERT_EQ(report.members.size(), 3u);
  int leaders = 0;
  for (int i = 0; i < 3; ++i) {
    const auto& member = report.members[static_cast<std::size_t>(i)];
    EXPECT_EQ(member.endpoint, etcd.endpoint(i));
    EXPECT_EQ(member.name, "node" + std::to_string(i));
    EXPECT_TRUE(member.reachable);
    EXPECT_EQ(member.version, "3.4.23");
    EXPECT_GT(member.databaseBytes, 0);
    EXPECT_GT(member.databaseBytesInUse, 0);
    EXPECT_EQ(member.quotaBytes, std::int64_t{2} << 30);
    leaders += member.leader ? 1 : 0;
  }
  EXPECT_EQ(leaders, 1);
  etcd.kill(1);
  const ClusterReport without = EventSystemHost::clusterClient()->report();
  EXPECT_FALSE(without.members[1].reachable);
  EXPECT_THAT(without.members[1].failure, HasSubstr(etcd.endpoint(1)));
  EXPECT_TRUE(without.members[0].reachable);
  EventSystemHost::stopCluster();
}

TEST(ClusterService, StartsWithAWarningWhenOneMemberIsDown) {
  EtcdCluster etcd(3);
  etcd.kill(2);
  clearLog();
  EXPECT_EQ(startFailure(etcd.configuration()), "");
  EXPECT_THAT(logged(), AllOf(HasSubstr("warning 4"), HasSubstr(etcd.endpoint(2))));
}

TEST(ClusterService, SaysWhichEndpointsCannotBeReached) {
  ClusterConfiguration configuration;
  for (const auto& [port, claim] : EtcdNodes::freePorts(2)) {
    configuration.endpoints.push_back("127.0.0.1:" + std::to_string(port));
  }
  EXPECT_THAT(startFailure(configuration),
              AllOf(HasSubstr(configuration.endpoints[0]), HasSubstr(configuration.endpoints[1]),
                    HasSubstr("Connection refused")));
}

TEST(ClusterService, SaysWhatIsWrongWithAnEndpointThatMakesNoSense) {
  ClusterConfiguration configuration;
  EXPECT_THAT(startFailure(configuration), HasSubstr("no etcd endpoint"));
  configuration.endpoints = {"http://127.0.0.1:2379"};
  EXPECT_THAT(startFailure(configuration), HasSubstr("is not host:port"));
  configuration.endpoints = {"name.invalid:2379"};
  EXPECT_THAT(startFailure(configuration), HasSubstr("name.invalid:2379"));
}

TEST(ClusterService, FindsEndpointsByName) {
  if (!isKnownName("localhost")) GTEST_SKIP() << "this machine does not know localhost";
  EtcdCluster etcd(1);
  ClusterConfiguration configuration = etcd.configuration();
  const std::string port = configuration.endpoints[0].substr(configuration.endpoints[0].rfind(':'));
  configuration.endpoints = {"localhost" + port};
  EXPECT_EQ(startFailure(configuration), "");
}

TEST(ClusterService, RefusesEndpointsOfDifferentClusters) {
  EtcdCluster one(1);
  EtcdCluster other(1);
  ClusterConfiguration configuration = one.configuration();
  configuration.endpoints.push_back(other.endpoint(0));
  EXPECT_THAT(startFailure(configuration), HasSubstr("belong to different clusters"));
}

}  // namespace
}  // namespace EventSystemTest
