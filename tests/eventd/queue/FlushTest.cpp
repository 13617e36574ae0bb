// Flushes that take their time, and flushes that fail.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EventSystem/ResultCode.h"
#include "tests/eventd/queue/Inbox.h"
#include "tests/eventd/queue/ServiceFixture.h"
#include "tests/host/FaultVfs.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::chrono::milliseconds kAMoment(30);
constexpr int kForEver = 1000000000;

class Flush : public ServiceTest {
 protected:
  Flush() { FaultVfs::install(); }
  ~Flush() override {
    stop();
    FaultVfs::install();
  }

  template <class Answer>
  using Pending = std::future<Answer>;

  Pending<StoreResult> storeLater() {
    auto promise = std::make_shared<std::promise<StoreResult>>();
    service().store(eventsOf({"a"}), 0, std::nullopt,
                    [promise](StoreResult result) { promise->set_value(std::move(result)); });
    return promise->get_future();
  }
  Pending<ReadResult> readLater() {
    auto promise = std::make_shared<std::promise<ReadResult>>();
    service().read({0, 1, 100, {}, {}},
                   [promise](ReadResult result) { promise->set_value(std::move(result)); });
    return promise->get_future();
  }
  template <class Answer>
  static bool isOpen(Pending<Answer>& pending) {
    return pending.wait_for(kAMoment) == std::future_status::timeout;
  }
  template <class Answer>
  static Answer resultOf(Pending<Answer>& pending) {
    if (pending.wait_for(kPatience) == std::future_status::ready) return pending.get();
    ADD_FAILURE() << "no answer";
    return {};
  }
};

TEST_F(Flush, ComesBeforeAnAnswerAndBeforeAnythingIsShown) {
  start();
  Inbox inbox;
  const auto subscription = inbox.subscribe(service(), 0);
  storeOne();
  ASSERT_TRUE(inbox.has(1));
  FaultVfs::holdFlushes();
  auto stored = storeLater();
  FaultVfs::waitForHeldFlush();
  auto seen = readLater();  // finds the event of which nobody may know
  auto storedMeanwhile = storeLater();
  EXPECT_TRUE(eventually([] { return keysOf("events").size() == 3; }))
      << "the queue thread goes on";
  EXPECT_TRUE(isOpen(stored));
  EXPECT_TRUE(isOpen(seen));
  EXPECT_TRUE(isOpen(storedMeanwhile));
  EXPECT_THAT(inbox.ids(), ElementsAre(1));
  FaultVfs::letFlushesGo();
  EXPECT_THAT(resultOf(stored).ids, ElementsAre(2));
  EXPECT_THAT(resultOf(storedMeanwhile).ids, ElementsAre(3));
  EXPECT_GE(resultOf(seen).last, 2u);
  ASSERT_TRUE(inbox.has(3));
  EXPECT_THAT(inbox.ids(), ElementsAre(1, 2, 3));
}

TEST_F(Flush, IsSharedByAllWhoWroteDuringTheOneBefore) {
  start();
  const auto before = service().counters().flushes;
  FaultVfs::holdFlushes();
  auto first = storeLater();
  FaultVfs::waitForHeldFlush();
  std::vector<Pending<StoreResult>> stores;
  for (int i = 0; i < 16; ++i) stores.push_back(storeLater());
  EXPECT_TRUE(eventually([] { return keysOf("events").size() == 17; }));
  FaultVfs::letFlushesGo();
  EXPECT_EQ(resultOf(first).ids, Ids{1});
  for (unsigned long i = 0; i < 16; ++i) EXPECT_EQ(resultOf(stores[i]).ids, Ids{i + 2});
  EXPECT_LE(service().counters().flushes - before, 3u)
      << "the last may come too late for the second";
}

TEST_F(Flush, IsNotWaitedForByWhoReadsOldEvents) {
  start();
  store(manyEvents(3));
  const auto before = service().counters().flushes;
  EXPECT_EQ(idsAfter(0).size(), 3u);
  EXPECT_EQ(idsAfter(1).size(), 2u);
  EXPECT_EQ(service().counters().flushes, before);
}

TEST_F(Flush, ThatFailsIsToldToAllThatWait) {
  start();
  storeOne();
  FaultVfs::failFlush(1, kForEver);
  std::vector<Pending<StoreResult>> stores;
  for (int i = 0; i < 8; ++i) stores.push_back(storeLater());
  int unsettled = 0;
  for (auto& each : stores) {
    const StoreResult result = resultOf(each);
    EXPECT_EQ(result.code, EventSystem::kStoreFailure);
    EXPECT_THAT(result.ids, IsEmpty());
    EXPECT_NE(result.problem, "");
    unsettled += result.unsettled ? 1 : 0;
  }
  EXPECT_GE(unsettled, 1) << "one was stored before the flush";
  EXPECT_FALSE(readiness().ready());
  EXPECT_NE(readiness().why, "");
  EXPECT_GE(service().counters().failedFlushes, 1u);
  EXPECT_EQ(service().counters().written.at(EventSystem::kCapacityEvent), 1u);
}

