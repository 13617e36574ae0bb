#include "EventSystem/DSEventStorage.h"

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"
#include "QueueLimits.h"

namespace EventSystem {

DSEventStorage::DSEventStorage() : m_ageLimit(kDefaultAgeLimit), m_countLimit(kDefaultCountLimit) {
  loadLimits();
}

DSEventStorage::~DSEventStorage() = default;

int DSEventStorage::getNextEvent(unsigned long afterId, Event** event, unsigned int dsid) {
  if (event == nullptr) {
    ErrorA(kStoreFailure, "%s The event pointer is NULL.", __func__);
    return kGeneralFailure;
  }
  for (unsigned long id = getNextId(afterId, dsid); id != 0; id = getNextId(id, dsid)) {
    if (readEvent(id, event, dsid) == kSuccess) return kSuccess;
    ErrorA(kStoreFailure, "%s: removing event %lu from cache.", __func__, id);
    removeIdFromCache(id, dsid);
  }
  *event = nullptr;
  return kSuccess;
}

void DSEventStorage::assignEventId(Event* event, unsigned long id) {
  if (event != nullptr) event->m_id = id;
}

void DSEventStorage::addIdToCache(unsigned long id, unsigned int dsid) {
  std::set<unsigned long>& ids = m_idCaches[dsid];
  ids.insert(ids.end(), id);  // ids grow: nearly always the place is there
}

void DSEventStorage::removeIdFromCache(unsigned long id, unsigned int dsid) {
  const auto ids = m_idCaches.find(dsid);
  if (ids != m_idCaches.end()) ids->second.erase(id);
}

unsigned long DSEventStorage::getNextId(unsigned long afterId, unsigned int dsid) {
  const auto ids = m_idCaches.find(dsid);
  if (ids == m_idCaches.end()) return 0;
  const auto maxId = m_maxIds.find(dsid);
  if (maxId == m_maxIds.end() || maxId->second <= afterId) return 0;
  const auto next = ids->second.upper_bound(afterId);
  return next == ids->second.end() ? 0 : *next;
}

void DSEventStorage::loadLimits() {
  readQueueLimits(m_ageLimit, m_countLimit);
}

int DSEventStorage::checkLimits() {
  if (TraceOn()) __Trace("%s Checking event storage limits", __func__);
  return kSuccess;
}

}  // namespace EventSystem
