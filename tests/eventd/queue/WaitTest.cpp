// Readers, with and without patience.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "EventSystem/ResultCode.h"
#include "tests/eventd/queue/ServiceFixture.h"

namespace EventSystemTest {
namespace {

using EventApps::ReadRequest;
using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr milliseconds kLong{3600 * 1000};

class Wait : public ServiceTest {
 protected:
  // A reader that waits, and its answer.
  struct Reader {
    std::optional<EventApps::Waiting> handle;
    std::future<ReadResult> result;
  };
  Reader wait(const ReadRequest& request) {
    auto promise = std::make_shared<std::promise<ReadResult>>();
    Reader reader{std::nullopt, promise->get_future()};
    reader.handle = service().read(
        request, [promise](ReadResult result) { promise->set_value(std::move(result)); });
    return reader;
  }
  static ReadResult resultOf(Reader& reader) {
    if (reader.result.wait_for(kPatience) == std::future_status::ready) return reader.result.get();
    ADD_FAILURE() << "no answer";
    return {};
  }
  std::size_t waiting() { return service().counters().waitingReaders; }
};

TEST_F(Wait, ReadsInPages) {
  start();
  store(manyEvents(10));
  const ReadResult first = read({0, 0, 4, {}, {}});
  EXPECT_THAT(idsOf(first.events), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(first.last, 4u);
  EXPECT_THAT(idsOf(read({0, 8, 4, {}, {}}).events), ElementsAre(9, 10));
  const ReadResult none = read({0, 77, 4, {}, {}});
  EXPECT_THAT(none.events, IsEmpty());
  EXPECT_EQ(none.last, 77u);
}

TEST_F(Wait, ReadsTheSameFromTheLibraryAndFromMemory) {
  limits.keptEvents = 5;
  start();
  store(manyEvents(20));
  for (unsigned long after = 0; after < 21; ++after) {
    Ids expected;
    for (unsigned long id = after + 1; id <= 20; ++id) expected.push_back(id);
    EXPECT_EQ(idsAfter(after), expected);
  }
  remove(18);
  EXPECT_THAT(idsAfter(16), ElementsAre(17, 19, 20));
}

TEST_F(Wait, FiltersByType) {
  start();
  Events events = manyEvents(3);
  events.push_back(auditEvent("a"));
  events.push_back(newCapacityEvent());
  store(std::move(events));
  for (int round = 0; round < 2; ++round) {
    const ReadResult audits = read({0, 0, 10, {EventSystem::kAuditEvent}, {}});
    EXPECT_THAT(idsOf(audits.events), ElementsAre(4));
    EXPECT_EQ(audits.last, 5u) << "5 need not be looked at again";
    EXPECT_THAT(read({0, 4, 10, {EventSystem::kAuditEvent}, {}}).events, IsEmpty());
    start();  // the second time nothing is in memory
  }
}

TEST_F(Wait, IsAnsweredByTheFirstEvent) {
  start();
  storeOne();
  Reader reader = wait({0, 1, 10, {}, kLong});
  EXPECT_EQ(reader.result.wait_for(milliseconds(20)), std::future_status::timeout);
  storeOne();
  const ReadResult result = resultOf(reader);
  EXPECT_THAT(idsOf(result.events), ElementsAre(2));
  EXPECT_EQ(result.last, 2u);
  EXPECT_TRUE(eventually([&] { return waiting() == 0; }));
}

TEST_F(Wait, IsNotNeededWhenSomethingIsThere) {
  start();
  storeOne();
  Reader reader = wait({0, 0, 10, {}, kLong});
  EXPECT_THAT(idsOf(resultOf(reader).events), ElementsAre(1));
}

TEST_F(Wait, IsForItsQueueItsIdsAndItsTypes) {
  start();
  addDataSelection(5);
  Reader other = wait({5, 0, 10, {}, kLong});
  Reader later = wait({0, 2, 10, {}, kLong});
  Reader audits = wait({0, 0, 10, {EventSystem::kAuditEvent}, kLong});
  ASSERT_TRUE(eventually([&] { return waiting() == 3; }));
  storeOne();
  storeOne();
  EXPECT_EQ(waiting(), 3u);
  store([] {
    Events events = eventsOf({"third"});
    events.push_back(auditEvent("fourth"));
    return events;
  }());
  EXPECT_THAT(idsOf(resultOf(later).events), ElementsAre(3, 4));
  EXPECT_THAT(idsOf(resultOf(audits).events), ElementsAre(4));
  EXPECT_TRUE(eventually([&] { return waiting() == 1; }));
  storeOne("a", 5);
  EXPECT_THAT(idsOf(resultOf(other).events), ElementsAre(1));
}

TEST_F(Wait, EndsInTime) {
  start();
  const auto begin = std::chrono::steady_clock::now();
  const ReadResult result = read({0, 7, 10, {}, milliseconds(50)});
  EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(50));
  EXPECT_THAT(result.events, IsEmpty());
  EXPECT_EQ(result.last, 7u);
  EXPECT_EQ(result.code, 0);
  EXPECT_TRUE(eventually([&] { return waiting() == 0; }));
}

TEST_F(Wait, IsOverForAClientThatHasGone) {
  start();
  Reader reader = wait({0, 0, 10, {}, kLong});
  reader.handle->cancel();
  EXPECT_TRUE(eventually([&] { return waiting() == 0; }));
  storeOne();
  read({});
  EXPECT_EQ(reader.result.wait_for(milliseconds(0)), std::future_status::timeout);
}

TEST_F(Wait, IsRefusedWhenTooManyDo) {
  limits.waiting = 2;
  start();
  Reader first = wait({0, 0, 10, {}, kLong});
  Reader second = wait({0, 0, 10, {}, kLong});
  EXPECT_FALSE(wait({0, 0, 10, {}, kLong}).handle);
  EXPECT_TRUE(wait({0, 0, 10, {}, milliseconds(0)}).handle) << "no wait, no place";
  EXPECT_TRUE(service().counters().refused.empty()) << "no event was refused";
  first.handle->cancel();
  EXPECT_TRUE(eventually([&] { return waiting() == 1; }));
  EXPECT_TRUE(wait({0, 0, 10, {}, kLong}).handle);
}

// Many who read much wait for each other; who reads little does not wait for all of them.
TEST_F(Wait, IsNotForAllTheLongReadingsOfOthers) {
  constexpr long kLongOnes = 20;
  limits.longReads = 1;
  limits.shortRead = 1;
  limits.keptEvents = 1;
  start();
  store(manyEvents(10));
  std::vector<std::size_t> counts;  // of the answering thread
  std::atomic<long> answered = 0;
  const auto ask = [&](unsigned int limit) {
    service().read({0, 0, limit, {}, {}}, [&](const ReadResult& result) {
      counts.push_back(result.events.size());
      ++answered;
    });
  };
  // All of them are there before the first is answered.
  service().find(1, 0, [&](const EventApps::FindResult&) {
    for (long i = 0; i < kLongOnes; ++i) ask(limits.shortRead + 1);
    ask(1);
  });
  ASSERT_TRUE(eventually([&] { return answered == kLongOnes + 1; }));
  EXPECT_EQ(std::min(counts.at(0), counts.at(1)), 1u) << "it waited for more than one of them";
  EXPECT_EQ(std::count(counts.begin(), counts.end(), limits.shortRead + 1), kLongOnes);
}

// Looking for some types may pass over a whole queue, however few events are asked for.
TEST_F(Wait, IsNotForAllWhoLookForSomeTypes) {
  constexpr long kSearches = 20;
  limits.longReads = 1;
  limits.keptEvents = 1;
  start();
  store(manyEvents(10));
  std::vector<unsigned long> lasts;  // of the answering thread
  std::atomic<long> answered = 0;
  const auto ask = [&](const std::set<int>& types) {
    service().read({0, 0, 1, types, {}}, [&](const ReadResult& result) {
      lasts.push_back(result.last);
      ++answered;
    });
  };
  service().find(1, 0, [&](const EventApps::FindResult&) {
    for (long i = 0; i < kSearches; ++i) ask({EventSystem::kAuditEvent});
    ask({});
  });
  ASSERT_TRUE(eventually([&] { return answered == kSearches + 1; }));
  EXPECT_EQ(std::min(lasts.at(0), lasts.at(1)), 1u) << "it waited for more than one of them";
}

TEST_F(Wait, OfOneWhoStoresIsNotForAllWhoRead) {
  constexpr long kReadings = 200;
  limits.keptEvents = 1;
  start();
  store(manyEvents(100));
  std::atomic<long> answered = 0;
  std::promise<long> answeredBefore;
  service().find(1, 0, [&](const EventApps::FindResult&) {
    for (long i = 0; i < kReadings; ++i) {
      service().read({0, 0, 10, {}, {}}, [&](const ReadResult&) { ++answered; });
    }
    // They have taken their places before it comes.
    service().find(1, 0, [&](const EventApps::FindResult&) {
      service().store(eventsOf({"a"}), 0, std::nullopt,
                      [&](const StoreResult&) { answeredBefore.set_value(answered); });
    });
  });
  EXPECT_LT(answeredBefore.get_future().get(), kReadings / 2);
  ASSERT_TRUE(eventually([&] { return answered == kReadings; }));
}

TEST_F(Wait, RemembersHowFarItHasLooked) {
  const std::set<int> audits = {EventSystem::kAuditEvent};
  start();
  store(manyEvents(3));
  EXPECT_EQ(read({0, 0, 10, audits, {}}).last, 3u);
  EXPECT_EQ(read({0, 0, 10, audits, milliseconds(1)}).last, 3u);
  EXPECT_EQ(read({0, 77, 10, audits, {}}).last, 77u);
  Reader reader = wait({0, 0, 10, audits, kLong});
  read({0, 0, 10, audits, {}});  // behind it: it has looked at what was there
  store(manyEvents(2));
  stop();
  EXPECT_EQ(resultOf(reader).last, 5u);
}

// So many that looking at all of them takes many slices.
constexpr std::size_t kManySlices = 5000;

TEST_F(Wait, EndsTheReadingOfAClientThatHasGone) {
  limits.keptEvents = 1;
  start();
  store(manyEvents(kManySlices));
  Reader reader = wait({0, 0, 10, {EventSystem::kAuditEvent}, {}});
  reader.handle->cancel();
  const ReadResult result = resultOf(reader);
  EXPECT_EQ(result.code, EventSystem::kStoreFailure) << "it looked at all of them";
  EXPECT_EQ(result.last, 0u);
  reader = wait({0, 0, 10, {}, {}});
  reader.handle->cancel();
  EXPECT_EQ(resultOf(reader).last, 10u) << "a client that only seems to be gone";
}

TEST_F(Wait, EndsALongReadingWhenTheServiceEnds) {
  limits.keptEvents = 1;
  start();
  store(manyEvents(kManySlices));
  Reader reading = wait({0, 0, 10, {EventSystem::kAuditEvent}, {}});
  Reader waiting = wait({0, 0, 10, {EventSystem::kAuditEvent}, kLong});
  answerOf<EventApps::FindResult>([&](auto done) { service().find(1, 0, std::move(done)); });
  stop();
  EXPECT_EQ(resultOf(reading).code, EventSystem::kStoreFailure) << "it looked at all of them";
  const ReadResult result = resultOf(waiting);
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.events, IsEmpty());
}

TEST_F(Wait, OfAThousandReadersEndsAtOnce) {
  start();
  std::vector<Reader> readers;
  for (int i = 0; i < 1000; ++i) readers.push_back(wait({0, 0, 10, {}, kLong}));
  EXPECT_EQ(waiting(), 1000u);
  read({});  // behind all of them
  storeOne();
  EventApps::EventPtr shared;
  for (Reader& reader : readers) {
    const ReadResult result = resultOf(reader);
    ASSERT_EQ(result.events.size(), 1u);
    if (shared) {
      ASSERT_EQ(result.events[0], shared) << "one event for all";
    }
    shared = result.events[0];
  }
}

TEST_F(Wait, IsAnsweredEmptyWhenTheServiceEnds) {
  start();
  Reader reader = wait({0, 3, 10, {}, kLong});
  ASSERT_TRUE(eventually([&] { return waiting() == 1; }));
  stop();
  const ReadResult result = resultOf(reader);
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.last, 3u);
  reader.handle->cancel();
}

