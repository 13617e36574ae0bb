// How a formatted line gets to the log; between Log.cpp, which owns the log, and HostLog.cpp,
// which formats.
//
// Thread safety: any thread, also at once.

#ifndef EVENTSYSTEM_HOST_LOGGING_LINEWRITER_H
#define EVENTSYSTEM_HOST_LOGGING_LINEWRITER_H

#include <string_view>

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Whether a line of this level goes anywhere.
bool logs(LogLevel level);

void writeLine(LogLevel level, int code, std::string_view text) noexcept;

}  // namespace EventSystemHost

#endif
