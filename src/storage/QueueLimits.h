// The two limits of a queue in the host's configuration, read the same way for every store.
//
// Thread safety: none; called while a store is built.

#ifndef EVENTSYSTEM_SRC_STORAGE_QUEUELIMITS_H
#define EVENTSYSTEM_SRC_STORAGE_QUEUELIMITS_H

namespace EventSystem {

constexpr int kDefaultAgeLimit = 0;        // days; 0: no limit
constexpr int kDefaultCountLimit = 50000;  // events

// Replaces both limits by what the "OrbCentral" file says, taken as it stands, or by the defaults
// for what it does not say. Leaves both alone when the host knows no such file.
void readQueueLimits(int& ageLimit, int& countLimit);

}  // namespace EventSystem

#endif
