// A short day of many producers and consumers on one eventd.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/eventd/load/Load.h"
#include "tests/support/TempDir.h"

namespace EventSystemTest {
namespace {

void expectBalanced(const LoadResult& result) {
  EXPECT_GT(result.balance.acknowledged, 0U);
  EXPECT_EQ(result.balance.consumed, result.balance.acknowledged);
  EXPECT_EQ(result.balance.lost, 0U);
  EXPECT_EQ(result.balance.doubled, 0U);
  EXPECT_EQ(result.balance.unknown, 0U);
  EXPECT_EQ(result.left, 0U);
  EXPECT_EQ(result.balance.wrong, std::vector<std::string>());
}

class EventdLoad : public testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(m_home.path() / "eventd.ini") << "[limits]\nrequests_per_second = 0\n";
    m_daemon.start();
  }

  LoadPlan plan() const {
    LoadPlan plan;
    plan.name = "day";
    return plan;
  }

  TempDir m_home;
  DaemonProcess m_daemon{EVENTD_PROGRAM, m_home.path()};
};

TEST_F(EventdLoad, EveryAcknowledgedEventIsReadOnceAndNoneTwice) {
  expectBalanced(Load(m_daemon, plan()).run());
  EXPECT_EQ(m_daemon.stop(), 0);
}

TEST_F(EventdLoad, NothingIsLostOrDoubledWhenTheDaemonIsKilledUnderIt) {
  using std::chrono::milliseconds;
  LoadPlan killed = plan();
  killed.kills = {milliseconds(300), milliseconds(900), milliseconds(1500)};
  const LoadResult result = Load(m_daemon, killed).run();
  expectBalanced(result);
  EXPECT_GT(result.retried, 0U);
  EXPECT_EQ(m_daemon.stop(), 0);
}

}  // namespace
}  // namespace EventSystemTest
