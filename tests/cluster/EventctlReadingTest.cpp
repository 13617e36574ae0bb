// eventctl list and show in cluster mode.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/ClusterHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using ClusterList = ClusterHome;

TEST_F(ClusterList, ShowsTheEventsUnderTheIdsOfTheService) {
  const EtcdCluster etcd(1);
  joinCluster(etcd);
  for (const char* const server : {"a", "b", "c"}) add(server);
  output({"add", "legacy", "--payload", "other"});
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3, 4));
  const auto second = jsonLines(output({"list", "--json", "--after", "1", "--limit", "1"}));
  ASSERT_THAT(second, SizeIs(1));
  EXPECT_EQ(second[0]["id"], 2);
  EXPECT_EQ(second[0]["fields"]["server"], "b");
  EXPECT_THAT(second[0]["eventString"].get<std::string>(), HasSubstr(";id:2;"));
  EXPECT_THAT(output({"list", "--type", "legacy"}), HasSubstr("other"));
  EXPECT_THAT(jsonLines(output({"list", "--type", "legacy", "--json"})), SizeIs(1));
  EXPECT_THAT(output({"list", "--limit", "2"}), HasSubstr("--after 2 continues the list"));
  EXPECT_EQ(json::parse(output({"show", "3", "--json"}))["fields"]["server"], "c");
  const Outcome none = run({"show", "5"});
  EXPECT_EQ(none.status, 1);
  EXPECT_THAT(none.err, HasSubstr("there is no event 5 in the global queue"));
}

TEST_F(ClusterList, KeepsTheDataSelectionsApart) {
  const EtcdCluster etcd(1);
  joinCluster(etcd);
  addDataSelection(4);
  add("global");
  add("selected", 4);
  const auto events = jsonLines(output({"list", "--json", "--dsid", "4"}));
  ASSERT_THAT(events, SizeIs(1));
  EXPECT_EQ(events[0]["dsid"], 4);
  EXPECT_EQ(events[0]["fields"]["server"], "selected");
  EXPECT_EQ(jsonLines(output({"dataselection", "list", "--json"}))[0]["events"], 1);
  EXPECT_THAT(run({"list", "--dsid", "5"}).err, HasSubstr("data selection 5 does not exist"));
}

TEST_F(ClusterList, ShowsAnUnreadableEventAsDamaged) {
  const EtcdCluster etcd(1);
  joinCluster(etcd);
  for (const char* const server : {"a", "b", "c"}) add(server);
  putEvent(etcd, "0000000000/e/00000000000000000002", "node1\nno event");
  const auto events = jsonLines(output({"list", "--json"}));
  ASSERT_THAT(events, SizeIs(3));
  EXPECT_EQ(events[1]["problem"], "unreadable event string");
  EXPECT_EQ(events[1]["eventString"], "no event");
  EXPECT_EQ(events[1]["id"], 2);
  EXPECT_FALSE(events[2].contains("problem"));
  EXPECT_THAT(output({"show", "2"}), HasSubstr("unreadable event string"));
  EXPECT_EQ(json::parse(output({"stats", "--json"}))["queues"][0]["damaged"], 1);
  // As from a database, a consumer gets the events behind it.
  EXPECT_THAT(jsonLines(output({"consume", "--json"})), SizeIs(2));
}

TEST_F(ClusterList, NeedsNoDatabaseAndLeavesNothingBehind) {
  const EtcdCluster etcd(1);
  joinCluster(etcd);
  const std::string before = revision(etcd);
  EXPECT_EQ(output({"list"}), "No events in the global queue.\n");
  output({"stats"});
  EXPECT_EQ(run({"show", "1"}).status, 1);
  EXPECT_EQ(output({"dataselection", "list"}), "No data selections.\n");
  EXPECT_EQ(revision(etcd), before);
  EXPECT_THAT(etcd.etcdctl({"lease", "list"}), HasSubstr("found 0 leases"));
  EXPECT_FALSE(std::filesystem::exists(database()));
}

TEST_F(ClusterList, ReadsBesideAWriterAndCopiesNothing) {
  add("in the database");
  const EtcdCluster etcd(1);
  joinCluster(etcd);
  EXPECT_THAT(ids(), IsEmpty()) << "a reader has copied the database's events";
  Program writer(at({"import", "-", "--acknowledge"}), {.keepInputOpen = true});
  writer.write(serverStatus("new") + "\n");
  ASSERT_TRUE(writer.waitForOutput("1 0 2\n"));
  EXPECT_THAT(ids(), ElementsAre(1, 2));
  writer.closeInput();
  EXPECT_EQ(writer.wait().status, 0);
}

TEST_F(ClusterList, NamesTheEndpointsThatDoNotAnswer) {
  joinCluster("127.0.0.1:1", "deadline_ms = 1000\n");
  for (const Arguments& command : {Arguments{"list"}, Arguments{"show", "1"}}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr("127.0.0.1:1"));
    EXPECT_THAT(outcome.err, HasSubstr("eventctl stats"));
  }
}

}  // namespace
}  // namespace EventSystemTest
