// What a host compiled against version 1 relies on: sizes, member order, and virtual tables.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "EventSystem/EventManager.h"
#include "EventSystem/HashEventStorage.h"
#include "EventSystem/OrbDBDSEventStorage.h"
#include "EventSystem/OrbDBEventStorage.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/PrivateAccess.h"

namespace EventSystemTest {

using EventSystem::DSEventStorage;
using EventSystem::Event;
using EventSystem::EventManager;
using EventSystem::EventStorage;
using EventSystem::HashEventStorage;
using EventSystem::OrbDBDSEventStorage;
using EventSystem::OrbDBEventStorage;

typedef std::map<unsigned int, unsigned long> Highest;
typedef std::map<unsigned int, std::set<unsigned long> > Caches;
typedef std::map<unsigned int, long> Times;
typedef std::map<unsigned long, std::shared_ptr<Event> > SharedEvents;
typedef char AuditPath[4096];

EVENTSYSTEM_TEST_ACCESS(AgeLimit, int EventStorage::*, &EventStorage::m_ageLimit)
EVENTSYSTEM_TEST_ACCESS(CountLimit, int EventStorage::*, &EventStorage::m_countLimit)
EVENTSYSTEM_TEST_ACCESS(MaxId, unsigned long EventStorage::*, &EventStorage::m_maxId)
EVENTSYSTEM_TEST_ACCESS(IdCache, std::set<unsigned long> EventStorage::*, &EventStorage::m_idCache)
EVENTSYSTEM_TEST_ACCESS(DSAgeLimit, int DSEventStorage::*, &DSEventStorage::m_ageLimit)
EVENTSYSTEM_TEST_ACCESS(DSCountLimit, int DSEventStorage::*, &DSEventStorage::m_countLimit)
EVENTSYSTEM_TEST_ACCESS(DSMaxIds, Highest DSEventStorage::*, &DSEventStorage::m_maxIds)
EVENTSYSTEM_TEST_ACCESS(DSIdCaches, Caches DSEventStorage::*, &DSEventStorage::m_idCaches)
EVENTSYSTEM_TEST_ACCESS(HashEvents, SharedEvents HashEventStorage::*, &HashEventStorage::m_events)
EVENTSYSTEM_TEST_ACCESS(Initialized, bool OrbDBEventStorage::*, &OrbDBEventStorage::m_initialized)
EVENTSYSTEM_TEST_ACCESS(AuditDbPath, AuditPath OrbDBEventStorage::*,
                        &OrbDBEventStorage::m_auditDbPath)
EVENTSYSTEM_TEST_ACCESS(DSInitialized, bool OrbDBDSEventStorage::*,
                        &OrbDBDSEventStorage::m_initialized)
EVENTSYSTEM_TEST_ACCESS(Mutex, pthread_mutex_t EventManager::*, &EventManager::m_mutex)
EVENTSYSTEM_TEST_ACCESS(Store, EventStorage* EventManager::*, &EventManager::m_eventStorage)
EVENTSYSTEM_TEST_ACCESS(DSStore, DSEventStorage* EventManager::*, &EventManager::m_dsEventStorage)
EVENTSYSTEM_TEST_ACCESS(AccessTimes, Times EventManager::*, &EventManager::m_accessTimes)
EVENTSYSTEM_TEST_ACCESS(OrigDsid, unsigned int EventManager::*, &EventManager::m_orig_dsid)

namespace {

using ::testing::ElementsAre;

TEST(ObjectLayout, SizesOfThePublicClassesAreFixed) {
  EXPECT_EQ(72u, sizeof(EventStorage));
  EXPECT_EQ(112u, sizeof(DSEventStorage));
  EXPECT_EQ(128u, sizeof(HashEventStorage));
  EXPECT_EQ(4184u, sizeof(OrbDBEventStorage));
  EXPECT_EQ(120u, sizeof(OrbDBDSEventStorage));
  EXPECT_EQ(112u, sizeof(EventManager));
}

TEST(ObjectLayout, TheStoreBasesKeepTheirMembersInOrder) {
  EXPECT_EQ(8u, memberOffset(access(AgeLimit())));
  EXPECT_EQ(12u, memberOffset(access(CountLimit())));
  EXPECT_EQ(16u, memberOffset(access(MaxId())));
  EXPECT_EQ(24u, memberOffset(access(IdCache())));
  EXPECT_EQ(8u, memberOffset(access(DSAgeLimit())));
  EXPECT_EQ(12u, memberOffset(access(DSCountLimit())));
  EXPECT_EQ(16u, memberOffset(access(DSMaxIds())));
  EXPECT_EQ(64u, memberOffset(access(DSIdCaches())));
}

TEST(ObjectLayout, TheConcreteStoresKeepTheirMembersInOrder) {
  EXPECT_EQ(72u, memberOffset(access(HashEvents())));
  EXPECT_EQ(72u, memberOffset(access(Initialized())));
  EXPECT_EQ(73u, memberOffset(access(AuditDbPath())));
  EXPECT_EQ(112u, memberOffset(access(DSInitialized())));
}

TEST(ObjectLayout, TheManagerKeepsItsMembersInOrder) {
  EXPECT_EQ(0u, memberOffset(access(Mutex())));
  EXPECT_EQ(40u, memberOffset(access(Store())));
  EXPECT_EQ(48u, memberOffset(access(DSStore())));
  EXPECT_EQ(56u, memberOffset(access(AccessTimes())));
  EXPECT_EQ(104u, memberOffset(access(OrigDsid())));
}

TEST(ObjectLayout, TheManagerHasNoVirtualFunction) {
  EXPECT_FALSE(std::is_polymorphic_v<EventManager>);
  EXPECT_EQ(kNotVirtual, vtableSlot(&EventManager::newEvent));
}

// The places of the operations that the global store's interface fixes.
template <typename Store>
std::vector<std::size_t> globalSlots() {
  return {vtableSlot<Store>(&Store::readEvent),        vtableSlot<Store>(&Store::getNextEvent),
          vtableSlot<Store>(&Store::writeEvent),       vtableSlot<Store>(&Store::deleteEvent),
          vtableSlot<Store>(&Store::checkConsistency), vtableSlot<Store>(&Store::populateIdCache)};
}

template <typename Store>
std::vector<std::size_t> dataSelectionSlots() {
  return {
      vtableSlot<Store>(&Store::readEvent),           vtableSlot<Store>(&Store::getNextEvent),
      vtableSlot<Store>(&Store::writeEvent),          vtableSlot<Store>(&Store::deleteEvent),
      vtableSlot<Store>(&Store::deleteDataSelection), vtableSlot<Store>(&Store::checkConsistency),
      vtableSlot<Store>(&Store::getFirstDsid),        vtableSlot<Store>(&Store::populateIdCache)};
}

TEST(VirtualTables, TheGlobalStoresShareOneOrder) {
  EXPECT_THAT(globalSlots<EventStorage>(), ElementsAre(2, 3, 4, 5, 6, 7));
  EXPECT_THAT(globalSlots<OrbDBEventStorage>(), ElementsAre(2, 3, 4, 5, 6, 7));
  EXPECT_EQ(8u, vtableSlot(&OrbDBEventStorage::getNextEventID));
}

TEST(VirtualTables, TheDataSelectionStoresShareOneOrder) {
  EXPECT_THAT(dataSelectionSlots<DSEventStorage>(), ElementsAre(2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_EQ(10u, vtableSlot(&OrbDBDSEventStorage::getNextEventID));
}

TEST(VirtualTables, HoldNothingElse) {
  EXPECT_EQ(8u, vtableSize("EventStorage"));
  EXPECT_EQ(10u, vtableSize("DSEventStorage"));
  EXPECT_EQ(8u, vtableSize("HashEventStorage"));
  EXPECT_EQ(9u, vtableSize("OrbDBEventStorage"));
  EXPECT_EQ(11u, vtableSize("OrbDBDSEventStorage"));
}

TEST(VirtualTables, ServicesForStoresAreNotVirtual) {
  EXPECT_EQ(kNotVirtual, vtableSlot(&OrbDBEventStorage::getNewID));
  EXPECT_EQ(kNotVirtual, vtableSlot(&OrbDBEventStorage::PopuAuditEventDB));
  EXPECT_EQ(kNotVirtual, vtableSlot(&OrbDBDSEventStorage::getNewID));
  EXPECT_EQ(kNotVirtual, vtableSlot(&OrbDBDSEventStorage::getMaxIdInDB));
  EXPECT_EQ(kNotVirtual, vtableSlot(&OrbDBDSEventStorage::setMaxIdInDB));
  EXPECT_EQ(kNotVirtual, vtableSlot(&HashEventStorage::getMaxId));
  EXPECT_EQ(kNotVirtual, vtableSlot(&HashEventStorage::setMaxId));
}

}  // namespace
}  // namespace EventSystemTest
