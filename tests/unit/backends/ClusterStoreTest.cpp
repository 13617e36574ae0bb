// Both cluster stores over the fake service: the same behaviour for the global queue and for a
// data selection's.

#include "EventSystem/ClusterDSEventStorage.h"
#include "EventSystem/ClusterEventStorage.h"
#include "EventSystem/platform/ClusterAPI.h"
#include "tests/support/Events.h"
#include "tests/support/FakeHostTest.h"
#include "tests/support/ObjectLayout.h"

namespace EventSystemTest {
namespace {

using EventSystem::ClusterDSEventStorage;
using EventSystem::ClusterEventStorage;
using EventSystem::DSEventStorage;
using EventSystem::Event;
using EventSystem::EventStorage;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct GlobalQueue {
  static constexpr unsigned int kDsid = 0;
  static constexpr const char* kName = "ClusterEventStorage";
  int read(unsigned long id, Event** event) { return store.readEvent(id, event); }
  int next(unsigned long afterId, Event** event) { return store.getNextEvent(afterId, event); }
  int write(Event* event) { return store.writeEvent(event); }
  void remove(unsigned long id) { store.deleteEvent(id); }
  ClusterEventStorage store;
};

struct SelectionQueue {
  static constexpr unsigned int kDsid = 5;
  static constexpr const char* kName = "ClusterDSEventStorage";
  int read(unsigned long id, Event** event) { return store.readEvent(id, event, kDsid); }
  int next(unsigned long afterId, Event** event) {
    return store.getNextEvent(afterId, event, kDsid);
  }
  int write(Event* event) { return store.writeEvent(event, kDsid); }
  void remove(unsigned long id) { store.deleteEvent(id, kDsid); }
  ClusterDSEventStorage store;
};

template <class Queue>
class ClusterStore : public FakeHostTest {
 protected:
  void SetUp() override {
    FakeHostTest::SetUp();
    queue = std::make_unique<Queue>();
    host().clearCalls();
  }

  void TearDown() override {
    queue.reset();
    FakeHostTest::TearDown();
  }

  static std::string dsid() { return std::to_string(Queue::kDsid); }

  static void answer(const char* call, int status) {
    Fault fault;
    fault.call = call;
    fault.status = status;
    fault.nth = 0;
    host().inject(fault);
  }

  // Puts a text into the service's queue as another member would.
  static unsigned long put(const std::string& text) {
    unsigned long id = 0;
    EXPECT_EQ(0u, ClusterAPI::instance().newEvent("queue", "other", text, 0, id, Queue::kDsid));
    return id;
  }

  std::vector<std::string> serviceCalls() { return host().clusterCalls(); }

