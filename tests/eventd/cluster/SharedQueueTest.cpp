// Two daemons that serve the same queues: whatever one does, the other shows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cluster/EtcdCluster.h"
#include "tests/eventd/cluster/MemberDaemon.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class SharedQueue : public testing::Test {
 protected:
  EtcdCluster etcd{1};
  MemberDaemon one{"one", etcd.endpoints()};
  MemberDaemon two{"two", etcd.endpoints()};
};

TEST_F(SharedQueue, ShowsAtEachDaemonWhatTheOtherHasStoredAndNotWhatItHasDeleted) {
  for (const char* const server : {"a", "b", "c", "d", "e"}) one.add(server);
  for (const char* const server : {"f", "g"}) two.add(server);
  for (const MemberDaemon* const each : {&one, &two}) {
    EXPECT_THAT(each->ids(), ElementsAre(1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(each->page("after=4"), ElementsAre(5, 6, 7));
  }
  for (const unsigned long id : {1UL, 2UL, 3UL, 6UL}) EXPECT_EQ(two.remove(id).status, 204U);
  for (const MemberDaemon* const each : {&one, &two}) {
    EXPECT_THAT(each->ids(), ElementsAre(4, 5, 7));
    EXPECT_THAT(each->page("after=4&limit=1"), ElementsAre(5));
    EXPECT_THAT(each->page("after=5&wait=20"), ElementsAre(7));
    EXPECT_EQ(each->get("/v1/queues/0/events/3").status, 404U);
    EXPECT_EQ(each->remove(3).status, 404U);
  }
}

TEST_F(SharedQueue, KeepsAReaderWaitingWhoseEventsTheOtherDaemonHasDeleted) {
  one.add("a");
  EXPECT_EQ(two.remove(1).status, 204U);
  EXPECT_THAT(one.page("wait=0.1"), IsEmpty());
  RawClient waiting(one.socket());
  ASSERT_TRUE(waiting.get("/v1/queues/0/events?wait=50"));
  two.add("b");
  EXPECT_EQ(jsonOf(waiting.reply())["events"][0]["id"], 2);
}

// A consumer that deletes what it was shown gets on at either daemon.
TEST_F(SharedQueue, IsConsumedAtBothDaemonsWithoutMeetingAnEventTwice) {
  for (int i = 0; i < 6; ++i) (i % 2 == 0 ? one : two).add("node" + std::to_string(i));
  std::vector<unsigned long> handled;
  for (const MemberDaemon* each = &one; handled.size() < 6; each = each == &one ? &two : &one) {
    const auto first = each->page("limit=1");
    ASSERT_FALSE(first.empty());
    handled.push_back(first.front());
    ASSERT_EQ(each->remove(first.front()).status, 204U) << first.front();
  }
  EXPECT_THAT(handled, ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST_F(SharedQueue, BeginsAStreamWithWhatIsThereThen) {
  for (const char* const server : {"a", "b", "c"}) one.add(server);
  EXPECT_EQ(two.remove(1).status, 204U);
  EXPECT_EQ(two.remove(2).status, 204U);
  RawClient stream(one.socket());
  ASSERT_TRUE(stream.get("/v1/queues/0/events/stream?after=0"));
  EXPECT_EQ(stream.reply(true).status, 200U);
  constexpr std::size_t kFrame = 60;
  EXPECT_THAT(stream.chunks(kFrame), AllOf(HasSubstr("id: 3\n"), Not(HasSubstr("id: 1\n"))));
}

}  // namespace
}  // namespace EventSystemTest
