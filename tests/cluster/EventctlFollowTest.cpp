// eventctl consume --follow in cluster mode.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <set>

#include "tests/cluster/ClusterHome.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ClusterFollow : public ClusterHome {
 protected:
  ClusterFollow() { joinCluster(m_etcd); }

  static bool waitForError(Program& program, const std::string& text) {
    return program.waitUntil(
        [&](const Outcome& outcome) { return outcome.err.find(text) != std::string::npos; });
  }

  EtcdCluster m_etcd{1};
};

TEST_F(ClusterFollow, PrintsWhatOtherProcessesAddAndLeavesThemTheDatabase) {
  add("before");
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("before"));
  // This writer has the database of the same home all the time.
  Program writer(at({"import", "-", "--acknowledge"}), {.keepInputOpen = true});
  for (const char* const server : {"one", "two", "three"}) {
    writer.write(serverStatus(server) + "\n");
    ASSERT_TRUE(follower.waitForOutput("server:" + std::string(server)));
  }
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(4));
  EXPECT_EQ(outcome.err, "");
  writer.closeInput();
  EXPECT_EQ(writer.wait().status, 0);
  EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(ClusterFollow, TakesWhatTheDatabaseHeldOnceOnly) {
  leaveCluster();
  add("kept in the database");
  joinCluster(m_etcd);
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("kept in the database"));
  add("later");
  ASSERT_TRUE(follower.waitForOutput("later"));
  follower.signal(SIGINT);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(2));
}

TEST_F(ClusterFollow, SaysThatTheServiceIsAwayAndGoesOnWhenItIsBack) {
  add("before");
  Program follower(at({"consume", "--follow", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("before"));
  m_etcd.kill(0);
  ASSERT_TRUE(waitForError(follower, m_etcd.endpoint(0)));
  ASSERT_TRUE(waitForError(follower, "; trying again"));
  m_etcd.start(0);
  m_etcd.waitUntilServing();
  ASSERT_TRUE(waitForError(follower, "the cluster service answers again"));
  add("after");
  ASSERT_TRUE(follower.waitForOutput("after"));
  follower.signal(SIGTERM);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(2));
}

// The pipe takes 64 KiB, so the follower waits in the middle of printing when the service goes.
TEST_F(ClusterFollow, PrintsNoEventTwiceWhenTheServiceGoesBetweenPrintingAndDeleting) {
  constexpr std::size_t kEvents = 200;
  std::string events;
  for (std::size_t i = 0; i < kEvents; ++i) events += activity(std::string(900, 'x')) + "\n";
  output({"import", "-"}, {.input = events});
  Program follower(at({"consume", "--follow", "--json"}));
  std::size_t before = kEvents;
  for (std::size_t left = ids().size(); left == kEvents || left != before; left = ids().size()) {
    before = left;
  }
  m_etcd.kill(0);
  ASSERT_TRUE(waitForError(follower, "; trying again"));
  m_etcd.start(0);
  m_etcd.waitUntilServing();
  ASSERT_TRUE(follower.waitUntil(
      [](const Outcome& outcome) { return linesOf(outcome.out).size() >= kEvents; }));
  follower.signal(SIGTERM);
  std::set<unsigned long> printed;
  for (const json& event : jsonLines(follower.wait().out)) {
    EXPECT_TRUE(printed.insert(event["id"].get<unsigned long>()).second) << event["id"];
  }
  EXPECT_THAT(printed, SizeIs(kEvents));
}

TEST_F(ClusterFollow, EndsWhileTheServiceIsAway) {
  add("before");
  Program follower(at({"consume", "--follow"}));
  ASSERT_TRUE(follower.waitForOutput("before"));
  m_etcd.kill(0);
  ASSERT_TRUE(waitForError(follower, "; trying again"));
  follower.signal(SIGTERM);
  EXPECT_EQ(follower.wait().status, 0);
}

TEST_F(ClusterFollow, EndsWhenItsReaderGoesWhileItWaits) {
  followUntilItsReaderGoes();
}

TEST_F(ClusterFollow, KeepsAndPrintsEachEventOnce) {
  followAndKeep();
}

TEST_F(ClusterFollow, EndsAtItsLimit) {
  addDataSelection(4);
  followToItsLimit(4);
}

TEST_F(ClusterFollow, RefusesADataSelectionThatDoesNotExist) {
  followAnUnknownDataSelection();
}

}  // namespace
}  // namespace EventSystemTest