  std::unique_ptr<Queue> queue;
};

using Queues = ::testing::Types<GlobalQueue, SelectionQueue>;
TYPED_TEST_SUITE(ClusterStore, Queues);

TYPED_TEST(ClusterStore, ConstructionOnlyTracesItsNameAndReadsTheLimits) {
  host().setTracing(true);
  host().clearCalls();
  const TypeParam built;
  EXPECT_THAT(this->serviceCalls(), IsEmpty());
  EXPECT_EQ(trace("%s", TypeParam::kName), host().logAndTraces().back());
}

TYPED_TEST(ClusterStore, HandsTheEventStringToTheService) {
  const std::unique_ptr<Event> event = newCapacityEvent();
  const std::string text = textOf(*event);
  EXPECT_EQ(0, this->queue->write(event.get()));
  EXPECT_THAT(this->serviceCalls(), ElementsAre("ClusterAPI::newEvent(queue, member, " + text +
                                                ", 0, " + this->dsid() + ")"));
  EXPECT_EQ(0u, event->getId()) << "the service's id is not the caller's";
  EXPECT_EQ(text, host().clusterQueue(TypeParam::kDsid).at(1).text);
  EXPECT_THAT(host().log(), IsEmpty());
}

TYPED_TEST(ClusterStore, PassesAnEventsOwnIdOn) {
  const std::unique_ptr<Event> event = parsed(capacityText(17, 1));
  EXPECT_EQ(0, this->queue->write(event.get()));
  EXPECT_EQ(1u, host().clusterQueue(TypeParam::kDsid).count(17));
}

TYPED_TEST(ClusterStore, TracesTheNameOfEachOperation) {
  host().setTracing(true);
  const std::unique_ptr<Event> event = newCapacityEvent();
  this->queue->write(event.get());
  EXPECT_THAT(host().logAndTraces(), ElementsAre(trace("%s", "writeEvent")));
  host().clearCalls();
  Event* found = nullptr;
  this->queue->next(1, &found);
  ASSERT_EQ(2u, host().logAndTraces().size());
  EXPECT_EQ(trace("%s", "getNextEvent"), host().logAndTraces()[0]);
  host().clearCalls();
  this->queue->remove(1);
  EXPECT_THAT(host().logAndTraces(), ElementsAre(trace("%s", "deleteEvent")));
}

TYPED_TEST(ClusterStore, AServiceThatRefusesOrGivesNoIdFailsTheWrite) {
  const std::unique_ptr<Event> event = newCapacityEvent();
  for (const int status : {0, 7}) {
    host().clearFaults();
    host().clearCalls();
    this->answer("ClusterAPI::newEvent", status);
    EXPECT_EQ(4, this->queue->write(event.get()));
    EXPECT_THAT(host().log(), ElementsAre(error(4, "%s Failed to write event", "writeEvent")));
  }
}

TYPED_TEST(ClusterStore, RefusesANullEvent) {
  EXPECT_EQ(9, this->queue->write(nullptr));
  EXPECT_THAT(this->serviceCalls(), IsEmpty());
  EXPECT_EQ(1u, host().log().size());
}

TYPED_TEST(ClusterStore, WalksWithTheServicesIds) {
  const unsigned long id = this->put(capacityText(99, 1700000000));
  Event* found = nullptr;
  EXPECT_EQ(0, this->queue->next(0, &found));
  const std::unique_ptr<Event> event(found);
  ASSERT_NE(nullptr, event);
  EXPECT_EQ(id, event->getId());
  EXPECT_EQ(1700000000u, event->getDate());
  EXPECT_THAT(host().log(), IsEmpty());
}

TYPED_TEST(ClusterStore, TheEndOfTheQueueIsNullAndLogged) {
  TextEvent stale("stale");
  Event* found = &stale;
  EXPECT_EQ(0, this->queue->next(12, &found));
  EXPECT_EQ(nullptr, found);
  EXPECT_THAT(this->serviceCalls(),
              ElementsAre("ClusterAPI::getNextEvent(queue, 12, " + this->dsid() + ")"));
  EXPECT_THAT(host().log(),
              ElementsAre(info(2,
                               "%s No event exists in the database with event id greater "
                               "than: %lu",
                               "getNextEvent", 12ul)));
}

TYPED_TEST(ClusterStore, AServiceThatFailsEndsTheWalkWithFour) {
  this->answer("ClusterAPI::getNextEvent", 7);
  TextEvent stale("stale");
  Event* found = &stale;
  EXPECT_EQ(4, this->queue->next(0, &found));
  EXPECT_EQ(nullptr, found);
  EXPECT_THAT(host().log(), ElementsAre(error(4, "%s Failed to get next event", "getNextEvent")));
}

TYPED_TEST(ClusterStore, AnUnreadableEventIsDeletedAtTheService) {
  const unsigned long id = this->put("nonsense");
  host().clearCalls();
  Event* found = nullptr;
  EXPECT_EQ(9, this->queue->next(0, &found));
  EXPECT_EQ(nullptr, found);
  EXPECT_EQ(error(4, "%s The event record for id %lu retrieved from the database is unreadable: %s",
                  "getNextEvent", id, "nonsense"),
            host().log().back());
  EXPECT_THAT(host().clusterQueue(TypeParam::kDsid), IsEmpty());
}

TYPED_TEST(ClusterStore, RefusesANullOutput) {
  EXPECT_EQ(9, this->queue->next(0, nullptr));
  EXPECT_THAT(this->serviceCalls(), IsEmpty());
}

TYPED_TEST(ClusterStore, DeletesAtTheService) {
  const unsigned long id = this->put(capacityText(1, 1));
  host().clearCalls();
  this->queue->remove(id);
  EXPECT_THAT(this->serviceCalls(),
              ElementsAre("ClusterAPI::deleteEventById(queue, 1, " + this->dsid() + ")"));
  EXPECT_THAT(host().clusterQueue(TypeParam::kDsid), IsEmpty());
  EXPECT_THAT(host().log(), IsEmpty());
}

TYPED_TEST(ClusterStore, AFailedDeleteIsLoggedOnly) {
  this->answer("ClusterAPI::deleteEventById", 7);
  this->queue->remove(3);
  EXPECT_THAT(host().log(), ElementsAre(error(4, "%s Error deleting event", "deleteEvent")));
}

TYPED_TEST(ClusterStore, ReadingByIdIsNotSupported) {
  TextEvent stale("stale");
  Event* found = &stale;
  for (const unsigned long id : {0ul, 1ul, ~0ul}) {
    EXPECT_EQ(4, this->queue->read(id, &found));
    EXPECT_EQ(&stale, found) << "left alone";
  }
  EXPECT_THAT(host().calls(), IsEmpty());
}

TYPED_TEST(ClusterStore, HasNothingToCheckOrToCache) {
  EXPECT_EQ(0, this->queue->store.checkConsistency(true));
  EXPECT_EQ(0, this->queue->store.checkConsistency(false));
  EXPECT_EQ(0, this->queue->store.populateIdCache());
  EXPECT_THAT(host().calls(), IsEmpty());
}

TYPED_TEST(ClusterStore, CatchesNothingThatTheServiceThrows) {
  Fault fault;
  fault.mode = FaultMode::kThrow;
  fault.kinds = {CallKind::kCluster};
  fault.nth = 0;
  host().inject(fault);
  const std::unique_ptr<Event> event = newCapacityEvent();
  Event* found = nullptr;
  EXPECT_THROW(this->queue->write(event.get()), std::runtime_error);
  EXPECT_THROW(this->queue->next(0, &found), std::runtime_error);
  EXPECT_EQ(nullptr, found);
  EXPECT_THROW(this->queue->remove(1), std::runtime_error);
}

TYPED_TEST(ClusterStore, WritesMoreThanTheCountLimit) {
  FakeConfiguration configuration;
  configuration.countLimit = 1;
  host().configure(configuration);
  TypeParam limited;
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(0, limited.write(event.get()));
  EXPECT_EQ(0, limited.write(event.get()));
}

class ClusterDSEventStorageTest : public FakeHostTest {
 protected:
  ClusterDSEventStorage m_store;
};

TEST_F(ClusterDSEventStorageTest, KeepsDataSelectionsApart) {
  const std::unique_ptr<Event> event = newCapacityEvent();
  EXPECT_EQ(0, m_store.writeEvent(event.get(), 3));
  EXPECT_EQ(1u, host().clusterQueue(3).size());
  EXPECT_THAT(host().clusterQueue(4), IsEmpty());
  m_store.deleteDataSelection(3);
  EXPECT_EQ(1u, host().clusterQueue(3).size());
}

TEST_F(ClusterDSEventStorageTest, TheFirstDsidComesFromTheDatabase) {
  unsigned int dsid = 7;
  EXPECT_EQ(72, m_store.getFirstDsid(dsid));
  EXPECT_EQ(0u, dsid);
  host().table("dataselection").put({"6", "9"});
  EXPECT_EQ(0, m_store.getFirstDsid(dsid));
  EXPECT_EQ(6u, dsid);
  host().dropTable("dataselection");
  EXPECT_EQ(67, m_store.getFirstDsid(dsid));
  EXPECT_EQ(0u, dsid);
}

TEST(ClusterStoreLayout, AddsNothingToItsBase) {
  EXPECT_EQ(sizeof(EventStorage), sizeof(ClusterEventStorage));
  EXPECT_EQ(sizeof(DSEventStorage), sizeof(ClusterDSEventStorage));
  EXPECT_EQ(vtableSize("EventStorage"), vtableSize("ClusterEventStorage"));
  EXPECT_EQ(vtableSize("DSEventStorage"), vtableSize("ClusterDSEventStorage"));
}

}  // namespace
}  // namespace EventSystemTest
