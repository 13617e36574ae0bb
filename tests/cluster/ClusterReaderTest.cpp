#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/cluster/ClusterReader.h"
#include "tests/cluster/EtcdCluster.h"
#include "tests/cluster/QueueReader.h"
#include "tests/cluster/RawQueue.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::ClusterClient;
using EventSystemHost::ClusterEvent;
using EventSystemHost::ClusterReader;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<unsigned long> idsAfter(ClusterReader& reader, unsigned long afterId,
                                    unsigned int dsid = 0) {
  std::vector<unsigned long> ids;
  reader.forEach(dsid, afterId, [&](const ClusterEvent& event) {
    ids.push_back(event.id);
    return true;
  });
  return ids;
}

TEST(ClusterReadingCost, OfFiftyThousandEventsTakesOneRequestForFiveHundred) {
  const EtcdCluster etcd(1);
  fillQueue(etcd.configuration(), "events", 50'000);
  ClusterReader reader(etcd.configuration(), "events");
  unsigned long expected = 0;
  reader.forEach(0, 0, [&](const ClusterEvent& event) {
    EXPECT_EQ(event.id, ++expected);
    return event.text == "event " + std::to_string(event.id) && event.member == "alpha";
  });
  EXPECT_EQ(expected, 50'000U);
  EXPECT_LE(reader.roundTrips(), 50'000 / 500 + 2U);
}

class ClusterReading : public testing::Test {
 protected:
  EtcdCluster etcd{1};
  ClusterClient client{etcd.configuration()};
  ClusterReader reader{etcd.configuration(), "events"};
};

TEST_F(ClusterReading, CrossesGapsOfAnyWidthInAFewRequests) {
  const std::vector<unsigned long> ids{1, 2, 499, 500, 501, 1000, 1'000'000'000, 1UL << 50, ~0UL};
  for (const unsigned long id : ids) ASSERT_EQ(store(client, "copied", id), id);
  EXPECT_EQ(idsAfter(reader, 0), ids);
  EXPECT_LE(reader.roundTrips(), 30U);
  EXPECT_THAT(idsAfter(reader, 1000), ElementsAre(1'000'000'000, 1UL << 50, ~0UL));
  EXPECT_THAT(idsAfter(reader, ~0UL), IsEmpty());
  EXPECT_EQ(reader.highestId(0), ~0UL);
}

TEST_F(ClusterReading, EndsWithWhatWasThereWhenItBegan) {
  for (int i = 0; i < 3; ++i) store(client, "event");
  unsigned long seen = 0;
  reader.forEach(0, 0, [&](const ClusterEvent& event) {
    seen = event.id;
    return store(client, "added meanwhile") != 0;
  });
  EXPECT_EQ(seen, 3U);
}

TEST_F(ClusterReading, StopsWhenTheVisitorHasEnough) {
  for (int i = 0; i < 3; ++i) store(client, "event");
  int visited = 0;
  reader.forEach(0, 0, [&](const ClusterEvent&) { return ++visited < 2; });
  EXPECT_EQ(visited, 2);
}

TEST_F(ClusterReading, FindsOneEventAndNothingElse) {
  store(client, "first");
  store(client, "second", 0, "beta");
  const auto found = reader.find(2, 0);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->text, "second");
  EXPECT_EQ(found->member, "beta");
  EXPECT_FALSE(reader.find(3, 0));
  EXPECT_FALSE(reader.find(1, 7));
  EXPECT_EQ(reader.highestId(0), 2U);
  EXPECT_EQ(reader.highestId(7), 0U);
}

TEST_F(ClusterReading, KnowsTheDataSelectionsOfItsQueueOnly) {
  unsigned long id = 0;
  for (const unsigned int dsid : {0U, 4U, 5U, 70'000U, ~0U}) {
    ASSERT_EQ(client.newEvent("events", "alpha", "text", 0, id, dsid), 0U);
  }
  ASSERT_EQ(client.newEvent("event", "alpha", "text", 0, id, 6), 0U);
  ASSERT_EQ(client.newEvent("events2", "alpha", "text", 0, id, 7), 0U);
  EXPECT_THAT(reader.dataSelections(), ElementsAre(0U, 4U, 5U, 70'000U, ~0U));
  EXPECT_LE(reader.roundTrips(), 40U);
}

TEST_F(ClusterReading, ShowsAValueThatNoMemberWroteAsItIs) {
  store(client, "event");
  etcd.etcdctl({"put", "/eventsystem/events/0000000000/e/00000000000000000001", "no line feed"});
  const auto found = reader.find(1, 0);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->text, "no line feed");
  EXPECT_EQ(found->member, "");
}

TEST(ClusterReadingFailure, NamesTheEndpoints) {
  EventSystemHost::ClusterConfiguration configuration;
  configuration.endpoints = {"127.0.0.1:1"};
  configuration.deadline = std::chrono::milliseconds(1000);
  ClusterReader reader(configuration, "events");
  try {
    reader.highestId(0);
    FAIL() << "it was read without a cluster";
  } catch (const EventSystemHost::ClusterError& problem) {
    EXPECT_THAT(problem.what(), HasSubstr("127.0.0.1:1"));
  }
  EXPECT_FALSE(reader.report().failure.empty());
}

TEST(ClusterReadingFailure, OfAReportComesLongBeforeTheDeadlineOfACall) {
  EtcdCluster etcd(3);
  auto configuration = etcd.configuration();
  configuration.deadline = std::chrono::minutes(1);
  ClusterReader reader(configuration, "events");
  etcd.pause(0);
  etcd.kill(1);
  const auto begin = std::chrono::steady_clock::now();
  const auto report = reader.report();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  EXPECT_FALSE(report.failure.empty());
  ASSERT_EQ(report.members.size(), 3U);
  EXPECT_FALSE(report.members[0].reachable);
  EXPECT_FALSE(report.members[1].reachable);
  EXPECT_TRUE(report.members[2].reachable);
  EXPECT_GT(report.members[2].quotaBytes, 0);
}

}  // namespace
}  // namespace EventSystemTest
