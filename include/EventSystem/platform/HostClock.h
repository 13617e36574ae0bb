// The host's monotonic clock. Declarations only.
//
// Thread safety: called from any thread, also at once.

#ifndef EVENTSYSTEM_PLATFORM_HOSTCLOCK_H
#define EVENTSYSTEM_PLATFORM_HOSTCLOCK_H

#include "EventSystem/Export.h"

extern "C" {

// A reading of a clock that never goes back, in the host's own unit.
EVENTSYSTEM_HOST_API long gethrtime(void);

// The difference of two readings in seconds.
EVENTSYSTEM_HOST_API double hrtime2seconds(long difference);

}  // extern "C"

#endif
