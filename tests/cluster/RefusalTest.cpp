#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/LogCapture.h"
#include "tests/cluster/QueueReader.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using testing::AllOf;
using testing::HasSubstr;

class ClusterRefusal : public testing::Test {
 protected:
  EtcdCluster etcd{1};
  ClusterClient client{etcd.configuration()};
};

TEST_F(ClusterRefusal, OfABadNameSaysWhichAndSendsNothing) {
  const unsigned long before = client.roundTrips();
  unsigned long id = 7;
  std::string text;
  for (const std::string& name :
       {std::string(), std::string("a/b"), std::string("a b"), std::string("a\n"),
        std::string(129, 'q'), std::string("\xc3\xa4")}) {
    clearLog();
    EXPECT_EQ(client.newEvent(name, "alpha", "event", 0, id, 3),
              EventSystemHost::kClusterBadArgument);
    EXPECT_EQ(id, 0u);
    EXPECT_THAT(logged(), AllOf(HasSubstr("error 4: newEvent data selection 3"),
                                HasSubstr("the queue name")));
    clearLog();
    EXPECT_NE(client.newEvent("events", name, "event", 0, id, 3), 0u);
    EXPECT_THAT(logged(), HasSubstr("the member name"));
    clearLog();
    EXPECT_NE(client.newEvent("events", name, "event", 9, id, 3), 0u);
    EXPECT_NE(client.getNextEvent(name, 0, id, text, text, 3), 0u);
    EXPECT_NE(client.deleteEventById(name, 1, 3), 0u);
    EXPECT_NE(client.forgetCopies("events", name, 1, 3), 0u);
    EXPECT_THAT(logged(), AllOf(HasSubstr("newEvent (copy)"), HasSubstr("getNextEvent"),
                                HasSubstr("deleteEventById"), HasSubstr("forgetCopies")));
  }
  EXPECT_EQ(client.roundTrips(), before);
  EXPECT_EQ(client.newEvent(std::string(128, 'q'), "Alpha_1.example-2", "event", 0, id, 3), 0u);
}

TEST_F(ClusterRefusal, OfAZeroByteInAnEventStringIsTold) {
  clearLog();
  EXPECT_EQ(store(client, std::string("a\0b", 3)), 0u);
  EXPECT_THAT(logged(), HasSubstr("zero byte"));
}

TEST_F(ClusterRefusal, NamesQueueDataSelectionEndpointAndEtcdsWords) {
  clearLog();
  unsigned long id = 0;
  EXPECT_EQ(client.newEvent("events", "alpha", std::string(2'000'000, 'x'), 0, id, 12),
            EventSystemHost::kClusterRefused);
  EXPECT_THAT(logged(), AllOf(HasSubstr("newEvent queue events, data selection 12: "),
                              HasSubstr(etcd.endpoint(0)), HasSubstr("request is too large")));
  EXPECT_EQ(store(client, "small"), 1u);
}

TEST_F(ClusterRefusal, OfASequenceThatIsNoNumberIsTold) {
  etcd.etcdctl({"put", "/eventsystem/events/0000000000/seq", "many"});
  clearLog();
  EXPECT_EQ(store(client, "event"), 0u);
  EXPECT_EQ(store(client, "copy", 3), 0u);
  EXPECT_THROW(eventAfter(client, 0), std::runtime_error);
  EXPECT_THAT(logged(), AllOf(HasSubstr("newEvent queue"), HasSubstr("/seq")));
}

TEST_F(ClusterRefusal, ToHandOutMoreIdsThanThereAreIsTold) {
  ASSERT_EQ(store(client, "last", ~0UL), ~0UL);
  clearLog();
  EXPECT_EQ(store(client, "one more"), 0u);
  EXPECT_THAT(logged(), HasSubstr("all ids of the queue are handed out"));
}

TEST(ClusterQuota, UsedUpIsToldWithTheRemedyAndTheQueueGoesOnAfterIt) {
  EtcdCluster etcd({1, {"--quota-backend-bytes=1000000"}, nullptr});
  ClusterClient client(etcd.configuration());
  const std::string text(10'000, 'x');
  std::set<std::string> acknowledged;
  clearLog();
  unsigned int status = 0;
  std::string refused;
  for (int i = 0; status == 0 && i < 1000; ++i) {
    unsigned long id = 0;
    refused = std::to_string(i) + text;
    status = client.newEvent("events", "alpha", refused, 0, id, 0);
    if (status == 0) acknowledged.insert(refused);
  }
  ASSERT_EQ(status, EventSystemHost::kClusterNoSpace);
  EXPECT_THAT(logged(), AllOf(HasSubstr("no space: raise the quota or compact and defragment, then "
                                        "disarm the alarm"),
                              HasSubstr("database space exceeded"), HasSubstr(etcd.endpoint(0))));
  EXPECT_THAT(client.report().alarms, testing::ElementsAre("NOSPACE at node0"));
  EXPECT_EQ(client.report().members.at(0).quotaBytes, 1'000'000);
  // Reading and deleting still work, so consumers can make room.
  const auto events = allEvents(client);
  EXPECT_GE(events.size(), acknowledged.size());
  for (const StoredEvent& event : events) {
    if (event.id > 1 && event.text != refused) {
      ASSERT_EQ(client.deleteEventById("events", event.id, 0), 0u);
    }
  }
  const std::string fields = etcd.etcdctl({"endpoint", "status", "--write-out=fields"});
  const auto at = fields.find("\"Revision\" : ");
  ASSERT_NE(at, std::string::npos);
  const std::string revision = std::to_string(std::stol(fields.substr(at + 13)));
  etcd.etcdctl({"compact", "--physical", revision});
  etcd.etcdctl({"defrag"});
  etcd.etcdctl({"alarm", "disarm"});
  EXPECT_NE(store(client, refused), 0u);
  EXPECT_NE(store(client, "another"), 0u);
  const auto left = allEvents(client);
  EXPECT_EQ(std::count_if(left.begin(), left.end(),
                          [&](const StoredEvent& event) { return event.text == refused; }),
            1);
  EXPECT_TRUE(client.report().alarms.empty());
}

}  // namespace
}  // namespace EventSystemTest
