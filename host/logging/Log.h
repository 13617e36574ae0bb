// The log behind EventSystem/platform/HostLog.h: one line per call, to a rotating file or to
// standard error.
//
// Thread safety: openLog() and closeLog() while no other thread logs; everything else from any
// thread, also at once.

#ifndef EVENTSYSTEM_HOST_LOGGING_LOG_H
#define EVENTSYSTEM_HOST_LOGGING_LOG_H

#include "EventSystem/Export.h"
#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Opens the log as configured; throws HostError when its file cannot be written. Without an open
// log, errors and warnings go to standard error.
void openLog(const HostConfiguration& configuration);
void closeLog();

// How much goes to standard error while no log is open, in place of errors and warnings. For
// programs that use the library's events without a host. Any thread, while no log is open.
EVENTSYSTEM_HOST_API void setLevelWithoutLog(LogLevel level);

// Hands over to the system what was logged so far: lines below warnings wait for company. A process
// that logs seldom and runs long calls this now and then; any thread, while no log is closed.
EVENTSYSTEM_HOST_API void flushLog();

}  // namespace EventSystemHost

#endif
