#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "EventSystem/platform/ClusterAPI.h"
#include "host/cluster/ClusterService.h"
#include "host/cluster/LastCall.h"
#include "tests/cluster/EtcdCluster.h"

namespace EventSystemTest {
namespace {

using EventSystemHost::lastClusterCall;
using testing::HasSubstr;

class LastCall : public testing::Test {
 protected:
  LastCall() { EventSystemHost::startCluster(etcd.configuration()); }
  ~LastCall() override { EventSystemHost::stopCluster(); }

  static unsigned long add(const std::string& queue = "events") {
    unsigned long id = 0;
    ClusterAPI::instance().newEvent(queue, "alpha", "text", 0, id, 0);
    return id;
  }
  static unsigned int next() {
    unsigned long id = 0;
    std::string member;
    std::string text;
    return ClusterAPI::instance().getNextEvent("events", 0, id, member, text, 0);
  }

  EtcdCluster etcd{1};
};

TEST_F(LastCall, KnowsTheIdThatANewEventGot) {
  add();
  EXPECT_EQ(add(), 2U);
  EXPECT_EQ(lastClusterCall().newId, 2U);
  EXPECT_EQ(lastClusterCall().failure, "");
  EXPECT_EQ(next(), 0U);
  EXPECT_EQ(lastClusterCall().newId, 0U);
}

TEST_F(LastCall, SaysWhatFailedUntilACallSucceeds) {
  add();
  add("no queue");
  EXPECT_EQ(lastClusterCall().newId, 0U);
  EXPECT_THAT(lastClusterCall().failure, HasSubstr("the queue name has a character"));
  EXPECT_EQ(next(), 0U);
  EXPECT_EQ(lastClusterCall().failure, "");
}

TEST_F(LastCall, IsOfEachThreadByItself) {
  add();
  std::thread([] {
    EXPECT_EQ(lastClusterCall().newId, 0U);
    EXPECT_EQ(add(), 2U);
    EXPECT_EQ(lastClusterCall().newId, 2U);
  }).join();
  EXPECT_EQ(lastClusterCall().newId, 1U);
}

TEST_F(LastCall, SaysThatNoServiceIsStarted) {
  EventSystemHost::stopCluster();
  EXPECT_NE(next(), 0U);
  EXPECT_EQ(lastClusterCall().failure, "the cluster service is not started");
}

}  // namespace
}  // namespace EventSystemTest
