// Storing, finding and removing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "EventSystem/ResultCode.h"
#include "tests/eventd/queue/ServiceFixture.h"
#include "tests/host/HostFixture.h"

namespace EventSystemTest {
namespace {

using EventApps::FindResult;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Store : public ServiceTest {
 protected:
  FindResult find(unsigned long id, unsigned int dsid = 0) {
    return answerOf<FindResult>([&](auto done) { service().find(id, dsid, std::move(done)); });
  }
};

TEST_F(Store, KeepsTheOrderOfARequest) {
  start();
  const StoreResult result = store(eventsOf({"a", "b", "c"}));
  EXPECT_EQ(result.code, 0) << result.problem;
  EXPECT_THAT(result.ids, ElementsAre(1, 2, 3));
  const ReadResult all = read({});
  ASSERT_EQ(all.events.size(), 3u);
  EXPECT_EQ(all.last, 3u);
  EXPECT_THAT(all.events[1]->view().eventString, HasSubstr("server:b;"));
  EXPECT_THAT(all.events[1]->json(), HasSubstr("\"id\":2,"));
}

TEST_F(Store, IsThereAfterARestart) {
  for (const char* const durability : {"strict", "group", "relaxed"}) {
    useDurability(durability);
    start();
    const unsigned long id = storeOne();
    start();
    EXPECT_NE(find(id).event, nullptr) << durability;
  }
}

TEST_F(Store, SaysWhichWereStoredWhenTheQueueBecomesFull) {
  useCountLimit(3);
  start();
  storeOne();
  const StoreResult result = store(eventsOf({"a", "b", "c", "d"}));
  EXPECT_EQ(result.code, EventSystem::kStorageLimits);
  EXPECT_THAT(result.ids, ElementsAre(2, 3));
  EXPECT_THAT(result.problem, HasSubstr("OrbCentral.ini"));
  EXPECT_THAT(idsAfter(0), ElementsAre(1, 2, 3));
  EXPECT_EQ(service().counters().refused.at("full"), 2u);
}

TEST_F(Store, TellsThatAFullQueueIsReadyForReadsOnly) {
  useCountLimit(2);
  start();
  storeOne();
  EXPECT_TRUE(readiness().ready());
  store(eventsOf({"a", "b"}));
  for (const char* const when : {"when it was refused", "from the start"}) {
    const EventApps::Readiness full = readiness();
    EXPECT_TRUE(full.reads) << when;
    EXPECT_FALSE(full.writes) << when;
    EXPECT_THAT(full.why, HasSubstr("OrbCentral.ini")) << when;
    start();
  }
  remove(1);
  EXPECT_TRUE(readiness().ready());
}

TEST_F(Store, RefusesAnUnknownDataSelection) {
  start();
  EXPECT_FALSE(service().hasQueue(5));
  const StoreResult result = store(eventsOf({"a"}), 5);
  EXPECT_EQ(result.code, EventSystem::kNoDataSelection);
  EXPECT_THAT(result.ids, IsEmpty());
  EXPECT_EQ(addDataSelection(5).problem, "");
  EXPECT_TRUE(service().hasQueue(5));
  EXPECT_EQ(storeOne("a", 5), 1u);
  EXPECT_THAT(addDataSelection(5).problem, HasSubstr("exists already"));
  start();
  EXPECT_TRUE(service().hasQueue(5));
  EXPECT_THAT(idsAfter(0, 5), ElementsAre(1));
  EXPECT_THAT(idsAfter(0), IsEmpty());
}

TEST_F(Store, RefusesWhatWouldNotFitUnderItsId) {
  start();
  Events events = eventsOf({"a"});
  events.push_back(auditEvent(std::string(2000, 'x')));
  events.push_back(newCapacityEvent());
  const StoreResult result = store(std::move(events));
  EXPECT_EQ(result.code, EventSystem::kGeneralFailure);
  EXPECT_THAT(result.problem, HasSubstr("event 1 of the request"));
  EXPECT_THAT(result.ids, ElementsAre(1));
  EXPECT_THAT(idsAfter(0), ElementsAre(1));
}

TEST_F(Store, StoresNothingOfNothing) {
  start();
  const StoreResult result = store({});
  EXPECT_EQ(result.code, 0);
  EXPECT_THAT(result.ids, IsEmpty());
  EXPECT_FALSE(result.replayed);
}

TEST_F(Store, CountsWhatItDid) {
  start();
  Events events = manyEvents(3);
  events.push_back(auditEvent("a"));
  store(std::move(events));
  remove(1);
  const EventApps::ServiceCounters all = service().counters();
  EXPECT_EQ(all.written.at(EventSystem::kCapacityEvent), 3u);
  EXPECT_EQ(all.written.at(EventSystem::kAuditEvent), 1u);
  EXPECT_EQ(all.deleted, 1u);
  EXPECT_EQ(all.auditImports, 0u);
  EXPECT_GE(all.flushes, 2u);
}

TEST_F(Store, OfManyProducersKeepsTheOrderOfEach) {
  constexpr int kProducers = 16;
  constexpr int kEach = 50;
  start();
  std::vector<std::thread> producers;
  std::vector<Ids> ids(kProducers);
  for (int producer = 0; producer < kProducers; ++producer) {
    producers.emplace_back([&, producer] {
      for (int i = 0; i < kEach; ++i) ids[static_cast<std::size_t>(producer)].push_back(storeOne());
    });
  }
  for (std::thread& producer : producers) producer.join();
  std::set<unsigned long> all;
  for (const Ids& each : ids) {
    EXPECT_TRUE(std::is_sorted(each.begin(), each.end()));
    all.insert(each.begin(), each.end());
  }
  EXPECT_EQ(all.size(), static_cast<std::size_t>(kProducers * kEach));
  EXPECT_EQ(idsAfter(0), Ids(all.begin(), all.end()));
}

TEST_F(Store, IsNotHeldUpByALongDeletion) {
  useCountLimit(0);
  start();
  store(manyEvents(5000));
  std::atomic<bool> removed = false;
  service().removeUpTo(std::nullopt, 0, false, [&](const EventApps::RemoveUpToResult& result) {
    EXPECT_EQ(result.deleted, 5000u);
    removed = true;
  });
  Ids storedMeanwhile;
  while (!removed) storedMeanwhile.push_back(storeOne());
  EXPECT_GT(storedMeanwhile.size(), 3u);
  for (const unsigned long id : storedMeanwhile) {
    ASSERT_NE(find(id).event, nullptr) << "what came after it had begun stays: " << id;
  }
}

TEST_F(Store, FindsAnEventOfItsQueueOnly) {
  start();
  addDataSelection(5);
  const unsigned long id = storeOne("a", 5);
  EXPECT_NE(find(id, 5).event, nullptr);
  EXPECT_EQ(find(id, 5).event->view().dsid, 5u);
  EXPECT_EQ(find(id, 0).event, nullptr);
  EXPECT_EQ(find(id + 1, 5).event, nullptr);
  EXPECT_EQ(find(0).code, 0);
}

TEST_F(Store, RemovesAnEventOnce) {
  start();
  const unsigned long id = storeOne();
  EXPECT_TRUE(remove(id).found);
  EXPECT_EQ(find(id).event, nullptr);
  const EventApps::RemoveResult again = remove(id);
  EXPECT_FALSE(again.found);
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(storeOne(), id + 1) << "no id is given twice";
}

TEST_F(Store, RemovesUpToAnId) {
  start();
  store(manyEvents(10));
  EventApps::RemoveUpToResult result = removeUpTo(4, true);
  EXPECT_EQ(result.deleted, 4u);
  EXPECT_EQ(result.last, 4u);
  EXPECT_EQ(idsAfter(0).size(), 10u) << "a dry run removes nothing";
  result = removeUpTo(4);
  EXPECT_EQ(result.deleted, 4u);
  EXPECT_EQ(result.last, 4u);
  EXPECT_EQ(idsAfter(0).front(), 5u);
  result = removeUpTo(std::nullopt);
  EXPECT_EQ(result.deleted, 6u);
  EXPECT_EQ(result.last, 10u);
  result = removeUpTo(std::nullopt);
  EXPECT_EQ(result.deleted, 0u);
  EXPECT_EQ(result.last, 0u);
}

TEST_F(Store, FinishesWhatItWasAskedBeforeItEnds) {
  start();
  std::atomic<int> answered = 0;
  for (int i = 0; i < 200; ++i) {
    service().store(eventsOf({"a"}), 0, std::nullopt, [&](const StoreResult& result) {
      EXPECT_EQ(result.code, 0) << result.problem;
      ++answered;
    });
  }
  stop();
  EXPECT_EQ(answered, 200);
  start();
  EXPECT_EQ(idsAfter(0).size(), 200u);
}

TEST_F(Store, AddsAndRemovesDataSelections) {
  start();
  using Reason = EventApps::SelectionRefused::Reason;
  EXPECT_EQ(addDataSelection(7).problem, "");
  EXPECT_EQ(addDataSelection(7).refused, Reason::kExists);
  const unsigned long id = storeOne("a", 7);
  const EventApps::ChangeResult kept = removeDataSelection(7);
  EXPECT_EQ(kept.refused, Reason::kHoldsEvents);
  EXPECT_THAT(kept.problem, HasSubstr("still holds 1 event"));
  remove(id, 7);
  EXPECT_EQ(removeDataSelection(7).problem, "");
  EXPECT_FALSE(service().hasQueue(7));
  const EventApps::ChangeResult gone = removeDataSelection(7);
  EXPECT_EQ(gone.refused, Reason::kUnknown);
  EXPECT_THAT(gone.problem, HasSubstr("does not exist"));
}

TEST_F(Store, ReadsFiguresAnewWhenSomethingHasChanged) {
  limits.figuresAge = std::chrono::milliseconds(0);
  limits.figuresShare = 1000;
  start();
  const auto figures = [&] {
    return answerOf<EventApps::FiguresPtr>([&](auto done) { service().figures(std::move(done)); });
  };
  EXPECT_EQ(figures()->queues.at(0).count, 0u);
  store(manyEvents(3));
  addDataSelection(5);
  const EventApps::FiguresPtr found = figures();
  EXPECT_EQ(found->queues.at(0).count, 3u);
  EXPECT_EQ(found->queues.at(0).highestId, 3u);
  ASSERT_EQ(found->selections.size(), 1u);
  EXPECT_EQ(found->selections[0].name, "name");
}

class Figures : public ServiceTest {
 protected:
  EventApps::FiguresPtr figures() {
    return answerOf<EventApps::FiguresPtr>([&](auto done) { service().figures(std::move(done)); });
  }
  EventApps::QueueFigures of(unsigned int dsid) { return figures()->queues.at(dsid); }
};

TEST_F(Figures, AreThoseOfNowWithoutALookAtAllRows) {
  limits.figuresAge = std::chrono::hours(1);
  start();
  addDataSelection(5);
  store(manyEvents(3));
  EXPECT_EQ(of(0).count, 3u);
  Events events = manyEvents(2);
  events.push_back(auditEvent("a"));
  store(std::move(events));
  store(manyEvents(4), 5);
  ASSERT_LE(open("events").updateRecord("1", "eventstring=\"rubbish\""), 0);
  EXPECT_EQ(of(0).count, 6u);
  EXPECT_EQ(of(0).highestId, 6u);
  EXPECT_EQ(of(0).countByType.at(EventSystem::kAuditEvent), 1u);
  EXPECT_EQ(of(0).damaged, 0u) << "all rows were looked at";
  EXPECT_EQ(of(5).count, 4u);
  remove(6);
  removeUpTo(std::nullopt, false, 5);
  EXPECT_EQ(of(0).count, 5u);
  EXPECT_EQ(of(0).countByType.count(EventSystem::kAuditEvent), 0u);
  EXPECT_EQ(of(0).highestId, 6u);
  EXPECT_EQ(of(5).count, 0u);
}

TEST_F(Figures, CountAuditRecordsThatComeIn) {
  limits.figuresAge = std::chrono::hours(1);
  start();
  EXPECT_EQ(of(0).count, 0u);
  leaveAuditRecord("first");
  read({});
  EXPECT_EQ(of(0).count, 1u);
}

TEST_F(Figures, AreOfOneMomentWhileEventsArrive) {
  limits.figuresShare = 1000;
  start();
  store(manyEvents(2000));
  std::atomic<bool> ended = false;
  std::thread writer([&] {
    for (int i = 0; i < 100; ++i) storeOne();
    ended = true;
  });
  while (!ended) {
    const EventApps::QueueFigures queue = of(0);
    EXPECT_EQ(queue.count, queue.highestId);
  }
  writer.join();
  EXPECT_EQ(of(0).count, 2100u);
}

TEST_F(Figures, AreRightWhileEventsGo) {
  limits.figuresShare = 1000;
  start();
  store(manyEvents(2000));
  std::atomic<unsigned long> begun = 0;
  std::atomic<unsigned long> removed = 0;
  std::thread consumer([&] {
    while (removed < 100) {
      remove(++begun);
      ++removed;
    }
  });
  while (removed < 100) {
    const unsigned long most = 2000 - removed;
    const unsigned long count = of(0).count;
    EXPECT_LE(count, most);
    EXPECT_GE(count, 2000 - begun);
  }
  consumer.join();
  EXPECT_EQ(of(0).count, 1900u);
}

TEST_F(Figures, TellWhenTheyWereTrue) {
  start();
  const auto before = std::chrono::system_clock::now();
  const auto time = figures()->time;
  EXPECT_GE(time, before);
  EXPECT_LE(time, std::chrono::system_clock::now());
}

}  // namespace
}  // namespace EventSystemTest
