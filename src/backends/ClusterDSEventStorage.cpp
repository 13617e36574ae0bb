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
  ClusterQueue::Entry entry;
  const int result = ClusterQueue(dsid).next(afterId, entry, event);
  if (event == nullptr || entry.id == 0) return result;
  if (*event != nullptr) (*event)->m_id = entry.id;
  if (result == kGeneralFailure) {
    ClusterQueue::reportUnreadable(entry);
    deleteEvent(entry.id, dsid);
  }
  return result;
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
