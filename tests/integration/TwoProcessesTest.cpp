// Processes that want the same database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/integration/QueueHome.h"
#include "tests/support/ForkedProcess.h"

namespace EventSystemTest {
namespace {

using testing::HasSubstr;

TEST(TwoProcesses, CannotWriteTheSameDatabase) {
  const QueueHome home;
  ForkedProcess owner([&home](int output) {
    RunningQueue queue(home);
    const unsigned long id = queue.add();
    tellParent(output, &id, sizeof id);
    pause();
  });
  unsigned long id = 0;
  ASSERT_EQ(owner.read(&id, sizeof id), sizeof id);
  EXPECT_EQ(id, 1U);
  try {
    RunningQueue second(home);
    FAIL() << "the second writer was let in";
  } catch (const EventSystemHost::DatabaseBusy& busy) {
    EXPECT_THAT(busy.what(), HasSubstr(home.database().string()));
    EXPECT_THAT(busy.what(), HasSubstr(std::to_string(owner.pid())));
  }
  owner.kill();
  owner.wait();
  RunningQueue successor(home);
  EXPECT_EQ(successor.add(), 2U);
}

}  // namespace
}  // namespace EventSystemTest
