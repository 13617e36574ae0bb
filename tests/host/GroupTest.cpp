#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

constexpr int kThreads = 16;

class Group : public HostTest {
 protected:
  Group() {
    useDurability("group");
    startWithTables();
    EXPECT_EQ(add(1000000), 0);
    EXPECT_EQ(host().waitDurable(), 0);
  }

  static int add(long id) { return open("events").addRecord(eventRecord(id).c_str(), nullptr, 0); }
};

TEST_F(Group, ThreadsShareFlushes) {
  constexpr int kRounds = 50;
  const int before = FaultVfs::walFlushes();
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (int round = 0; round < kRounds; ++round) {
        if (add(1 + thread * kRounds + round) != 0) ++failures;
        if (host().waitDurable() != 0) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(keysOf("events").size(), 1U + kThreads * kRounds);
  EXPECT_LT(FaultVfs::walFlushes() - before, kThreads * kRounds / 2);
}

TEST_F(Group, AWriteMadeDuringAFlushWaitsForTheNextOne) {
  const int before = FaultVfs::walFlushes();
  ASSERT_EQ(add(1), 0);
  FaultVfs::holdFlushes();
  std::thread first([&] { EXPECT_EQ(host().waitDurable(), 0); });
  FaultVfs::waitForHeldFlush();
  // The flush has begun: these are not in it.
  std::atomic<int> added{0};
  std::atomic<int> durable{0};
  std::vector<std::thread> others;
  for (int thread = 0; thread < kThreads; ++thread) {
    others.emplace_back([&, thread] {
      EXPECT_EQ(add(2 + thread), 0) << "calls go on while a flush runs";
      ++added;
      EXPECT_EQ(host().waitDurable(), 0);
      ++durable;
    });
  }
  while (added < kThreads) std::this_thread::yield();
  EXPECT_EQ(durable, 0);
  FaultVfs::letFlushesGo();
  first.join();
  for (std::thread& thread : others) thread.join();
  const int flushes = FaultVfs::walFlushes() - before;
  EXPECT_GE(flushes, 2);
  EXPECT_LE(flushes, 3) << "one of the others may have begun to wait later than the rest";
}

TEST_F(Group, AFailedFlushIsToldToEveryoneWhoWaitedForIt) {
  std::atomic<int> told{0};
  std::atomic<int> waiting{0};
  ASSERT_EQ(add(1), 0);
  for (long id = 2; id < 2 + kThreads; ++id) ASSERT_EQ(add(id), 0);
  FaultVfs::failFlush(1);
  FaultVfs::holdFlushes();
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&] {
      ++waiting;
      if (host().waitDurable() != 0) ++told;
    });
  }
  FaultVfs::waitForHeldFlush();
  while (waiting < kThreads) std::this_thread::yield();
  // A read takes its turn after those that are about to wait.
  for (int turn = 0; turn < 100; ++turn) {
    EXPECT_EQ(open("events").readRecord("1"), 0);
    std::this_thread::yield();
  }
  FaultVfs::letFlushesGo();
  for (std::thread& thread : threads) thread.join();
  EXPECT_GE(told, 1);
  EXPECT_EQ(host().waitDurable(), 0) << "everything is there and flushed again";
  EXPECT_EQ(add(100), 0);
  EXPECT_EQ(host().waitDurable(), 0);
  start();
  EXPECT_EQ(keysOf("events").size(), 2U + kThreads + 1);
}

TEST_F(Group, ThreadsWalkWhileOthersWriteAndDelete) {
  for (long id = 1; id <= 200; ++id) ASSERT_EQ(add(id), 0);
  std::atomic<bool> stop{false};
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int walker = 0; walker < 4; ++walker) {
    threads.emplace_back([&] {
      while (!stop) {
        // A row is replaced by its successor in one order: at least 200 are there at any time.
        if (keysOf("events").size() < 201) ++failures;
      }
    });
  }
  for (long id = 201; id <= 1000; ++id) {
    if (add(id) != 0 || open("events").deleteRecord(std::to_string(id - 200).c_str()) != 0) {
      ++failures;
    }
    if (id % 100 == 0 && host().waitDurable() != 0) ++failures;
  }
  stop = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(keysOf("events").size(), 201U);
}

}  // namespace
}  // namespace EventSystemTest