// A file without a name takes everything that is written to it, and is gone with its process.
TEST_F(Flush, ToADatabaseThatWasRemovedFails) {
  start();
  storeOne();
  const auto elsewhere = home() / "moved.db";
  std::filesystem::rename(database(), elsewhere);
  auto lost = storeLater();
  EXPECT_EQ(resultOf(lost).code, EventSystem::kStoreFailure);
  EXPECT_FALSE(readiness().ready());
  std::filesystem::rename(elsewhere, database());
  EXPECT_TRUE(eventually([&] { return readiness().ready(); }));
  auto kept = storeLater();
  EXPECT_EQ(resultOf(kept).code, 0);
}

TEST_F(Flush, ToALogThatWasRemovedFails) {
  start();
  storeOne();
  const std::filesystem::path log = database().string() + "-wal";
  const auto elsewhere = home() / "moved-wal";
  std::filesystem::rename(log, elsewhere);
  const StoreResult lost = store(eventsOf({"a"}));
  EXPECT_EQ(lost.code, EventSystem::kStoreFailure);
  EXPECT_THAT(lost.problem, HasSubstr(log.string() + ": the file was removed"));
  EXPECT_FALSE(readiness().ready());
  std::filesystem::rename(elsewhere, log);
  EXPECT_TRUE(eventually([&] { return readiness().ready(); }));
  EXPECT_EQ(store(eventsOf({"b"})).code, 0);
}

TEST_F(Flush, ToALogThatWasRemovedLosesNothingWhenTheServiceIsStopped) {
  start();
  const unsigned long id = storeOne();
  std::filesystem::remove(database().string() + "-wal");
  EXPECT_EQ(store(eventsOf({"a"})).code, EventSystem::kStoreFailure);
  start();
  EXPECT_EQ(idsAfter(0).front(), id);
}

TEST_F(Flush, ThatFailedOnceLeavesNobodyBehind) {
  for (const char* const durability : {"group", "relaxed"}) {
    useDurability(durability);
    start();
    Inbox inbox;
    const auto subscription = inbox.subscribe(service(), 0);
    const unsigned long first = storeOne();
    // From here on nobody but the producer waits for a flush.
    ASSERT_TRUE(eventually([&] {
      const Ids seen = inbox.ids();
      return !seen.empty() && seen.back() == first;
    }));
    FaultVfs::failFlush(1);
    const StoreResult failed = store(manyEvents(1));  // more may take more than one flush
    EXPECT_EQ(failed.code, EventSystem::kStoreFailure)
        << durability << ", flushes failed: " << service().counters().failedFlushes;
    EXPECT_THAT(failed.problem, HasSubstr("a flush failed"));
    EXPECT_TRUE(eventually([&] { return readiness().ready(); })) << readiness().why;
    const unsigned long last = storeOne();
    EXPECT_GT(last, first);
    const Ids all = idsAfter(0);
    EXPECT_EQ(all.back(), last);
    EXPECT_TRUE(eventually([&] { return inbox.ids().size() >= all.size(); }));
    EXPECT_EQ(inbox.ids(), all) << "who follows the queue sees what is there, once, in order";
  }
}

TEST_F(Flush, ThatLostEventsStopsTheServiceUntilARestart) {
  start();
  storeOne();
  FaultVfs::loseUnflushed(true);
  FaultVfs::failFlush(1);
  EXPECT_EQ(store(manyEvents(1)).code, EventSystem::kStoreFailure);
  FaultVfs::loseUnflushed(false);
  EXPECT_TRUE(eventually([&] { return store(manyEvents(1)).code != 0; }));
  EXPECT_FALSE(readiness().ready());
  EXPECT_EQ(read({0, 1, 100, {}, {}}).code, EventSystem::kStoreFailure);
  start();
  EXPECT_TRUE(readiness().ready());
  EXPECT_THAT(idsAfter(0), ElementsAre(1));
  EXPECT_GT(storeOne(), 1u);
}

// A long request is shown to readers, and flushed, while it is still being stored.
TEST_F(Flush, ThatFailsDuringALongRequestAcknowledgesNothingThatIsNotThere) {
  constexpr std::size_t kEvents = 900;
  for (const bool lose : {false, true}) {
    for (const int flush : {1, 2, 3}) {
      start();
      const unsigned long first = storeOne();
      FaultVfs::loseUnflushed(lose);
      FaultVfs::failFlush(flush);
      const StoreResult result = store(manyEvents(kEvents));
      const bool hasFailed = service().counters().failedFlushes > 0;
      FaultVfs::failFlush(0);
      FaultVfs::loseUnflushed(false);
      start();
      Ids kept = idsAfter(first - 1);
      ASSERT_FALSE(kept.empty());
      EXPECT_EQ(kept.front(), first) << "it was acknowledged";
      kept.erase(kept.begin());
      EXPECT_TRUE(hasFailed || flush > 1);
      if (result.code == 0) {
        EXPECT_EQ(result.ids.size(), kEvents);
      }
      if (result.unsettled) {
        EXPECT_THAT(result.ids, IsEmpty());
      }
      // Those that are named are there; of those that are not, nobody was told.
      ASSERT_GE(kept.size(), result.ids.size()) << flush << (lose ? ", lost" : "");
      kept.resize(result.ids.size());
      EXPECT_EQ(kept, result.ids);
    }
  }
}

