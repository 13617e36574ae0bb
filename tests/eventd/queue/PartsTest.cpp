// The parts of the queue service that can be tried alone.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <stdexcept>

#include "apps/eventd/queue/Audience.h"
#include "apps/eventd/queue/AuditWatch.h"
#include "apps/eventd/queue/Digest.h"
#include "apps/eventd/queue/EventRing.h"
#include "apps/eventd/queue/Flusher.h"
#include "apps/eventd/queue/Places.h"
#include "apps/eventd/queue/Timer.h"
#include "apps/eventd/queue/Turns.h"
#include "apps/eventd/queue/Worker.h"
#include "tests/eventd/queue/ServiceFixture.h"

namespace EventSystemTest {
namespace {

using EventApps::EventRing;
using EventApps::Timer;
using EventApps::Worker;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

EventApps::EventPtr eventWith(unsigned long id, int type = 5, std::size_t bytes = 0) {
  EventApps::EventView view;
  view.id = id;
  view.type = type;
  view.eventString.assign(bytes, 'x');
  return std::make_shared<EventApps::Published>(std::move(view));
}

// With all that it has allocated.
std::size_t memoryOf(const EventApps::Published& event) {
  const EventApps::EventView& view = event.view();
  std::size_t bytes = sizeof(event) + view.eventString.capacity() + event.json().capacity();
  for (const auto& [key, value] : view.fields) {
    bytes += sizeof(key) + sizeof(value) + key.capacity() + value.capacity();
  }
  return bytes;
}

TEST(PublishedEvent, TakesAboutAsMuchMemoryAsItSays) {
  for (const auto& event : {newCapacityEvent("n"), newCapacityEvent(std::string(100, 'n')),
                            auditEvent("a"), auditEvent(std::string(9000, 'a'))}) {
    const EventApps::Published published(EventApps::viewOf(*event, 0));
    EXPECT_LT(memoryOf(published), 3 * published.bytes() / 2) << published.view().eventString;
  }
}

TEST(Ring, CoversWhatCameAfterItsBeginning) {
  EventRing ring(10, 1 << 20);
  EXPECT_FALSE(ring.covers(0));
  ring.beginAfter(7);
  ring.beginAfter(3);
  EXPECT_FALSE(ring.covers(6));
  EXPECT_TRUE(ring.covers(7));
  ring.add(eventWith(9));
  EXPECT_THAT(idsOf(ring.after(7, {}, 10).events), ElementsAre(9));
  EXPECT_EQ(ring.after(7, {}, 10).seenTo, 9u);
}

TEST(Ring, DropsTheOldestByNumberAndByBytes) {
  EventRing few(3, 1 << 20);
  EventRing small(100, 3 * eventWith(1, 5, 1000)->bytes());
  for (EventRing* const ring : {&few, &small}) {
    ring->beginAfter(0);
    for (unsigned long id = 1; id <= 5; ++id) ring->add(eventWith(id, 5, 1000));
    EXPECT_FALSE(ring->covers(1));
    EXPECT_TRUE(ring->covers(2));
    EXPECT_THAT(idsOf(ring->after(2, {}, 10).events), ElementsAre(3, 4, 5));
  }
}

TEST(Ring, KeepsWithinItsBytesAlsoAfterRemovals) {
  const std::size_t one = eventWith(1, 5, 1000)->bytes();
  EventRing ring(100, 2 * one);
  ring.beginAfter(0);
  for (unsigned long id = 1; id <= 20; ++id) {
    ring.add(eventWith(id, 5, 1000));
    if (id % 2 == 0) ring.remove(id);
  }
  EXPECT_THAT(idsOf(ring.after(17, {}, 10).events), ElementsAre(19));
  EXPECT_TRUE(ring.covers(17));
  EXPECT_FALSE(ring.covers(16));
}

TEST(Ring, TellsHowFarItHasLooked) {
  EventRing ring(10, 1 << 20);
  ring.beginAfter(0);
  for (unsigned long id = 1; id <= 6; ++id) ring.add(eventWith(id, id % 2 == 0 ? 8 : 5));
  EventRing::Found found = ring.after(0, {8}, 2);
  EXPECT_THAT(idsOf(found.events), ElementsAre(2, 4));
  EXPECT_EQ(found.seenTo, 4u);
  found = ring.after(4, {8}, 2);
  EXPECT_THAT(idsOf(found.events), ElementsAre(6));
  EXPECT_EQ(found.seenTo, 6u);
  ring.clear();
  EXPECT_FALSE(ring.covers(5));
  EXPECT_TRUE(ring.covers(6));
}

// Of queue 5 there is little, of queue 7 much.
TEST(KeptEvents, OfAllQueuesTogetherAreBounded) {
  EventApps::ServiceLimits limits;
  const std::size_t one = eventWith(1, 5, 1000)->bytes();
  limits.keptBytesOfAll = 6 * one;
  EventApps::Audience audience(limits, true, [](const EventApps::SubscriberPtr&) {});
  audience.show({5, 0, {eventWith(1, 5, 1000), eventWith(2, 5, 1000)}});
  for (unsigned long id = 1; id <= 20; ++id) audience.show({7, id - 1, {eventWith(id, 5, 1000)}});
  const auto kept = [&](unsigned int queue, unsigned long after) {
    const auto found = audience.readKept({queue, after, 100, {}, {}});
    return found ? idsOf(found->events) : Ids{};
  };
  EXPECT_THAT(kept(5, 0), ElementsAre(1, 2));
  EXPECT_THAT(kept(7, 16), ElementsAre(17, 18, 19, 20));
  EXPECT_THAT(kept(7, 15), IsEmpty()) << "it has forgotten the first of them";
}

TEST(WorkerThread, DoesInOrderWhatItWasGivenUntilItEnds) {
  std::vector<int> done;
  Worker worker;
  worker.post([&] {
    worker.post([&] {
      done.push_back(1);
      worker.post([&] { done.push_back(3); });
    });
    worker.post([&] {
      done.push_back(2);
      throw std::runtime_error("of a job");
    });
  });
  worker.finish();
  worker.post([&] { done.push_back(4); });
  EXPECT_THAT(done, ElementsAre(1, 2, 3));
}

TEST(TimerThread, CallsInTheOrderOfTimeAndNotWhatWasCancelled) {
  using std::chrono::milliseconds;
  Timer timer;
  std::promise<void> last;
  std::vector<int> called;
  const auto begin = Timer::Clock::now();
  timer.callAt(begin + milliseconds(40), [&] {
    called.push_back(3);
    last.set_value();
  });
  timer.callAt(begin + milliseconds(20), [&] { called.push_back(2); });
  timer.callAt(begin + milliseconds(10), [&] { called.push_back(1); });
  timer.cancel(timer.callAt(begin + milliseconds(30), [&] { called.push_back(0); }));
  last.get_future().wait();
  timer.stop();
  EXPECT_GE(Timer::Clock::now() - begin, milliseconds(40));
  EXPECT_THAT(called, ElementsAre(1, 2, 3));
}

TEST(FlushOfMany, IsOneAndOnlyWhereSomethingWasWritten) {
  int flushes = 0;
  std::vector<int> answers;
  {
    Worker worker;
    std::promise<void> begun;
    std::promise<void> go;
    EventApps::Flusher flusher(
        [&] {
          if (flushes++ == 0) {
            begun.set_value();
            go.get_future().wait();
          }
          return flushes == 2 ? 10 : 0;
        },
        [](int, double) {}, worker);
    const auto answer = [&](int status) { answers.push_back(status); };
    flusher.whenDurable(answer);  // nothing was written
    flusher.noteWrite();
    flusher.whenDurable(answer);
    begun.get_future().wait();
    flusher.noteWrite();
    flusher.whenDurable(answer);
    flusher.noteWrite();
    flusher.whenDurable(answer);
    go.set_value();
    flusher.finish();
    worker.finish();
  }
  EXPECT_EQ(flushes, 2);
  EXPECT_THAT(answers, ElementsAre(0, 0, 10, 10));
}

TEST(PlacesToWait, AreBoundedAndComeBack) {
  EventApps::Places places(1);
  auto first = places.take();
  EXPECT_TRUE(first);
  EXPECT_FALSE(places.take());
  EXPECT_EQ(places.taken(), 1u);
  first.reset();
  EXPECT_TRUE(places.take());
}

TEST(PlacesToWait, AreTakenInBothOrInNeither) {
  EventApps::Places few(1);
  EventApps::Places many(2);
  auto both = few.takeWith(many);
  EXPECT_TRUE(both);
  EXPECT_FALSE(few.takeWith(many));
  EXPECT_FALSE(many.takeWith(few));
  EXPECT_EQ(many.taken(), 1u);
  both.reset();
  EXPECT_EQ(few.taken() + many.taken(), 0u);
}

TEST(TurnsOfMany, AreTakenInOrderByNoMoreThanThereAre) {
  EventApps::Turns turns(2);
  std::string begun;
  const auto take = [&](char name, bool needed = true) {
    turns.take([&begun, name, needed] {
      begun += name;
      return needed;
    });
  };
  for (const char name : {'a', 'b', 'c'}) take(name);
  take('d', false);
  take('e');
  EXPECT_EQ(begun, "ab");
  turns.end();
  EXPECT_EQ(begun, "abc");
  turns.end();
  EXPECT_EQ(begun, "abcde") << "who needs no turn leaves it to the next";
  turns.end();
  turns.end();
  take('f');
  take('g');
  take('h');
  EXPECT_EQ(begun, "abcdefg");
}

TEST(Digests, AreThatOfTheirText) {
  EXPECT_EQ(EventApps::digestOf("abc"), "ba7816bf8f01cfea414140de5dae2223");
  EXPECT_NE(EventApps::digestOf("abd"), EventApps::digestOf("abc"));
}

TEST(WatchOfAuditRows, LooksOnceMoreAfterAChange) {
  const TempDir directory;
  const auto file = directory.path() / "audit.db";
  EventApps::AuditWatch watch(file);
  EXPECT_FALSE(watch.mayHaveRows());
  std::ofstream(file) << "a";
  EXPECT_TRUE(watch.mayHaveRows());
  EXPECT_TRUE(watch.mayHaveRows());
  EXPECT_FALSE(watch.mayHaveRows());
  std::ofstream(file) << "longer";
  EXPECT_TRUE(watch.mayHaveRows());
}

}  // namespace
}  // namespace EventSystemTest
