#include "Upgrade.h"

#include <memory>

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {
namespace {

// A service that throws has failed to write, like one that says so.
bool wasWritten(EventStorage& target, Event& event) {
  try {
    return target.writeEvent(&event) == kSuccess;
  } catch (...) {
    return false;
  }
}

}  // namespace

void copyQueue(UpgradeSource& source, EventStorage& target) {
  unsigned long afterId = 0;
  do {
    Event* next = nullptr;
    const int result = source.getNextEvent(afterId, &next);
    const std::unique_ptr<Event> event(next);
    if (result != kSuccess) {
      InfoA(kSuccess, "Error occurred in upgrading: error getting event from orbd storage.");
    }
    if (event == nullptr) return;
    if (!wasWritten(target, *event)) {
      InfoA(kSuccess, "Error occurred in upgrading: error writing event to cluster storage.");
    }
    const unsigned long id = event->getId();
    if (id == 0) return;
    // A damaged event may carry an id that would lead the copy back; the cache never does.
    afterId = id > afterId ? id : source.getNextId(afterId);
  } while (afterId != 0);
}

}  // namespace EventSystem
