// The limits of both store bases: where they come from, and the global queue's check of them.

#include <limits>

#include "tests/support/FakeHostTest.h"
#include "tests/support/TestStores.h"

namespace EventSystemTest {
namespace {

using EventSystem::Event;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Loading is the same in both bases.
template <typename Store>
class QueueLimits : public FakeHostTest {};

typedef ::testing::Types<TestEventStorage, TestDSEventStorage> Bases;
TYPED_TEST_SUITE(QueueLimits, Bases);

FakeConfiguration limits(int age, int count) {
  FakeConfiguration configuration;
  configuration.ageLimit = age;
  configuration.countLimit = count;
  return configuration;
}

TYPED_TEST(QueueLimits, AreReadAfreshFromTheCentralFileDuringConstruction) {
  host().configure(limits(7, 1200));
  const TypeParam store;
  EXPECT_EQ(7, store.m_ageLimit);
  EXPECT_EQ(1200, store.m_countLimit);
  EXPECT_THAT(
      host().callsNamed(
          {"QMConfigLocate", "InifileReleaseA", "InifileLoadA", "InifileGetIntegerA"}),
      ElementsAre(
          "QMConfigLocate(OrbCentral, 4095)", "InifileReleaseA(/fake/OrbCentral.ini)",
          "InifileLoadA(/fake/OrbCentral.ini)",
          "InifileGetIntegerA(fake limits section, fake age entry, 0, /fake/OrbCentral.ini)",
          "InifileGetIntegerA(fake limits section, fake count entry, 50000, "
          "/fake/OrbCentral.ini)"));
  EXPECT_THAT(host().log(), IsEmpty());
}

TYPED_TEST(QueueLimits, HaveDefaultsForAbsentEntries) {
  TypeParam store;
  store.m_ageLimit = 3;
  store.m_countLimit = 4;
  store.loadLimits();
  EXPECT_EQ(0, store.m_ageLimit);
  EXPECT_EQ(50000, store.m_countLimit);
}

TYPED_TEST(QueueLimits, AreTakenAsTheyStandNegativeOnesIncluded) {
  host().configure(limits(-5, std::numeric_limits<int>::min()));
  const TypeParam store;
  EXPECT_EQ(-5, store.m_ageLimit);
  EXPECT_EQ(std::numeric_limits<int>::min(), store.m_countLimit);
}

TYPED_TEST(QueueLimits, StayAsTheyAreWithoutTheCentralFile) {
  FakeConfiguration configuration = limits(7, 1200);
  configuration.centralFile.reset();
  host().configure(configuration);
  TypeParam store;
  EXPECT_EQ(0, store.m_ageLimit);
  EXPECT_EQ(50000, store.m_countLimit);
  EXPECT_THAT(host().log(),
              ElementsAre(warning(2, "%s Unable to find orb config file path", "loadLimits")));
  EXPECT_EQ(0u, host().countCalls("InifileLoadA"));
  store.m_ageLimit = 3;
  store.m_countLimit = 4;
  store.loadLimits();
  EXPECT_EQ(3, store.m_ageLimit);
  EXPECT_EQ(4, store.m_countLimit);
}

TYPED_TEST(QueueLimits, TraceTheirOldAndNewValues) {
  host().configure(limits(7, 1200));
  TypeParam store;
  store.m_ageLimit = 3;
  store.m_countLimit = 4;
  host().setTracing(true);
  host().clearCalls();
  store.loadLimits();
  EXPECT_THAT(
      host().logAndTraces(),
      ElementsAre(
          trace("%s Loading event storage limits", "loadLimits"),
          trace("%s Original age limit: %d.  New age limit: %d", "loadLimits", 3, 7),
          trace("%s Original count limit: %d.  New count limit: %d", "loadLimits", 4, 1200)));
}

TYPED_TEST(QueueLimits, TraceNothingWhenTracingIsOff) {
  const TypeParam store;
  EXPECT_THAT(host().traces(), IsEmpty());
}

class LimitCheck : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    store = std::make_unique<TestEventStorage>();
    host().clearCalls();
  }
  void TearDown() override {
    if (!store->noting) store->reclaim();
    store.reset();
    EXPECT_EQ(0, LiveEvent::count);
    FakeHostTest::TearDown();
  }

  void fill(unsigned long count) {
    for (unsigned long id = 1; id <= count; ++id) store->keep(id, now());
  }

