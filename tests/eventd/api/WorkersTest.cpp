// The threads that do what may take its time.

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

#include "apps/eventd/Workers.h"

namespace EventSystemTest {
namespace {

using EventApps::Workers;

TEST(WorkerThreads, OutliveATaskThatFails) {
  std::atomic<int> done = 0;
  Workers workers(1, 10);
  workers.post([] { throw std::runtime_error("no memory, say"); });
  workers.post([&] { ++done; });
  workers.stop();
  EXPECT_EQ(done, 1);
}

}  // namespace
}  // namespace EventSystemTest
