// eventctl stats in cluster mode: the queues at the service, and the members of etcd.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/ClusterHome.h"

namespace EventSystemTest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

class ClusterStats : public ClusterHome {
 protected:
  json stats(int status = 0) const {
    const Outcome outcome = run({"stats", "--json"});
    EXPECT_EQ(outcome.status, status) << outcome.err;
    return json::parse(outcome.out);
  }

  static long reachable(const json& cluster) {
    long count = 0;
    for (const json& member : cluster["members"]) count += member["reachable"] == true ? 1 : 0;
    return count;
  }
};

TEST_F(ClusterStats, CountsTheQueuesAtTheService) {
  const EtcdCluster etcd(1);
  joinCluster(etcd);
  addDataSelection(4);
  for (const char* const server : {"a", "b", "c"}) add(server);
  add("selected", 4);
  output({"delete", "3"});
  EventSystemHost::ClusterClient other(etcd.configuration());
  unsigned long id = 0;
  ASSERT_EQ(other.newEvent("events", "node2", serverStatus("x", 77), 0, id, 9), 0U);

  const json all = stats();
  EXPECT_EQ(all["count"], 4);
  ASSERT_THAT(all["queues"], SizeIs(3));
  const json& global = all["queues"][0];
  EXPECT_EQ(global["count"], 2);
  EXPECT_EQ(global["highestId"], 3);
  EXPECT_EQ(global["types"]["serverstatus"], 2);
  EXPECT_EQ(all["queues"][1]["dsid"], 4);
  EXPECT_EQ(all["queues"][1]["known"], true);
  EXPECT_EQ(all["queues"][2]["dsid"], 9);
  EXPECT_EQ(all["queues"][2]["known"], false);
  EXPECT_EQ(all["queues"][2]["oldest"], 77);
  EXPECT_THAT(output({"stats"}), HasSubstr("? Data selection 9 does not exist in this home"));
}

TEST_F(ClusterStats, ShowsTheMembersWithWhatTheyHaveOfTheirQuota) {
  const EtcdCluster etcd({1, {"--quota-backend-bytes=50000000"}, nullptr});
  joinCluster(etcd);
  add("a");
  const json cluster = stats()["cluster"];
  EXPECT_EQ(cluster["failure"], "");
  EXPECT_THAT(cluster["alarms"], SizeIs(0));
  ASSERT_THAT(cluster["members"], SizeIs(1));
  const json& member = cluster["members"][0];
  EXPECT_EQ(member["endpoint"], etcd.endpoint(0));
  EXPECT_EQ(member["reachable"], true);
  EXPECT_EQ(member["failure"], "");
  EXPECT_EQ(member["name"], "node0");
  EXPECT_EQ(member["leader"], true);
  EXPECT_THAT(member["version"].get<std::string>(), HasSubstr("."));
  EXPECT_GT(member["databaseBytes"], 0);
  EXPECT_GT(member["databaseBytesInUse"], 0);
  EXPECT_EQ(member["quotaBytes"], 50'000'000);
  const std::string text = output({"stats"});
  EXPECT_THAT(text, HasSubstr(etcd.endpoint(0)));
  EXPECT_THAT(text, HasSubstr("leader"));
  EXPECT_THAT(text, HasSubstr("% of"));
  EXPECT_THAT(text, Not(HasSubstr("Limits of the global queue")));
}

TEST_F(ClusterStats, ShowsAlarms) {
  const EtcdCluster etcd({1, {"--quota-backend-bytes=60000"}, nullptr});
  joinCluster(etcd);
  const std::string filler(20'000, 'x');
  try {
    for (int i = 0; i < 50; ++i) etcd.etcdctl({"put", "filler" + std::to_string(i), filler});
    FAIL() << "the quota does not bind";
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(stats()["cluster"]["alarms"], json::array({"NOSPACE at node0"}));
  EXPECT_THAT(output({"stats"}), HasSubstr("Alarm: NOSPACE at node0"));
  const Outcome refused = run({"add", "legacy", "--payload", "x"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("no space"));
  EXPECT_THAT(refused.err, HasSubstr(etcd.endpoint(0)));
}

TEST_F(ClusterStats, ShowsWhatIsWrongWithAndWithoutAMajority) {
  EtcdCluster etcd(3);
  joinCluster(etcd);
  add("a");
  etcd.kill(2);
  etcd.waitUntilMajority();
  const json two = stats();
  EXPECT_EQ(two["count"], 1);
  EXPECT_EQ(reachable(two["cluster"]), 2);
  const json& dead = two["cluster"]["members"][2];
  EXPECT_EQ(dead["reachable"], false);
  EXPECT_THAT(dead["failure"].get<std::string>(), HasSubstr(etcd.endpoint(2)));
  EXPECT_THAT(output({"stats"}), HasSubstr("Not reachable: " + etcd.endpoint(2) + ": "));

  etcd.kill(1);
  const json one = stats(1);
  EXPECT_EQ(reachable(one["cluster"]), 1);
  EXPECT_NE(one["cluster"]["failure"], "");
  EXPECT_FALSE(one.contains("count"));
  EXPECT_FALSE(one.contains("queues"));
  const Outcome text = run({"stats"});
  EXPECT_EQ(text.status, 1);
  EXPECT_THAT(text.out, HasSubstr(etcd.endpoint(0)));
  EXPECT_THAT(text.out, HasSubstr("not reachable"));
  EXPECT_THAT(text.err, HasSubstr("the queues at the cluster service cannot be read"));
  EXPECT_THAT(text.err, HasSubstr(etcd.endpoint(1)));
}

}  // namespace
}  // namespace EventSystemTest
