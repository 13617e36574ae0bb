// eventctl consume --follow, beside other processes that write.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "tests/e2e/EventctlAnywhere.h"
#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Follow : public EventctlAnywhere {};

TEST_P(Follow, PrintsWhatOtherProcessesAdd) {
  add("before");
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("before"));
  for (const char* const server : {"one", "two", "three"}) {
    add(server);
    ASSERT_TRUE(follower.waitForOutput("server:" + std::string(server)));
  }
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(4));
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_P(Follow, EndsCleanlyWithAnInterruptWhileItWaits) {
  add("node1");
  Program follower(at({"consume", "--follow"}));
  ASSERT_TRUE(follower.waitForOutput("node1"));
  follower.signal(SIGINT);
  EXPECT_EQ(follower.wait().status, 0);
}

TEST_P(Follow, SeesAuditRecordsOfOtherServices) {
  add("before");
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("before"));
  leaveAuditRecords({"left by a service"});
  ASSERT_TRUE(follower.waitForOutput("left by a service"));
  leaveAuditRecords({"left later"});
  ASSERT_TRUE(follower.waitForOutput("left later"));
  follower.signal(SIGTERM);
  EXPECT_EQ(follower.wait().status, 0);
}

TEST_P(Follow, FollowsADataSelectionThatItEmpties) {
  addDataSelection(4);
  add("first", 4);
  Program follower(at({"consume", "--follow", "--json", "--dsid", "4"}));
  ASSERT_TRUE(follower.waitForOutput("first"));
  add("second", 4);
  ASSERT_TRUE(follower.waitForOutput("second"));
  add("elsewhere", 0);
  add("third", 4);
  ASSERT_TRUE(follower.waitForOutput("third"));
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(3));
  EXPECT_THAT(ids(), ElementsAre(1));
}

TEST_P(Follow, KeepsAndPrintsEachEventOnce) {
  followAndKeep();
}

TEST_P(Follow, EndsAtItsLimit) {
  followToItsLimit();
}

TEST_P(Follow, EndsWhenItsReaderHasGone) {
  add("node1");
  const Outcome outcome = run({"consume", "--follow"}, {.out = Surroundings::Out::kBrokenPipe});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(ids(), ElementsAre(1));
}

TEST_P(Follow, EndsWhenItsReaderGoesWhileItWaits) {
  followUntilItsReaderGoes();
}

// The pipe takes 64 KiB; what does not fit waits in the queue until the stop.
TEST_P(Follow, EndsWhileItsReaderDoesNotRead) {
  std::string events;
  for (int i = 0; i < 200; ++i) events += activity(std::string(900, 'x')) + "\n";
  output({"import", "-"}, {.input = events});
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("xxx"));
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  const auto lines = linesOf(outcome.out);
  std::size_t complete = 0;
  for (const std::string& line : lines) complete += json::accept(line) ? 1 : 0;
  EXPECT_GE(complete + 1, lines.size());
  EXPECT_THAT(ids(), SizeIs(200 - complete));
}

TEST_P(Follow, RefusesADataSelectionThatDoesNotExist) {
  followAnUnknownDataSelection();
}

class ListFollow : public EventctlAnywhere {};

TEST_P(ListFollow, PrintsWhatOthersAddAndLeavesItInTheQueue) {
  addDataSelection(4);
  add("before");
  Program follower(at({"list", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("before"));
  add("elsewhere", 4);
  for (const char* const server : {"one", "two"}) {
    add(server);
    ASSERT_TRUE(follower.waitForOutput("server:" + std::string(server)));
  }
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(3));
  EXPECT_THAT(ids(), ElementsAre(1, 2, 3));
}

TEST_P(ListFollow, BeginsAfterAnIdAndEndsAtItsLimit) {
  add("one");
  add("two");
  Program follower(at({"list", "--follow", "--json", "--after", "1", "--limit", "2"}));
  ASSERT_TRUE(follower.waitForOutput("two"));
  add("three");
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(2));
}

TEST_P(ListFollow, PassesOverOtherTypes) {
  add("before");
  Program follower(at({"list", "--follow", "--json", "--type", "legacy"}));
  add("passed over");
  output({"add", "legacy", "--payload", "wanted"});
  ASSERT_TRUE(follower.waitForOutput("wanted"));
  follower.signal(SIGINT);
  EXPECT_THAT(jsonLines(follower.wait().out), SizeIs(1));
}

TEST_P(ListFollow, EndsWhenItsReaderGoesWhileItWaits) {
  add("node1");
  Program follower(at({"list", "--follow"}));
  ASSERT_TRUE(follower.waitForOutput("node1"));
  follower.closeOutput();
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "eventctl: the reader of standard output has gone\n");
}

EVENTCTL_ANYWHERE(Follow);
EVENTCTL_ANYWHERE(ListFollow);

}  // namespace
}  // namespace EventSystemTest
