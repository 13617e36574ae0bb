#include "EventSystem/EventManager.h"

#include <exception>
#include <memory>

#include "ConstructionWatch.h"
#include "EventSystem/ClusterDSEventStorage.h"
#include "EventSystem/ClusterEventStorage.h"
#include "EventSystem/DSEventStorage.h"
#include "EventSystem/EventStorage.h"
#include "EventSystem/OrbDBDSEventStorage.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostClock.h"
#include "EventSystem/platform/HostConfig.h"
#include "EventSystem/platform/HostLog.h"
#include "Upgrade.h"

namespace EventSystem {
namespace {

constexpr int kLogCode = -1;
constexpr unsigned int kOriginalDsid = 2;
constexpr int kIdleSeconds = 600;

class MutexLock {
 public:
  explicit MutexLock(pthread_mutex_t& mutex) : m_mutex(mutex) { pthread_mutex_lock(&m_mutex); }
  ~MutexLock() { pthread_mutex_unlock(&m_mutex); }
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

 private:
  pthread_mutex_t& m_mutex;
};

// Runs one store's check; false when it threw, which is logged.
template <class Store>
bool checkStore(Store& store, bool fix, int& problems) {
  constexpr char kFunction[] = "checkConsistency";
  try {
    problems = store.checkConsistency(fix);
    return true;
  } catch (const std::exception& exception) {
    ErrorA(kLogCode, "%s An exception was thrown while checking consistency: %s", kFunction,
           exception.what());
  } catch (...) {
    ErrorA(kLogCode, "%s An exception was thrown while checking consistency!", kFunction);
  }
  return false;
}

}  // namespace

EventManager* EventManager::instance = nullptr;

EventManager* EventManager::getInstance() {
  if (instance == nullptr) {
    const ConstructionWatch watch;
    auto manager = std::make_unique<EventManager>();
    ConstructionWatch::expectNone(instance);
    instance = manager.release();
  }
  return instance;
}

EventManager::EventManager()
    : m_mutex(), m_eventStorage(nullptr), m_dsEventStorage(nullptr), m_orig_dsid(0) {
  const ConstructionWatch watch;
  std::unique_ptr<EventStorage> eventStorage;
  std::unique_ptr<DSEventStorage> dsEventStorage;
  if (configManager.clusterMode != 0) {
    eventStorage = std::make_unique<ClusterEventStorage>();
    UpgradeSource database;
    copyQueue(database, *eventStorage);
    dsEventStorage = std::make_unique<ClusterDSEventStorage>();
  } else {
    eventStorage = std::make_unique<OrbDBEventStorage>();
    dsEventStorage = std::make_unique<OrbDBDSEventStorage>();
  }

  m_orig_dsid = kOriginalDsid;
  InfoA(kLogCode, "%s m_orig_dsid = %d", __func__, static_cast<int>(m_orig_dsid));
  pthread_mutex_init(&m_mutex, nullptr);
  m_eventStorage = eventStorage.release();
  m_dsEventStorage = dsEventStorage.release();
}

EventManager::~EventManager() {
  delete m_eventStorage;
  delete m_dsEventStorage;
  pthread_mutex_destroy(&m_mutex);
}

bool EventManager::isGlobal(unsigned int dsid) const {
  return dsid == 0 || dsid == m_orig_dsid;
}

int EventManager::newEvent(Event* event, unsigned int dsid) {
  if (event == nullptr) {
    ErrorA(kLogCode, "%s New event is NULL!", __func__);
    return kGeneralFailure;
  }
  InfoA(kLogCode, "%s Adding new event. type:%d, dsid:%d", __func__,
        static_cast<int>(event->getType()), static_cast<int>(dsid));
  const MutexLock lock(m_mutex);
  int result = kStoreFailure;
  try {
    result = isGlobal(dsid) ? m_eventStorage->writeEvent(event)
                            : m_dsEventStorage->writeEvent(event, dsid);
  } catch (const std::exception& exception) {
    ErrorA(kLogCode, "%s Unable to write event to event storage: %s", __func__, exception.what());
    return kStoreFailure;
  } catch (...) {
    ErrorA(kLogCode, "%s Unable to write event to event storage!", __func__);
    return kStoreFailure;
  }
  if (result != kSuccess) {  // the same words for both stores
    ErrorA(kLogCode, "%s Unable to write event for data selection (%d) to dsevent storage.",
           __func__, static_cast<int>(dsid));
  }
  return result;
}

int EventManager::getNextEvent(unsigned long afterId, Event** event, unsigned int dsid) {
  if (event == nullptr) {
    ErrorA(kLogCode, "%s The event pointer is NULL.", __func__);
    return kGeneralFailure;
  }
  InfoA(kLogCode, "%s [dsid=%d] Getting the next event after (%lu)", __func__,
        static_cast<int>(dsid), afterId);
  const MutexLock lock(m_mutex);
  int result = kStoreFailure;
  try {
    result = isGlobal(dsid) ? m_eventStorage->getNextEvent(afterId, event)
                            : m_dsEventStorage->getNextEvent(afterId, event, dsid);
  } catch (const std::exception& exception) {
    ErrorA(kLogCode, "%s Unable to get next event from event storage: %s", __func__,
           exception.what());
    return kStoreFailure;
  } catch (...) {
    ErrorA(kLogCode, "%s Unable to get next event from event storage!", __func__);
    return kStoreFailure;
  }
  if (result != kSuccess) {
    ErrorA(kLogCode, "%s Unable to get next event from event storage: %d", __func__, result);
  }
  return result;
}

void EventManager::deleteEvent(unsigned long id, unsigned int dsid) {
  InfoA(kLogCode, "%s [dsid=%d] Deleting event(%lu)", __func__, static_cast<int>(dsid), id);
  const MutexLock lock(m_mutex);
  try {
    if (isGlobal(dsid)) {
      m_eventStorage->deleteEvent(id);
    } else {
      m_dsEventStorage->deleteEvent(id, dsid);
    }
  } catch (const std::exception& exception) {
    ErrorA(kLogCode, "%s Unable to delete event %lu in event storage: %s", __func__, id,
           exception.what());
  } catch (...) {
    ErrorA(kLogCode, "%s Unable to delete event %lu in event storage!", __func__, id);
  }
}

int EventManager::checkConsistency(bool fix) {
  InfoA(kLogCode, "%s Checking event consistency.  Any issues found will %sbe fixed", __func__,
        fix ? "" : "not ");
  const MutexLock lock(m_mutex);
  int problems = 0;
  if (!checkStore(*m_eventStorage, fix, problems)) return kStoreFailure;
  if (problems == 0) {
    InfoA(kSuccess, "No consistency issues found for event.");
  } else if (problems > 0) {
    ErrorA(kLogCode, "%d issues were found that were unable to be fixed for event", problems);
  }
  if (!checkStore(*m_dsEventStorage, fix, problems)) return kStoreFailure;
  if (problems == 0) {
    InfoA(kSuccess, "No consistency issues found for dsevent.");
  } else if (problems > 0) {
    ErrorA(kLogCode, "%d issues were found that were unable to be fixed for dsevent", problems);
  }
  return kSuccess;
}

void EventManager::updateZRTTimeStamp(unsigned int dsid) {
  const long now = gethrtime();
  for (const auto& [each, lastAccess] : m_accessTimes) {
    const int idle = static_cast<int>(hrtime2seconds(now - lastAccess));
    if (idle > kIdleSeconds) {
      InfoA(kLogCode, "%s data selection (%d) has timeout for %d seconds ", __func__,
            static_cast<int>(each), idle);
    }
  }
  m_accessTimes[dsid] = now;
}

}  // namespace EventSystem
