// Subscribers.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/eventd/queue/Inbox.h"
#include "tests/eventd/queue/ServiceFixture.h"

namespace EventSystemTest {
namespace {

using EventApps::Subscription;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Subscribe : public ServiceTest {
 protected:
  std::optional<Subscription> subscribe(Inbox& inbox, std::optional<unsigned long> after,
                                        std::set<int> types = {}, unsigned int dsid = 0) {
    return inbox.subscribe(service(), after, std::move(types), dsid);
  }

  static Ids upTo(unsigned long last) {
    Ids ids;
    for (unsigned long id = 1; id <= last; ++id) ids.push_back(id);
    return ids;
  }

  Inbox m_inbox;
  Inbox m_other;
};

TEST_F(Subscribe, GetsWhatArrivesFromNowOn) {
  start();
  store(manyEvents(3));
  const auto subscription = subscribe(m_inbox, std::nullopt);
  // The subscriber has begun when one that came behind it has.
  const auto behind = subscribe(m_other, 0);
  ASSERT_TRUE(m_other.has(3));
  store(manyEvents(2));
  ASSERT_TRUE(m_inbox.has(2));
  EXPECT_THAT(m_inbox.ids(), ElementsAre(4, 5));
}

TEST_F(Subscribe, GetsEverythingAfterAnIdOnceAndInOrder) {
  limits.keptEvents = 10;
  start();
  store(manyEvents(1000));
  std::thread writer([&] {
    for (int i = 0; i < 200; ++i) storeOne();
  });
  const auto subscription = subscribe(m_inbox, 0);
  writer.join();
  ASSERT_TRUE(m_inbox.has(1200));
  EXPECT_EQ(m_inbox.ids(), upTo(1200));
}

TEST_F(Subscribe, GetsNoMoreThanItWants) {
  limits.keptEvents = 10;
  start();
  m_inbox.wantMore(false);
  const auto subscription = subscribe(m_inbox, 0);
  const auto other = subscribe(m_other, 0);
  for (int i = 0; i < 100; ++i) storeOne();
  ASSERT_TRUE(m_other.has(100));
  EXPECT_EQ(m_inbox.ids().size(), 1u) << "the first delivery stopped it";
  m_inbox.wantMore(true);
  subscription->resume();
  ASSERT_TRUE(m_inbox.has(100));
  EXPECT_EQ(m_inbox.ids(), upTo(100)) << "though memory holds ten events";
  storeOne();
  ASSERT_TRUE(m_inbox.has(101));
}

TEST_F(Subscribe, GetsItsTypesAndItsQueueOnly) {
  start();
  addDataSelection(5);
  Events events = manyEvents(2);
  events.push_back(auditEvent("old"));
  store(std::move(events));
  const auto audits = subscribe(m_inbox, 0, {EventSystem::kAuditEvent});
  const auto selection = subscribe(m_other, 0, {}, 5);
  storeOne();
  storeOne("a", 5);
  events = manyEvents(1);
  events.push_back(auditEvent("new"));
  store(std::move(events));
  ASSERT_TRUE(m_inbox.has(2));
  EXPECT_THAT(m_inbox.ids(), ElementsAre(3, 6));
  ASSERT_TRUE(m_other.has(1));
  EXPECT_THAT(m_other.ids(), ElementsAre(1));
}

TEST_F(Subscribe, EndsWithItsHandle) {
  start();
  {
    const auto subscription = subscribe(m_inbox, 0);
    const auto other = subscribe(m_other, 0);
    storeOne();
    ASSERT_TRUE(m_inbox.has(1));
    ASSERT_TRUE(m_other.has(1));
    EXPECT_EQ(service().counters().subscribers, 2u);
  }
  EXPECT_TRUE(eventually([&] { return service().counters().subscribers == 0; }));
  storeOne();
  EXPECT_EQ(idsAfter(0).size(), 2u);
  EXPECT_EQ(m_inbox.ids().size(), 1u);
  EXPECT_EQ(m_inbox.why(), "");
}

// As long as one search of everything takes, and not as long as forty.
TEST_F(Subscribe, IsNotReadForWhenItHasGone) {
  constexpr int kAbandoned = 40;
  limits.keptEvents = 1;
  start();
  store(manyEvents(3000));
  const EventApps::ReadRequest search{0, 0, 10, {EventSystem::kAuditEvent}, {}};
  const auto timeOfSearch = [&] {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(read(search).events, IsEmpty());
    return std::chrono::steady_clock::now() - begin;
  };
  const auto alone = timeOfSearch();
  std::vector<std::optional<Subscription>> abandoned;
  for (int i = 0; i < kAbandoned; ++i) {
    abandoned.push_back(subscribe(m_inbox, 0, {EventSystem::kAuditEvent}));
  }
  // They have begun when this is answered.
  answerOf<EventApps::FindResult>([&](auto done) { service().find(1, 0, std::move(done)); });
  abandoned.clear();
  EXPECT_LT(timeOfSearch(), kAbandoned / 4 * alone);
}

// Whoever reads on from far back has one slice after the other, and others have theirs.
TEST_F(Subscribe, TakesTurnsWithOthersWhoReadOn) {
  limits.keptEvents = 1;
  limits.longReads = 1;
  start();
  Events events = manyEvents(5000);
  events.push_back(auditEvent("far"));
  store(std::move(events));
  const auto far = subscribe(m_inbox, 0, {EventSystem::kAuditEvent});
  const auto near = subscribe(m_other, 4990);
  ASSERT_TRUE(m_other.has(11));
  EXPECT_THAT(m_inbox.ids(), IsEmpty()) << "near waited until far was through";
  ASSERT_TRUE(m_inbox.has(1));
}

TEST_F(Subscribe, IsToldThatTheServiceEnds) {
  start();
  const auto subscription = subscribe(m_inbox, 0);
  storeOne();
  ASSERT_TRUE(m_inbox.has(1));
  stop();
  EXPECT_NE(m_inbox.why(), "");
  subscription->resume();
}

TEST_F(Subscribe, IsRefusedWhenThereAreTooMany) {
  limits.waiting = 1;
  start();
  {
    const auto first = subscribe(m_inbox, 0);
    EXPECT_TRUE(first);
    EXPECT_FALSE(subscribe(m_other, 0));
    EXPECT_FALSE(service().read({0, 0, 10, {}, std::chrono::hours(1)}, [](const auto&) {}))
        << "a subscriber has the place of a reader that waits";
  }
  EXPECT_TRUE(eventually([&] { return service().counters().waitingReaders == 0; }));
  service().read({0, 0, 10, {}, std::chrono::hours(1)}, [](const auto&) {});
  EXPECT_FALSE(subscribe(m_other, 0)) << "and the other way round";
}

TEST_F(Subscribe, GetsAuditRecords) {
  limits.lookForAuditRows = std::chrono::milliseconds(10);
  start();
  const auto subscription = subscribe(m_inbox, std::nullopt);
  for (int row = 1; row <= 3; ++row) {
    leaveAuditRecord("row " + std::to_string(row));
    ASSERT_TRUE(m_inbox.has(static_cast<std::size_t>(row)));
  }
  EXPECT_EQ(m_inbox.ids(), upTo(3));
  EXPECT_EQ(service().counters().auditImports, 3u);
}

TEST_F(Subscribe, GetsAuditRecordsInOrderWithOtherEvents) {
  start();
  const auto subscription = subscribe(m_inbox, 0);
  for (int row = 1; row <= 20; ++row) {
    leaveAuditRecord("row " + std::to_string(row));
    read({0, 0, 1, {}, {}});  // takes it in, and does not come to it
    storeOne();
  }
  ASSERT_TRUE(m_inbox.has(40));
  EXPECT_EQ(m_inbox.ids(), upTo(40));
}

TEST_F(Subscribe, DoesNotGetFromMemoryWhatWasRemoved) {
  start();
  store(manyEvents(5));
  remove(3);
  const auto subscription = subscribe(m_inbox, 0);
  ASSERT_TRUE(m_inbox.has(4));
  EXPECT_THAT(m_inbox.ids(), ElementsAre(1, 2, 4, 5));
}

}  // namespace
}  // namespace EventSystemTest
