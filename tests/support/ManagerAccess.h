// The manager's private members, for tests.
//
// Thread safety: pure functions.

#ifndef EVENTSYSTEM_TESTS_SUPPORT_MANAGERACCESS_H
#define EVENTSYSTEM_TESTS_SUPPORT_MANAGERACCESS_H

#include <pthread.h>

#include <map>

#include "EventSystem/DSEventStorage.h"
#include "EventSystem/EventManager.h"
#include "EventSystem/EventStorage.h"
#include "tests/support/PrivateAccess.h"

namespace EventSystemTest {

typedef std::map<unsigned int, long> AccessTimeMap;

EVENTSYSTEM_TEST_ACCESS(ManagerMutex, pthread_mutex_t EventSystem::EventManager::*,
                        &EventSystem::EventManager::m_mutex)
EVENTSYSTEM_TEST_ACCESS(ManagerStore, EventSystem::EventStorage* EventSystem::EventManager::*,
                        &EventSystem::EventManager::m_eventStorage)
EVENTSYSTEM_TEST_ACCESS(ManagerDSStore, EventSystem::DSEventStorage* EventSystem::EventManager::*,
                        &EventSystem::EventManager::m_dsEventStorage)
EVENTSYSTEM_TEST_ACCESS(ManagerAccessTimes, AccessTimeMap EventSystem::EventManager::*,
                        &EventSystem::EventManager::m_accessTimes)
EVENTSYSTEM_TEST_ACCESS(ManagerOrigDsid, unsigned int EventSystem::EventManager::*,
                        &EventSystem::EventManager::m_orig_dsid)
EVENTSYSTEM_TEST_ACCESS(ManagerInstance, EventSystem::EventManager**,
                        &EventSystem::EventManager::instance)

// Destroys the process's manager, so that the next getInstance() makes a new one.
inline void forgetInstance() {
  EventSystem::EventManager*& instance = *access(ManagerInstance());
  delete instance;
  instance = nullptr;
}

// Whether nobody holds the manager's mutex.
inline bool isFree(EventSystem::EventManager& manager) {
  pthread_mutex_t& mutex = manager.*access(ManagerMutex());
  if (pthread_mutex_trylock(&mutex) != 0) return false;
  pthread_mutex_unlock(&mutex);
  return true;
}

}  // namespace EventSystemTest

#endif
