#include "EventSystem/ClusterEventStorage.h"

#include "ClusterQueue.h"
#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {
namespace {

constexpr unsigned int kGlobalQueue = 0;

}  // namespace

ClusterEventStorage::ClusterEventStorage() {
  if (TraceOn()) __Trace("%s", __func__);
}

ClusterEventStorage::~ClusterEventStorage() = default;

int ClusterEventStorage::readEvent(unsigned long, Event**) {
  return kStoreFailure;
}

int ClusterEventStorage::getNextEvent(unsigned long afterId, Event** event) {
  ClusterQueue::Entry entry;
  const int result = ClusterQueue(kGlobalQueue).next(afterId, entry, event);
  if (event == nullptr || entry.id == 0) return result;
  assignEventId(*event, entry.id);
  if (result == kGeneralFailure) {
    ClusterQueue::reportUnreadable(entry);
    deleteEvent(entry.id);
  }
  return result;
}

int ClusterEventStorage::writeEvent(Event* event) {
  return ClusterQueue(kGlobalQueue).write(event);
}

void ClusterEventStorage::deleteEvent(unsigned long id) {
  ClusterQueue(kGlobalQueue).remove(id);
}

int ClusterEventStorage::checkConsistency(bool) {
  return 0;
}

int ClusterEventStorage::populateIdCache() {
  return kSuccess;
}

}  // namespace EventSystem