TEST_F(Flush, ThatFailsInStrictModeFailsItsEventOnly) {
  useDurability("strict");
  start();
  storeOne();
  FaultVfs::failFlush(1);
  const StoreResult failed = store(eventsOf({"a"}));
  EXPECT_EQ(failed.code, EventSystem::kStoreFailure);
  EXPECT_FALSE(failed.unsettled) << "it is not in the queue";
  const unsigned long id = storeOne();
  EXPECT_THAT(idsAfter(0), ElementsAre(1, id));
  EXPECT_TRUE(readiness().ready());
}

// Some of them are of the key alone, which the library does not take for a failure of the event.
TEST_F(Flush, ThatFailsDoesNotPartAnEventFromItsKey) {
  useDurability("strict");
  const auto storeWithKey = [&] {
    return store(eventsOf({"a", "b"}), 0, EventApps::IdempotencyKey{"key", "body"});
  };
  int failures = 0;
  for (int flush = 1; flush <= 6; ++flush) {
    start();
    FaultVfs::failFlush(flush);
    if (storeWithKey().code != 0) ++failures;
    FaultVfs::failFlush(0);
    if (flush % 2 == 0) start();
    for (int again = 0; again < 2; ++again) {
      const StoreResult result = storeWithKey();
      EXPECT_EQ(result.code, 0) << result.problem;
      EXPECT_EQ(result.ids.size(), 2u);
      EXPECT_EQ(idsAfter(0), result.ids) << flush;
      start();
    }
    stop();
    for (const auto& entry : std::filesystem::directory_iterator(home())) {
      std::filesystem::remove_all(entry.path());
    }
  }
  EXPECT_GE(failures, 2);
}

TEST_F(Flush, ThatFailsIsNoRefusalOfADataSelection) {
  start();
  FaultVfs::failFlush(1);
  const EventApps::ChangeResult failed = addDataSelection(5);
  EXPECT_NE(failed.problem, "");
  EXPECT_EQ(failed.refused, std::nullopt);
}

TEST_F(Flush, ThatHangsIsToldToWhoAsksWhetherTheQueuesCanBeUsed) {
  for (const char* const durability : {"strict", "group"}) {
    useDurability(durability);
    limits.lookPatience = kAMoment;
    start();
    ASSERT_TRUE(eventually([&] { return readiness().ready(); }));
    FaultVfs::holdFlushes();
    EXPECT_TRUE(eventually([&] { return !readiness().reads; })) << "nobody else asks for anything";
    EXPECT_THAT(readiness().why, HasSubstr("has not ended within"));
    FaultVfs::letFlushesGo();
    EXPECT_TRUE(eventually([&] { return readiness().ready(); })) << durability;
  }
}

// The one thread writes and flushes in strict mode; in group mode they are two.
TEST_F(Flush, ThatHangsIsNoProgress) {
  for (const char* const durability : {"strict", "group"}) {
    useDurability(durability);
    start();
    storeOne();
    EXPECT_TRUE(eventually([&] { return service().makesProgress(); }));
    FaultVfs::holdFlushes();
    auto stored = storeLater();
    FaultVfs::waitForHeldFlush();
    EXPECT_TRUE(eventually([&] { return !service().makesProgress(); })) << durability;
    EXPECT_FALSE(service().makesProgress());
    FaultVfs::letFlushesGo();
    EXPECT_EQ(resultOf(stored).code, 0);
    EXPECT_TRUE(eventually([&] { return service().makesProgress(); })) << durability;
  }
}

TEST_F(Flush, ThatFailsIsFoundByWhoAsksWithoutATrafficOfEvents) {
  start();
  ASSERT_TRUE(readiness().ready());
  FaultVfs::failFlush(1, kForEver);
  EXPECT_FALSE(readiness().ready());
  FaultVfs::failFlush(0);
  EXPECT_TRUE(eventually([&] { return readiness().ready(); }));
}

TEST_F(Flush, IsMeasured) {
  class Measures : public EventApps::ServiceObserver {
   public:
    void onOperation(std::string_view name, double seconds) override {
      const std::lock_guard lock(mutex);
      operations.emplace_back(name);
      EXPECT_GE(seconds, 0);
    }
    void onFlush(double seconds) override {
      const std::lock_guard lock(mutex);
      ++flushes;
      EXPECT_GE(seconds, 0);
    }
    std::mutex mutex;
    std::vector<std::string> operations;
    unsigned long flushes = 0;
  };
  Measures measures;
  observer = &measures;
  start();
  storeOne();
  idsAfter(0);
  remove(1);
  const auto flushes = service().counters().flushes;
  stop();
  EXPECT_THAT(measures.operations, testing::UnorderedElementsAre("store", "read", "remove"));
  EXPECT_GE(measures.flushes, flushes);
}

}  // namespace
}  // namespace EventSystemTest
