// The checks of eventctl consume --follow that EventctlHome has for tests of several stores.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "tests/e2e/EventctlHome.h"

namespace EventSystemTest {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

void EventctlHome::followAndKeep() const {
  add("one");
  Program follower(at({"consume", "--follow", "--keep", "--json"}));
  ASSERT_TRUE(follower.waitForOutput("one"));
  add("two");
  ASSERT_TRUE(follower.waitForOutput("two"));
  follower.signal(SIGTERM);
  EXPECT_THAT(jsonLines(follower.wait().out), SizeIs(2));
  EXPECT_THAT(ids(), ElementsAre(1, 2));
}

void EventctlHome::followToItsLimit(unsigned int dsid) const {
  Program follower(
      at({"consume", "--follow", "--limit", "2", "--json", "--dsid", std::to_string(dsid)}));
  for (const char* const server : {"one", "two", "three"}) add(server, dsid);
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(jsonLines(outcome.out), SizeIs(2));
  EXPECT_THAT(ids(dsid), ElementsAre(3));
}

void EventctlHome::followUntilItsReaderGoes() const {
  add("node1");
  Program follower(at({"consume", "--follow"}));
  ASSERT_TRUE(follower.waitForOutput("node1"));
  follower.closeOutput();
  const Outcome outcome = follower.wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "eventctl: the reader of standard output has gone\n");
}

void EventctlHome::followAnUnknownDataSelection() const {
  const Outcome outcome = run({"consume", "--follow", "--dsid", "9"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("data selection 9 does not exist"));
}

}  // namespace EventSystemTest
