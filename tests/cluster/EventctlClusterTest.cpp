// The switch to cluster mode and back: what becomes of the rows of the database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cluster/ClusterHome.h"

namespace EventSystemTest {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class ClusterSwitch : public ClusterHome {
 protected:
  // Starts in cluster mode, which copies, and takes the events off the service.
  long consume() {
    joinCluster(m_etcd);
    const std::string printed = output({"consume", "--json"});
    return std::count(printed.begin(), printed.end(), '\n');
  }

  // How many rows the service still knows to be copied.
  std::size_t markers() const {
    const std::string keys =
        m_etcd.etcdctl({"get", "--prefix", "--keys-only", "/eventsystem/events/0000000000/copied"});
    return static_cast<std::size_t>(std::count(keys.begin(), keys.end(), '/')) / 6;
  }

  const EtcdCluster m_etcd{1};
};

TEST_F(ClusterSwitch, CopiesTheDatabasesEventsOnceAlsoAfterTheyWereConsumed) {
  for (int i = 0; i < 3; ++i) {
    output({"add", "legacy", "--payload", "kept" + std::to_string(i)});
  }
  joinCluster(m_etcd);
  output({"add", "legacy", "--payload", "added"});
  const std::string seen = output({"consume", "--json"});
  EXPECT_EQ(jsonLines(seen).size(), 4U);
  EXPECT_LT(seen.find("kept0"), seen.find("kept1"));
  EXPECT_LT(seen.find("kept1"), seen.find("kept2"));
  EXPECT_LT(seen.find("kept2"), seen.find("added"));
  EXPECT_EQ(consume(), 0) << "the start copied the rows again";
}

TEST_F(ClusterSwitch, GivesUpTheMarkersOfRowsThatAreGone) {
  for (int i = 0; i < 4; ++i) add("node");
  EXPECT_EQ(consume(), 4);
  EXPECT_EQ(markers(), 4U);
  leaveCluster();
  output({"consume", "--limit", "2"});
  EXPECT_EQ(consume(), 0);
  EXPECT_EQ(markers(), 2U);
  leaveCluster();
  output({"consume"});
  EXPECT_EQ(consume(), 0);
  EXPECT_EQ(markers(), 0U);
  leaveCluster();
  EXPECT_EQ(add("later"), 5U);
  EXPECT_EQ(consume(), 1);
}

TEST_F(ClusterSwitch, KeepsTheMarkerOfARowWhoseTextSaysAnotherId) {
  for (int i = 0; i < 4; ++i) add("node" + std::to_string(i));
  execute(database(),
          "UPDATE events SET eventstring = replace(eventstring, 'id:4;', 'id:1;') WHERE id = 4");
  EXPECT_EQ(consume(), 4);
  leaveCluster();
  output({"delete", "1"});
  output({"delete", "2"});
  EXPECT_EQ(consume(), 0);
  EXPECT_EQ(consume(), 0) << "the marker was given up while its row was there";
}

// The rows of the copied queue are never consumed here: they must not use up its limit.
TEST_F(ClusterSwitch, LetsNoLimitOfTheDatabaseRefuseAuditRecords) {
  for (int i = 0; i < 2; ++i) add("node" + std::to_string(i));
  std::ofstream(home() / "OrbCentral.ini") << "[events]\ncount_limit = 2\n";
  leaveAuditRecords({"one", "two"});
  EXPECT_EQ(consume(), 4);
  leaveCluster();
  EXPECT_EQ(run({"add", "legacy", "--payload", "x"}).status, 1) << "the limit is no limit any more";
}

TEST_F(ClusterSwitch, RefusesAMemberThatAnotherHomeIs) {
  joinCluster(m_etcd);
  add("first");
  std::filesystem::rename(database().string() + ".member", m_etcd.directory() / "kept");
  const Outcome refused = run({"add", "legacy", "--payload", "second"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("the member \"node1\" of the queue \"events\" is "),
                                 HasSubstr(database().string()), HasSubstr("[cluster]"),
                                 HasSubstr("etcdctl del /eventsystem/events/members/node1")));
  EXPECT_EQ(ids(), Ids{1}) << "a reader is no member";
  std::filesystem::rename(m_etcd.directory() / "kept", database().string() + ".member");
  EXPECT_EQ(add("third"), 2U);
  std::filesystem::remove(database().string() + ".member");
  m_etcd.etcdctl({"del", "/eventsystem/events/members/node1"});
  EXPECT_EQ(add("fourth"), 3U);
}

TEST_F(ClusterSwitch, TakesEveryLineOfAnImportAsANewEventWhateverIdItCarries) {
  joinCluster(m_etcd);
  const std::string line =
      "EVENT{version:1;type:6;id:7;date:1700000000;ABILITIESEVENT{flags:0x1;server:a;}}\n";
  output({"import", write("two.events", line + line).string()});
  EXPECT_EQ(consume(), 2);
}

TEST_F(ClusterSwitch, SaysWhichEndpointsDoNotAnswer) {
  joinCluster("127.0.0.1:1");
  const Outcome outcome = run({"add", "legacy", "--payload", "lost"});
  EXPECT_NE(outcome.status, 0);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("127.0.0.1:1"), HasSubstr("[cluster]")));
}

}  // namespace
}  // namespace EventSystemTest
