// The store that keeps the global queue in memory.

#include "EventSystem/CapacityEvent.h"
#include "EventSystem/HashEventStorage.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/PrivateAccess.h"
#include "tests/support/TestStores.h"

namespace EventSystemTest {

typedef std::map<unsigned long, std::shared_ptr<EventSystem::Event> > SharedEvents;
typedef void (EventSystem::EventStorage::*CacheChange)(unsigned long);

EVENTSYSTEM_TEST_ACCESS(HashEvents, SharedEvents EventSystem::HashEventStorage::*,
                        &EventSystem::HashEventStorage::m_events)
EVENTSYSTEM_TEST_ACCESS(HashCache, std::set<unsigned long> EventSystem::EventStorage::*,
                        &EventSystem::EventStorage::m_idCache)
EVENTSYSTEM_TEST_ACCESS(HashCountLimit, int EventSystem::EventStorage::*,
                        &EventSystem::EventStorage::m_countLimit)
EVENTSYSTEM_TEST_ACCESS(HashAgeLimit, int EventSystem::EventStorage::*,
                        &EventSystem::EventStorage::m_ageLimit)

namespace {

using EventSystem::Event;
using EventSystem::HashEventStorage;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Its reads fail where the test says so.
class FailingHashStorage : public HashEventStorage {
 public:
  int readEvent(unsigned long id, Event** event) override {
    if (id == failing) return 4;
    if (id == failingWithEvent) {
      *event = new LiveEvent(id, 1);
      return 4;
    }
    return HashEventStorage::readEvent(id, event);
  }
  unsigned long failing = 0;
  unsigned long failingWithEvent = 0;
};

class HashEventStorageTest : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    store = std::make_unique<HashEventStorage>();
    host().clearCalls();
  }

  // Writes a new event; its id.
  unsigned long write(HashEventStorage& target, const std::string& server = "node1") {
    const std::unique_ptr<Event> event = newCapacityEvent(server);
    EXPECT_EQ(0, target.writeEvent(event.get()));
    return event->getId();
  }
  unsigned long write() { return write(*store); }

  std::unique_ptr<Event> read(unsigned long id) {
    TextEvent stale("stale");
    Event* event = &stale;
    EXPECT_EQ(0, store->readEvent(id, &event));
    return std::unique_ptr<Event>(event);
  }

  static LogLine mismatch() {
    return warning(-1, "The number of events in the data store do not match the event cache.");
  }

  SharedEvents& events() { return (*store).*access(HashEvents()); }
  std::set<unsigned long>& cache() { return (*store).*access(HashCache()); }

  std::unique_ptr<HashEventStorage> store;
};

TEST_F(HashEventStorageTest, NumbersFromOneAndTellsTheCallersEvent) {
  EXPECT_EQ(0u, store->getMaxId());
  EXPECT_EQ(1u, write());
  EXPECT_EQ(2u, write());
  EXPECT_EQ(2u, store->getMaxId());
  EXPECT_THAT(cache(), ElementsAre(1, 2));
}

TEST_F(HashEventStorageTest, AReadEventCarriesIdDateAndFields) {
  const std::unique_ptr<Event> event = parsed(capacityText(99, 1234567890, "alpha"));
  ASSERT_EQ(0, store->writeEvent(event.get()));
  const std::unique_ptr<Event> back = read(1);
  ASSERT_NE(nullptr, back);
  EXPECT_NE(event.get(), back.get());
  EXPECT_EQ(capacityText(1, 1234567890, "alpha"), textOf(*back));
}

TEST_F(HashEventStorageTest, ReadersAndWritersObjectsAreIndependentOfTheStore) {
  std::unique_ptr<Event> event = newCapacityEvent("alpha");
  ASSERT_EQ(0, store->writeEvent(event.get()));
  const std::string text = textOf(*event);
  TestEventStorage other;
  other.assignEventId(event.get(), 55);
  event.reset();
  std::unique_ptr<Event> first = read(1);
  other.assignEventId(first.get(), 66);
  first.reset();
  EXPECT_EQ(text, textOf(*read(1)));
  EXPECT_EQ(1u, read(1)->getId());
}

