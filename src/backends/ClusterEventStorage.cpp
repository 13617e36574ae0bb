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
  if (!clearResult(event)) return kGeneralFailure;
  ClusterQueue::Entry entry;
  const int found = ClusterQueue(kGlobalQueue).next(afterId, entry);
  if (found != kSuccess || entry.id == 0) return found;
  const int parsed = Event::fromString(entry.eventString.c_str(), event);
  assignEventId(*event, entry.id);
  if (parsed == kGeneralFailure) {
    ClusterQueue::reportUnreadable(entry);
    deleteEvent(entry.id);
  }
  return parsed;
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
