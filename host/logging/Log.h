// The log behind EventSystem/platform/HostLog.h: one line per call, to a rotating file or to
// standard error.
//
// Thread safety: openLog() and closeLog() while no other thread logs; everything else from any
// thread, also at once.

#ifndef EVENTSYSTEM_HOST_LOGGING_LOG_H
#define EVENTSYSTEM_HOST_LOGGING_LOG_H

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Opens the log as configured; throws HostError when its file cannot be written. Without an open
// log, errors and warnings go to standard error.
void openLog(const HostConfiguration& configuration);
void closeLog();

}  // namespace EventSystemHost

#endif
