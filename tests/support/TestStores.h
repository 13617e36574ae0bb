// Small concrete stores over the two store bases, with everything that is protected there made
// public, and with results and exceptions that a test scripts.
//
// Thread safety: none.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_TESTSTORES_H
#define EVENTSYSTEM_TESTS_SUPPORT_TESTSTORES_H

#include <functional>
#include <map>
#include <vector>

#include "EventSystem/DSEventStorage.h"
#include "EventSystem/EventStorage.h"
#include "tests/support/Events.h"

namespace EventSystemTest {

// One event of a test store: what reading it does.
struct StoredEvent {
  unsigned long ownId = 0;  // the id that the event carries, mostly the one it is kept under
  unsigned long date = 0;
  int result = 0;  // of readEvent; not 0: no event
};

// The global store's base with a map of events behind it.
class TestEventStorage : public EventSystem::EventStorage {
 public:
  using EventStorage::addIdToCache;
  using EventStorage::assignEventId;
  using EventStorage::checkLimits;
  using EventStorage::getNextId;
  using EventStorage::loadLimits;
  using EventStorage::m_ageLimit;
  using EventStorage::m_countLimit;
  using EventStorage::m_idCache;
  using EventStorage::m_maxId;
  using EventStorage::noteWalked;
  using EventStorage::removeIdFromCache;
  using EventStorage::WalkedEvents;

  // Keeps an event and its id.
  void keep(unsigned long id, unsigned long date, int result = 0) { keepAs(id, id, date, result); }
  void keepAs(unsigned long id, unsigned long ownId, unsigned long date, int result = 0) {
    events[id] = StoredEvent{ownId, date, result};
    addIdToCache(id);
    if (id > m_maxId) m_maxId = id;
  }

  int readEvent(unsigned long id, EventSystem::Event** event) override {
    reads.push_back(id);
    const StoredEvent& stored = events.at(id);
    if (stored.result != 0) return stored.result;
    *event = handedOut.emplace_back(new LiveEvent(stored.ownId, stored.date));
    if (noting) noteWalked(walked, *event);
    return 0;
  }
  int writeEvent(EventSystem::Event*) override { return 0; }
  void deleteEvent(unsigned long) override {}
  int checkConsistency(bool) override { return 0; }
  int populateIdCache() override { return 0; }

  // Deletes what was handed out; only for events that nobody else deletes.
  void reclaim() {
    for (EventSystem::Event* event : handedOut) delete event;
    handedOut.clear();
  }

  std::map<unsigned long, StoredEvent> events;
  std::vector<unsigned long> reads;
  std::vector<EventSystem::Event*> handedOut;  // not owned
  WalkedEvents* walked = nullptr;
  bool noting = false;
};

// The data-selection store's base, as above.
class TestDSEventStorage : public EventSystem::DSEventStorage {
 public:
  using DSEventStorage::addIdToCache;
  using DSEventStorage::assignEventId;
  using DSEventStorage::checkLimits;
  using DSEventStorage::getNextId;
  using DSEventStorage::loadLimits;
  using DSEventStorage::m_ageLimit;
  using DSEventStorage::m_countLimit;
  using DSEventStorage::m_idCaches;
  using DSEventStorage::m_maxIds;
  using DSEventStorage::removeIdFromCache;

  int readEvent(unsigned long id, EventSystem::Event** event, unsigned int dsid) override {
    reads.push_back({id, dsid});
    const auto failure = failures.find(id);
    if (failure != failures.end()) return failure->second;
    *event = new LiveEvent(id, 1);
    return 0;
  }
  int writeEvent(EventSystem::Event*, unsigned int) override { return 0; }
  void deleteEvent(unsigned long, unsigned int) override {}
  void deleteDataSelection(unsigned int) override {}
  int checkConsistency(bool) override { return 0; }
  int getFirstDsid(unsigned int& dsid) override { return static_cast<int>(dsid = 0); }
  int populateIdCache() override { return 0; }

  std::map<unsigned long, int> failures;  // results of readEvent by id
  std::vector<std::pair<unsigned long, unsigned int> > reads;
};

}  // namespace EventSystemTest

#endif