TEST_F(HashEventStorageTest, AnUnknownIdReadsAsNull) {
  write();
  EXPECT_EQ(nullptr, read(2));
  EXPECT_EQ(nullptr, read(0));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(HashEventStorageTest, AStoredEventWhoseTextDoesNotParseReadsAsNullWithResult0) {
  write();
  events()[1] = std::make_shared<TextEvent>("EVENT{version:1;type:5;id:1;date:5;");
  EXPECT_EQ(nullptr, read(1));
}

TEST_F(HashEventStorageTest, RefusesAnEventThatDoesNotParseAndTakesNoId) {
  write();
  TextEvent broken("EVENT{version:1;type:5;id:1;date:1;CAPACITYEVENT{capacity:1", 5, 77);
  EXPECT_EQ(9, store->writeEvent(&broken));
  EXPECT_EQ(77u, broken.getId());
  EXPECT_EQ(1u, store->getMaxId());
  EXPECT_THAT(cache(), ElementsAre(1));
  EXPECT_EQ(2u, write());
}

// A capacity event's string, made longer by blanks before a number, which parsing skips.
std::string longText(std::size_t length) {
  const std::string text = capacityText(0, 5);
  return text.substr(0, 14) + std::string(length - text.size(), ' ') + text.substr(14);
}

TEST_F(HashEventStorageTest, RefusesAnEventWhoseStringIsLongerThanItsBuffer) {
  TextEvent fits(longText(2047));
  EXPECT_EQ(0, store->writeEvent(&fits));
  TextEvent tooLong(longText(2048));
  EXPECT_EQ(9, store->writeEvent(&tooLong));
  EXPECT_EQ(1u, store->getMaxId());
}

TEST_F(HashEventStorageTest, RefusesNullAndTakesNoId) {
  EXPECT_EQ(9, store->writeEvent(nullptr));
  ASSERT_EQ(1u, host().log().size());
  EXPECT_EQ("error", host().log()[0].level);
  EXPECT_EQ(0u, store->getMaxId());
}

TEST_F(HashEventStorageTest, IsFullAtTheCountLimitAndThenTakesNoId) {
  FakeConfiguration configuration;
  configuration.countLimit = 2;
  host().configure(configuration);
  store = std::make_unique<HashEventStorage>();
  write();
  write();
  host().clearCalls();
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(50, store->writeEvent(event.get()));
  EXPECT_EQ(0u, event->getId());
  EXPECT_EQ(2u, store->getMaxId());
  EXPECT_EQ(2u, events().size());
  EXPECT_THAT(host().log(), ElementsAre(warning(50,
                                                "%s Current event count is greater than event "
                                                "limit!",
                                                "checkLimits")));
  store->deleteEvent(1);
  EXPECT_EQ(3u, write());
}

TEST_F(HashEventStorageTest, ParsesBeforeItChecksTheLimits) {
  (*store).*access(HashCountLimit()) = 1;
  write();
  TextEvent broken("nonsense");
  EXPECT_EQ(9, store->writeEvent(&broken));
}

TEST_F(HashEventStorageTest, OldEventsAreReportedByEachWriteAndReleased) {
  (*store).*access(HashAgeLimit()) = 1;
  const std::unique_ptr<Event> old = parsed(capacityText(0, secondsAgo(3 * kDay)));
  ASSERT_EQ(0, store->writeEvent(old.get()));
  EXPECT_THAT(host().log(), IsEmpty());
  write();
  EXPECT_THAT(host().log(), ElementsAre(warning(50, "%s Event ID %lu is older than event age limit",
                                                "checkLimits", 1ul)));
}

TEST_F(HashEventStorageTest, DeletesAnEventFromStoreAndCache) {
  write();
  write();
  store->deleteEvent(1);
  EXPECT_EQ(nullptr, read(1));
  EXPECT_THAT(cache(), ElementsAre(2));
  EXPECT_EQ(1u, events().size());
  EXPECT_EQ(3u, write());
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(HashEventStorageTest, DeletingAnUnknownIdChangesNothing) {
  write();
  store->deleteEvent(17);
  store->deleteEvent(0);
  EXPECT_THAT(cache(), ElementsAre(1));
  EXPECT_EQ(1u, events().size());
}

TEST_F(HashEventStorageTest, DeletingAnIdThatOnlyTheCacheHoldsCleansTheCache) {
  write();
  cache().insert(9);
  store->deleteEvent(9);
  EXPECT_THAT(cache(), ElementsAre(1));
}

TEST_F(HashEventStorageTest, WalksInIdOrder) {
  write();
  write();
  store->deleteEvent(1);
  write();
  Event* event = nullptr;
  ASSERT_EQ(0, store->getNextEvent(0, &event));
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(2u, event->getId());
  delete event;
  ASSERT_EQ(0, store->getNextEvent(2, &event));
  EXPECT_EQ(3u, event->getId());
  delete event;
  ASSERT_EQ(0, store->getNextEvent(3, &event));
  EXPECT_EQ(nullptr, event);
}

TEST_F(HashEventStorageTest, ACachedIdWithoutAnEventEndsTheWalkAndStaysCached) {
  write();
  write();
  events().erase(1);
  Event* event = nullptr;
  EXPECT_EQ(0, store->getNextEvent(0, &event));
  EXPECT_EQ(nullptr, event);
  EXPECT_THAT(cache(), ElementsAre(1, 2));
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(HashEventStorageTest, ContinuesNumberingAfterAGivenHighestId) {
  store->setMaxId(10);
  EXPECT_EQ(10u, store->getMaxId());
  EXPECT_EQ(11u, write());
  store->setMaxId(4);
  EXPECT_EQ(5u, write());
}

TEST_F(HashEventStorageTest, PopulatingAnewNumbersFromOneAndReplacesEvents) {
  write(*store, "first");
  write(*store, "second");
  EXPECT_EQ(0, store->populateIdCache());
  EXPECT_EQ(0u, store->getMaxId());
  EXPECT_THAT(cache(), ElementsAre(1, 2));
  EXPECT_EQ(1u, write(*store, "third"));
  EXPECT_EQ(2u, events().size());
  EXPECT_NE(std::string::npos, textOf(*read(1)).find("server:third"));
  EXPECT_NE(std::string::npos, textOf(*read(2)).find("server:second"));
}

TEST_F(HashEventStorageTest, ASoundStoreHasNoProblems) {
  EXPECT_EQ(0, store->checkConsistency(false));
  write();
  EXPECT_EQ(0, store->checkConsistency(true));
  EXPECT_THAT(host().logAndTraces(), IsEmpty());
}

TEST_F(HashEventStorageTest, CountsTheDifferenceBetweenStoreAndCache) {
  for (int i = 0; i < 4; ++i) write();
  cache().erase(2);
  cache().erase(3);
  EXPECT_EQ(2, store->checkConsistency(false));
  EXPECT_EQ(2, store->checkConsistency(true));
  EXPECT_THAT(cache(), ElementsAre(1, 4));
  EXPECT_THAT(host().log(), ElementsAre(mismatch(), mismatch()));
}

TEST_F(HashEventStorageTest, CountsIdsWithoutAnEventOnceMore) {
  write();
  write();
  events().erase(1);
  EXPECT_EQ(2, store->checkConsistency(true));
  EXPECT_EQ(2u, host().log().size());
  EXPECT_EQ(warning(-1, "Event %lu could not be constructed.", 1ul), host().log().back());
  EXPECT_THAT(cache(), ElementsAre(1, 2));
}

TEST_F(HashEventStorageTest, CountsAnEventThatDoesNotParse) {
  write();
  events()[1] = std::make_shared<TextEvent>("nonsense");
  host().clearCalls();
  EXPECT_EQ(1, store->checkConsistency(false));
  EXPECT_EQ(warning(-1, "Event %lu could not be constructed.", 1ul), host().log().back());
}

TEST_F(HashEventStorageTest, TheCheckSeesNoIdAboveTheHighestHandedOut) {
  write();
  cache().insert(99);
  EXPECT_EQ(1, store->checkConsistency(false)) << "only the difference of the counts";
}

TEST_F(HashEventStorageTest, AFailingReadCountsTwiceWithoutAnEventAndOnceWithOne) {
  FailingHashStorage failing;
  for (int i = 0; i < 3; ++i) write(failing);
  failing.failing = 1;
  failing.failingWithEvent = 3;
  host().clearCalls();
  EXPECT_EQ(3, failing.checkConsistency(true));
  EXPECT_THAT(host().log(), ElementsAre(warning(-1, "Failed to read event %lu.", 1ul),
                                        warning(-1, "Event %lu could not be constructed.", 1ul),
                                        warning(-1, "Failed to read event %lu.", 3ul)));
  EXPECT_EQ(0, LiveEvent::count) << "events built by the check are deleted";
}

TEST_F(HashEventStorageTest, DestructionReleasesEveryEvent) {
  write();
  const std::weak_ptr<Event> watched = events()[1];
  store.reset();
  EXPECT_TRUE(watched.expired());
}

TEST_F(HashEventStorageTest, ReplacingAnEventReleasesTheOldOne) {
  write();
  const std::weak_ptr<Event> watched = events()[1];
  store->setMaxId(0);
  write();
  EXPECT_TRUE(watched.expired());
}

TEST_F(HashEventStorageTest, ANullOutputIsRefused) {
  EXPECT_EQ(9, store->readEvent(1, nullptr));
  EXPECT_EQ(9, store->getNextEvent(0, nullptr));
}

TEST_F(HashEventStorageTest, NumberingNeverStartsOver) {
  store->setMaxId(~0ul);
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(4, store->writeEvent(event.get()));
  EXPECT_EQ(~0ul, store->getMaxId());
}

}  // namespace
}  // namespace EventSystemTest
