#include "EventSystem/ClusterDSEventStorage.h"

#include "ClusterQueue.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"
#include "FirstDsid.h"

namespace EventSystem {

ClusterDSEventStorage::ClusterDSEventStorage() {
  if (TraceOn()) __Trace("%s", __func__);
}

ClusterDSEventStorage::~ClusterDSEventStorage() = default;

int ClusterDSEventStorage::readEvent(unsigned long, Event**, unsigned int) {
  return kStoreFailure;
}

int ClusterDSEventStorage::getNextEvent(unsigned long afterId, Event** event, unsigned int dsid) {
  if (!clearResult(event)) return kGeneralFailure;
  ClusterQueue::Entry entry;
  const int found = ClusterQueue(dsid).next(afterId, entry);
  if (found != kSuccess || entry.id == 0) return found;
  const int parsed = Event::fromString(entry.eventString.c_str(), event);
  if (*event != nullptr) (*event)->m_id = entry.id;
  if (parsed == kGeneralFailure) {
    ClusterQueue::reportUnreadable(entry);
    deleteEvent(entry.id, dsid);
  }
  return parsed;
}

int ClusterDSEventStorage::writeEvent(Event* event, unsigned int dsid) {
  return ClusterQueue(dsid).write(event);
}

void ClusterDSEventStorage::deleteEvent(unsigned long id, unsigned int dsid) {
  ClusterQueue(dsid).remove(id);
}

void ClusterDSEventStorage::deleteDataSelection(unsigned int) {}

int ClusterDSEventStorage::checkConsistency(bool) {
  return 0;
}

int ClusterDSEventStorage::getFirstDsid(unsigned int& dsid) {
  return findFirstDsid(dsid);
}

int ClusterDSEventStorage::populateIdCache() {
  return kSuccess;
}

}  // namespace EventSystem
