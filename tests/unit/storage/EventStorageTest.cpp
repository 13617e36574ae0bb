// The id cache of the global store's base and its walk over the queue.

#include "EventSystem/EventStorage.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/TestStores.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventStorageTest : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    store = std::make_unique<TestEventStorage>();
    host().clearCalls();
  }
  void TearDown() override {
    store->reclaim();
    store.reset();
    FakeHostTest::TearDown();
  }

  void keep(std::initializer_list<unsigned long> ids) {
    for (const unsigned long id : ids) store->keep(id, now());
  }

  std::unique_ptr<TestEventStorage> store;
};

TEST_F(EventStorageTest, StartsEmptyWithTheDefaultLimits) {
  EXPECT_EQ(0, store->m_ageLimit);
  EXPECT_EQ(50000, store->m_countLimit);
  EXPECT_EQ(0u, store->m_maxId);
  EXPECT_THAT(store->m_idCache, IsEmpty());
}

TEST_F(EventStorageTest, FindsTheSmallestCachedIdAboveTheGivenOne) {
  keep({3, 5, 9});
  EXPECT_EQ(3u, store->getNextId(0));
  EXPECT_EQ(5u, store->getNextId(3));
  EXPECT_EQ(5u, store->getNextId(4));
  EXPECT_EQ(9u, store->getNextId(5));
  EXPECT_EQ(0u, store->getNextId(9));
  EXPECT_EQ(0u, store->getNextId(10));
}

TEST_F(EventStorageTest, AnEmptyCacheHasNoNextId) {
  store->m_maxId = 100;
  EXPECT_EQ(0u, store->getNextId(0));
}

TEST_F(EventStorageTest, GivesNoIdOnceTheHighestOneIsReachedEvenIfTheCacheHoldsMore) {
  store->addIdToCache(3);
  store->addIdToCache(9);
  store->m_maxId = 5;
  EXPECT_EQ(0u, store->getNextId(5));
  EXPECT_EQ(9u, store->getNextId(4));
}

TEST_F(EventStorageTest, FindsIdsAtTheUpperEndOfTheRange) {
  const unsigned long highest = ~0ul;
  store->addIdToCache(highest);
  store->m_maxId = highest;
  EXPECT_EQ(highest, store->getNextId(highest - 1));
  EXPECT_EQ(0u, store->getNextId(highest));
}

TEST_F(EventStorageTest, CachingAnIdTwiceKeepsItOnceAndLogsNothing) {
  store->addIdToCache(4);
  store->addIdToCache(4);
  EXPECT_THAT(store->m_idCache, ElementsAre(4));
  EXPECT_THAT(host().calls(), IsEmpty());
}

TEST_F(EventStorageTest, RemovesCachedIdsAndIgnoresUnknownOnesWithoutALogLine) {
  keep({3, 5});
  store->removeIdFromCache(3);
  store->removeIdFromCache(77);
  EXPECT_THAT(store->m_idCache, ElementsAre(5));
  EXPECT_THAT(host().calls(), IsEmpty());
}

TEST_F(EventStorageTest, SetsTheIdOfAnEventAndAcceptsNull) {
  const std::unique_ptr<Event> event = newCapacityEvent();
  store->assignEventId(event.get(), 17);
  EXPECT_EQ(17u, event->getId());
  store->assignEventId(nullptr, 18);
}

TEST_F(EventStorageTest, WalksTheQueueInIdOrderAndEndsWithNull) {
  keep({9, 3, 5});
  std::vector<unsigned long> seen;
  unsigned long after = 0;
  for (;;) {
    Event* event = store->handedOut.empty() ? nullptr : store->handedOut.back();
    ASSERT_EQ(0, store->getNextEvent(after, &event));
    if (event == nullptr) break;
    seen.push_back(after = event->getId());
  }
  EXPECT_THAT(seen, ElementsAre(3, 5, 9));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(EventStorageTest, PassesOverAnUnreadableIdLogsItAndDropsItFromTheCache) {
  store->keep(3, now());
  store->keep(5, now(), 4);
  store->keep(9, now());
  Event* event = nullptr;
  EXPECT_EQ(0, store->getNextEvent(3, &event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(9u, event->getId());
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s: removing event %lu from cache.", "getNextEvent", 5ul)));
  EXPECT_THAT(store->m_idCache, ElementsAre(3, 9));
  EXPECT_THAT(store->reads, ElementsAre(5, 9));
}

TEST_F(EventStorageTest, EndsWithNullWhenNothingCanBeRead) {
  store->keep(3, now(), 4);
  store->keep(5, now(), 67);
  LiveEvent stale(1, 1);
  Event* event = &stale;
  EXPECT_EQ(0, store->getNextEvent(0, &event));
  EXPECT_EQ(nullptr, event);
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s: removing event %lu from cache.", "getNextEvent", 3ul),
                          error(4, "%s: removing event %lu from cache.", "getNextEvent", 5ul)));
  EXPECT_THAT(store->m_idCache, IsEmpty());
}

TEST_F(EventStorageTest, DoesNotReadAtTheEndOfTheQueue) {
  keep({3});
  Event* event = nullptr;
  EXPECT_EQ(0, store->getNextEvent(3, &event));
  EXPECT_EQ(nullptr, event);
  EXPECT_THAT(store->reads, IsEmpty());
}

}  // namespace
}  // namespace EventSystemTest
