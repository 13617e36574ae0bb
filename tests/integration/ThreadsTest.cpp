// Many threads of one process on one queue, meant for ThreadSanitizer.

#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "tests/integration/QueueHome.h"

namespace EventSystemTest {
namespace {

TEST(Threads, OfOneProcessGetDistinctIdsAndLoseNothing) {
  const QueueHome home;
  RunningQueue queue(home);
  addDataSelection(7);
  constexpr int kThreads = 16;
  constexpr int kEvents = 40;
  std::vector<std::vector<unsigned long>> given(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&queue, &mine = given[static_cast<size_t>(t)], t] {
      const unsigned int dsid = t % 2 == 0 ? 0 : 7;
      for (int i = 0; i < kEvents; ++i) {
        mine.push_back(queue.add(dsid));
        queue.next(0, dsid);
        if (i % 4 == 3) {
          queue.manager().deleteEvent(mine.back(), dsid);
          mine.pop_back();
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const int parity : {0, 1}) {
    std::set<unsigned long> expected;
    for (size_t t = static_cast<size_t>(parity); t < kThreads; t += 2) {
      expected.insert(given[t].begin(), given[t].end());
    }
    const std::vector<unsigned long> found = queue.ids(parity == 0 ? 0 : 7);
    EXPECT_EQ(found, std::vector<unsigned long>(expected.begin(), expected.end()));
    EXPECT_EQ(found.size(), kThreads / 2U * kEvents * 3 / 4);
  }
}

}  // namespace
}  // namespace EventSystemTest