  static LogLine tooOld(unsigned long id) {
    return warning(50, "%s Event ID %lu is older than event age limit", "checkLimits", id);
  }
  static LogLine tooMany() {
    return warning(50, "%s Current event count is greater than event limit!", "checkLimits");
  }

  std::unique_ptr<TestEventStorage> store;
};

TEST_F(LimitCheck, TheCountLimitIsReachedAtEquality) {
  store->m_countLimit = 10;
  fill(10);
  EXPECT_EQ(1, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooMany()));
}

TEST_F(LimitCheck, OneEventBelowTheCountLimitIsFine) {
  store->m_countLimit = 10;
  fill(9);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(LimitCheck, AReachedCountLimitSkipsTheAgeCheck) {
  store->m_countLimit = 1;
  store->m_ageLimit = 1;
  store->keep(1, 1);
  EXPECT_EQ(1, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooMany()));
  EXPECT_THAT(store->reads, IsEmpty());
}

TEST_F(LimitCheck, BelowTheCountLimitTheAgeCheckRuns) {
  store->m_countLimit = 2;
  store->m_ageLimit = 1;
  store->keep(1, 1);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1)));
}

TEST_F(LimitCheck, ANegativeCountLimitIsNeverReached) {
  store->m_countLimit = -1;
  fill(5);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), IsEmpty());
}

TEST_F(LimitCheck, WithoutLimitsNothingIsReadOrLogged) {
  store->m_countLimit = 0;
  store->keep(1, 1);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().logAndTraces(), IsEmpty());
  EXPECT_THAT(store->reads, IsEmpty());
}

TEST_F(LimitCheck, WithoutLimitsOnlyTheFirstTraceLineIsLeft) {
  host().setTracing(true);
  store->m_countLimit = 0;
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().logAndTraces(),
              ElementsAre(trace("%s Checking event storage limits", "checkLimits")));
}

TEST_F(LimitCheck, TracesTheCountAndBothLimits) {
  host().setTracing(true);
  store->m_countLimit = 10;
  store->m_ageLimit = 3;
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(
      host().logAndTraces(),
      ElementsAre(trace("%s Checking event storage limits", "checkLimits"),
                  trace("%s Current event count: %lu.  Storage limit: %d", "checkLimits", 0ul, 10),
                  trace("%s Current event storage age limit: %d days", "checkLimits", 3)));
}

TEST_F(LimitCheck, WarnsOfEachOldEventUpToTheFirstYoungOne) {
  store->m_ageLimit = 1;
  store->keep(3, secondsAgo(2 * kDay));
  store->keep(5, secondsAgo(kDay + kDay / 2));
  store->keep(9, now());
  store->keep(12, secondsAgo(9 * kDay));
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(3), tooOld(5)));
  EXPECT_THAT(store->reads, ElementsAre(3, 5, 9));
  EXPECT_THAT(store->m_idCache, ElementsAre(3, 5, 9, 12));
}

TEST_F(LimitCheck, StopsAtTheEndOfTheQueue) {
  store->m_ageLimit = 1;
  store->keep(3, 1);
  store->keep(5, 1);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(3), tooOld(5)));
}

TEST_F(LimitCheck, AnEventJustInsideTheLimitIsYoungAndJustOutsideOld) {
  store->m_ageLimit = 2;
  store->keep(1, secondsAgo(2 * kDay + 60));
  store->keep(2, secondsAgo(2 * kDay - 60));
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1)));
}

TEST_F(LimitCheck, UnreadableEventsArePassedOverByTheAgeWalk) {
  store->m_ageLimit = 1;
  store->keep(3, 1, 4);
  store->keep(5, 1);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(
      host().log(),
      ElementsAre(error(4, "%s: removing event %lu from cache.", "getNextEvent", 3ul), tooOld(5)));
}

TEST_F(LimitCheck, ANegativeAgeLimitCallsEveryEventOld) {
  store->m_ageLimit = -1;
  store->keep(1, now());
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1)));
}

TEST_F(LimitCheck, AThresholdBeforeTheEpochCallsEveryEventOld) {
  store->m_ageLimit = 24855;
  store->keep(1, now());
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1)));
}

TEST_F(LimitCheck, AgeLimitsWrapAround32BitsOfSeconds) {
  store->m_ageLimit = 49711;  // 4295030400 seconds, of which 32 bits leave 63104
  store->keep(1, secondsAgo(63104 + 60));
  store->keep(2, secondsAgo(63104 - 60));
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1)));
}

