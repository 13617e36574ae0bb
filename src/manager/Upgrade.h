// The copy of the database queue into the cluster store at each start in cluster mode.
//
// Thread safety: none; runs while the manager is built.

#ifndef EVENTSYSTEM_SRC_MANAGER_UPGRADE_H
#define EVENTSYSTEM_SRC_MANAGER_UPGRADE_H

#include "EventSystem/EventStorage.h"
#include "EventSystem/OrbDBEventStorage.h"

namespace EventSystem {

// The database queue as the source of the copy.
class UpgradeSource : public OrbDBEventStorage {
 public:
  using OrbDBEventStorage::getNextId;
};

// Writes every event of `source`, with its own id, into `target`. Events stay in the source, and
// a failure is logged and passed over.
void copyQueue(UpgradeSource& source, EventStorage& target);

}  // namespace EventSystem

#endif
