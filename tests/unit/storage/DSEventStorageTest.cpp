// The id caches of the data-selection store's base and its walk over one queue.

#include "EventSystem/DSEventStorage.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/TestStores.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class DSEventStorageTest : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    store = std::make_unique<TestDSEventStorage>();
    host().clearCalls();
  }

  void keep(unsigned int dsid, std::initializer_list<unsigned long> ids) {
    for (const unsigned long id : ids) {
      store->addIdToCache(id, dsid);
      store->m_maxIds[dsid] = std::max(store->m_maxIds[dsid], id);
    }
  }

  // The id of the next event, 0 for none.
  unsigned long next(unsigned long afterId, unsigned int dsid) {
    LiveEvent stale(1, 1);
    Event* event = &stale;
    EXPECT_EQ(0, store->getNextEvent(afterId, &event, dsid));
    const std::unique_ptr<Event> owned(event);
    return owned ? owned->getId() : 0;
  }

  std::unique_ptr<TestDSEventStorage> store;
};

TEST_F(DSEventStorageTest, StartsEmptyWithTheDefaultLimits) {
  EXPECT_EQ(0, store->m_ageLimit);
  EXPECT_EQ(50000, store->m_countLimit);
  EXPECT_THAT(store->m_maxIds, IsEmpty());
  EXPECT_THAT(store->m_idCaches, IsEmpty());
}

TEST_F(DSEventStorageTest, FindsTheNextIdOfOneDataSelectionOnly) {
  keep(4, {10, 12});
  keep(6, {11});
  EXPECT_EQ(10u, store->getNextId(0, 4));
  EXPECT_EQ(12u, store->getNextId(10, 4));
  EXPECT_EQ(12u, store->getNextId(11, 4));
  EXPECT_EQ(0u, store->getNextId(12, 4));
  EXPECT_EQ(0u, store->getNextId(0, 5));
}

TEST_F(DSEventStorageTest, LookingUpAnUnknownDataSelectionCreatesNothing) {
  EXPECT_EQ(0u, store->getNextId(0, 5));
  store->removeIdFromCache(1, 5);
  EXPECT_THAT(store->m_idCaches, IsEmpty());
  EXPECT_THAT(store->m_maxIds, IsEmpty());
}

TEST_F(DSEventStorageTest, CachedIdsWithoutAHighestIdAreNotFound) {
  store->addIdToCache(10, 4);
  EXPECT_EQ(0u, store->getNextId(0, 4));
  EXPECT_THAT(store->m_maxIds, IsEmpty());
}

TEST_F(DSEventStorageTest, AHighestIdWithoutACacheGivesNoId) {
  store->m_maxIds[4] = 10;
  EXPECT_EQ(0u, store->getNextId(0, 4));
  EXPECT_THAT(store->m_idCaches, IsEmpty());
}

TEST_F(DSEventStorageTest, GivesNoIdOnceTheHighestOneIsReachedEvenIfTheCacheHoldsMore) {
  keep(4, {3, 9});
  store->m_maxIds[4] = 5;
  EXPECT_EQ(0u, store->getNextId(5, 4));
  EXPECT_EQ(9u, store->getNextId(4, 4));
}

TEST_F(DSEventStorageTest, RemovingTheLastIdLeavesAnEmptyCache) {
  keep(4, {10});
  store->removeIdFromCache(10, 4);
  EXPECT_THAT(store->m_idCaches, ElementsAre(Pair(4u, IsEmpty())));
  EXPECT_EQ(0u, store->getNextId(0, 4));
  EXPECT_THAT(host().calls(), IsEmpty());
}

TEST_F(DSEventStorageTest, CachesAnIdOnceInItsOwnDataSelection) {
  store->addIdToCache(10, 4);
  store->addIdToCache(10, 4);
  store->addIdToCache(10, 7);
  EXPECT_THAT(store->m_idCaches, ElementsAre(Pair(4u, ElementsAre(10)), Pair(7u, ElementsAre(10))));
  EXPECT_THAT(host().calls(), IsEmpty());
}

TEST_F(DSEventStorageTest, SetsTheIdOfAnEventAndAcceptsNull) {
  const std::unique_ptr<Event> event = newCapacityEvent();
  store->assignEventId(event.get(), 17);
  EXPECT_EQ(17u, event->getId());
  store->assignEventId(nullptr, 18);
}

TEST_F(DSEventStorageTest, WalksOneDataSelectionInIdOrder) {
  keep(4, {12, 10});
  keep(6, {11});
  EXPECT_EQ(10u, next(0, 4));
  EXPECT_EQ(12u, next(10, 4));
  EXPECT_EQ(0u, next(12, 4));
  EXPECT_EQ(0u, next(0, 5));
  EXPECT_THAT(store->reads, ElementsAre(Pair(10u, 4u), Pair(12u, 4u)));
}

TEST_F(DSEventStorageTest, PassesOverAnUnreadableIdAndDropsItFromThatDataSelectionsCache) {
  keep(4, {3, 5, 9});
  keep(6, {5});
  store->failures[5] = 4;
  EXPECT_EQ(9u, next(3, 4));
  EXPECT_THAT(host().log(),
              ElementsAre(error(4, "%s: removing event %lu from cache.", "getNextEvent", 5ul)));
  EXPECT_THAT(store->m_idCaches[4], ElementsAre(3, 9));
  EXPECT_THAT(store->m_idCaches[6], ElementsAre(5));
}

TEST_F(DSEventStorageTest, EndsWithNullWhenNothingCanBeRead) {
  keep(4, {3, 5});
  store->failures = {{3, 4}, {5, 67}};
  EXPECT_EQ(0u, next(0, 4));
  EXPECT_THAT(store->m_idCaches[4], IsEmpty());
  EXPECT_EQ(2u, host().log().size());
}

TEST_F(DSEventStorageTest, ItsQueuesAreNeverFull) {
  store->m_countLimit = 2;
  store->m_ageLimit = 1;
  keep(4, {1, 2, 3});
  host().setTracing(true);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(trace("%s Checking event storage limits", "checkLimits")));
  EXPECT_THAT(store->reads, IsEmpty());
}

TEST_F(DSEventStorageTest, CheckingTheLimitsLogsNothingWithoutTracing) {
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().logAndTraces(), IsEmpty());
}

}  // namespace
}  // namespace EventSystemTest