TEST_F(Wait, SeesAuditRecordsThatNobodyHereHasWritten) {
  start();
  storeOne();
  leaveAuditRecord("first");
  limits.lookForAuditRows = milliseconds(10);
  start();
  EXPECT_EQ(service().counters().auditImports, 1u) << "at the start";
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 2));
  Reader reader = wait({0, 2, 10, {}, kLong});
  ASSERT_TRUE(eventually([&] { return waiting() == 1; }));
  leaveAuditRecord("second");
  EXPECT_THAT(idsOf(resultOf(reader).events), ElementsAre(3));
  EXPECT_EQ(service().counters().auditImports, 2u);
  leaveAuditRecord("third");
  EXPECT_THAT(idsAfter(3), ElementsAre(4)) << "a reader that does not wait sees it, too";
  leaveAuditRecord("fourth");
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 2, 3, 4, 5));
  EXPECT_EQ(storeOne(), 6u);
  EXPECT_EQ(service().counters().auditImports, 4u);
}

TEST_F(Wait, TellsWhyAQueueCannotBeRead) {
  start();
  store(manyEvents(2));
  stop();
  std::filesystem::resize_file(database(), 0);
  std::filesystem::remove(database());
  std::filesystem::create_directory(database());
  EXPECT_THROW(start(), std::exception);
}

}  // namespace
}  // namespace EventSystemTest