TEST_F(LimitCheck, AgeLimitsAboveTheWrapReachIntoTheFuture) {
  store->m_ageLimit = 24856;
  store->keep(1, now());
  store->keep(2, now() + 2147408896ul + 60);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1)));
}

TEST_F(LimitCheck, TheAgeWalkDoesNotReleaseTheEventsItIsHanded) {
  store->m_ageLimit = 1;
  store->keep(1, 1);
  store->keep(2, now());
  store->checkLimits();
  EXPECT_EQ(2, LiveEvent::count);
}

TEST_F(LimitCheck, AStoreThatNotesItsEventsGetsThemReclaimed) {
  store->m_ageLimit = 1;
  store->noting = true;
  store->keep(1, 1);
  store->keep(2, 1);
  store->keep(3, now());
  EXPECT_EQ(0, store->checkLimits(store->walked));
  EXPECT_EQ(3u, store->handedOut.size());
  EXPECT_EQ(0, LiveEvent::count);
  EXPECT_EQ(nullptr, store->walked);
  EXPECT_THAT(host().log(), ElementsAre(tooOld(1), tooOld(2)));
}

TEST_F(LimitCheck, TheListOfAnOuterWalkIsPutBack) {
  store->m_ageLimit = 1;
  store->noting = true;
  store->keep(1, 1);
  TestEventStorage::WalkedEvents outer;
  store->walked = &outer;
  store->checkLimits(store->walked);
  EXPECT_EQ(&outer, store->walked);
  EXPECT_EQ(0, LiveEvent::count);
}

TEST_F(LimitCheck, EventsAreReclaimedAlsoWhenTheCountLimitIsReachedOrTheWalkThrows) {
  store->noting = true;
  store->m_countLimit = 1;
  store->keep(1, 1);
  EXPECT_EQ(1, store->checkLimits(store->walked));
  store->m_countLimit = 0;
  store->m_ageLimit = 1;
  Fault fault;
  fault.mode = FaultMode::kThrow;
  fault.call = "WarningA";
  host().inject(fault);
  EXPECT_THROW(store->checkLimits(store->walked), std::runtime_error);
  EXPECT_EQ(0, LiveEvent::count);
  EXPECT_EQ(nullptr, store->walked);
}

TEST_F(LimitCheck, NotingWithoutARunningWalkLeavesTheEventToItsReader) {
  const LiveEvent event(1, 1);
  TestEventStorage::noteWalked(nullptr, const_cast<LiveEvent*>(&event));
  EXPECT_EQ(1, LiveEvent::count);
}

TEST_F(LimitCheck, AWalkOverDamagedIdsStillEnds) {
  store->m_ageLimit = 1;
  store->keepAs(3, 0, 1);
  store->keepAs(5, 1, 1);
  store->keepAs(7, 5, 1);
  store->keep(9, 1);
  EXPECT_EQ(0, store->checkLimits());
  EXPECT_THAT(store->reads, ElementsAre(3, 5, 7, 9));
  EXPECT_EQ(4u, host().log().size());
  EXPECT_EQ(tooOld(9), host().log().back());
}

// A store whose getNextEvent() is its own: it gives the same old event for ever.
class EndlessStore : public TestEventStorage {
 public:
  int getNextEvent(unsigned long, Event** event) override {
    ++calls;
    *event = calls > 100 ? nullptr : handedOut.emplace_back(new LiveEvent(7, 1));
    return 0;
  }
  int calls = 0;
};

TEST_F(LimitCheck, AWalkThatDoesNotAdvanceEnds) {
  EndlessStore endless;
  endless.m_ageLimit = 1;
  EXPECT_EQ(0, endless.checkLimits());
  EXPECT_LE(endless.calls, 2);
  endless.reclaim();
}

// A store that fails to give a next event.
class FailingStore : public TestEventStorage {
 public:
  int getNextEvent(unsigned long, Event** event) override {
    if (++calls > 100) throw std::runtime_error("the walk did not end");
    *event = nullptr;
    return 4;
  }
  int calls = 0;
};

TEST_F(LimitCheck, AFailingWalkEndsAndLimitsNothing) {
  FailingStore failing;
  failing.m_ageLimit = 1;
  EXPECT_EQ(0, failing.checkLimits());
  EXPECT_EQ(1, failing.calls);
}

}  // namespace
}  // namespace EventSystemTest
