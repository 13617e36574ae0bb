// What one call costs at the disk, and what a caller meets when the disk is full.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/FaultVfs.h"
#include "tests/integration/QueueHome.h"

namespace EventSystemTest {
namespace {

using testing::ElementsAre;

class Disk : public testing::Test {
 protected:
  Disk() {
    FaultVfs::install();
    m_home.write("host.ini", "[log]\nlevel = off\n");
  }

  int flushes() const { return FaultVfs::walFlushes() + FaultVfs::databaseFlushes(); }

  QueueHome m_home;
};

TEST_F(Disk, IsFlushedOnceForEachNewEvent) {
  RunningQueue queue(m_home);
  queue.add();
  const int before = flushes();
  for (int i = 0; i < 10; ++i) queue.add();
  EXPECT_EQ(flushes() - before, 10);
}

TEST_F(Disk, IsFlushedOnceForEachNewEventOfADataSelection) {
  RunningQueue queue(m_home);
  addDataSelection(4);
  queue.add(4);
  const int before = flushes();
  for (int i = 0; i < 10; ++i) queue.add(4);
  EXPECT_EQ(flushes() - before, 10);
}

TEST_F(Disk, IsFlushedOnceForEachDeletedEventAndNeverForReading) {
  RunningQueue queue(m_home);
  for (int i = 0; i < 10; ++i) queue.add();
  int before = flushes();
  queue.ids();
  EXPECT_EQ(flushes() - before, 0);
  before = flushes();
  for (unsigned long id = 1; id <= 10; ++id) queue.manager().deleteEvent(id, 0);
  EXPECT_EQ(flushes() - before, 10);
}

TEST_F(Disk, ThatIsFullRefusesEventsLeavesTheQueueReadableAndTakesThemAgainLater) {
  RunningQueue queue(m_home);
  for (int i = 0; i < 5; ++i) queue.add();

  FaultVfs::setDiskFull(true);
  int result = 0;
  unsigned long accepted = 5;
  for (int i = 0; i < 1000 && result == 0; ++i) {
    if (const unsigned long id = queue.add(0, &result)) accepted = id;
  }
  EXPECT_EQ(result, 4);
  EXPECT_EQ(queue.ids().size(), accepted);

  FaultVfs::setDiskFull(false);
  const unsigned long id = queue.add(0, &result);
  EXPECT_EQ(result, 0);
  EXPECT_GT(id, accepted);
  EXPECT_EQ(queue.ids().back(), id);
}

TEST_F(Disk, ThatFailsAFlushIsReportedAndTheQueueGoesOn) {
  unsigned long after = 0;
  {
    RunningQueue queue(m_home);
    queue.add();
    FaultVfs::failFlush(1);
    int result = 0;
    EXPECT_EQ(queue.add(0, &result), 0U);
    EXPECT_EQ(result, 4);
    after = queue.add();
    EXPECT_GT(after, 1U);
    EXPECT_THAT(queue.ids(), ElementsAre(1, after));
  }
  RunningQueue queue(m_home);
  EXPECT_THAT(queue.ids(), ElementsAre(1, after)) << "a refused event must not appear later";
}

}  // namespace
}  // namespace EventSystemTest
