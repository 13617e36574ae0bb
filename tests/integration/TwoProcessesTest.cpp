// Processes that want the same database.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>

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

// A process that uses the queue and is killed at its end.
void liveAndDie(const QueueHome& home, const std::function<void(RunningQueue&)>& use) {
  ForkedProcess life([&](int output) {
    RunningQueue queue(home);
    use(queue);
    tellParent(output, "x", 1);
    pause();
  });
  char done = 0;
  ASSERT_EQ(life.read(&done, 1), 1U);
  life.kill();
  life.wait();
}

TEST(TwoProcesses, ThatAreKilledOneAfterTheOtherLetNoIdOfADataSelectionBeGivenAgain) {
  const QueueHome home;
  liveAndDie(home, [](RunningQueue& queue) {
    addDataSelection(3);
    for (int i = 0; i < 3; ++i) queue.manager().deleteEvent(queue.add(3), 3);
  });
  liveAndDie(home, [](RunningQueue&) {});
  RunningQueue successor(home);
  EXPECT_EQ(successor.add(3), 4U);
}

}  // namespace
}  // namespace EventSystemTest
