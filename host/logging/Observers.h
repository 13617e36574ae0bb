// How lines get to those who observe them; between LogObserver.cpp, which knows them, and Log.cpp.
//
// Thread safety: any thread, also at once.

#ifndef EVENTSYSTEM_HOST_LOGGING_OBSERVERS_H
#define EVENTSYSTEM_HOST_LOGGING_OBSERVERS_H

#include <string_view>

#include "host/config/HostConfiguration.h"

namespace EventSystemHost {

// Whether anybody wants to know of a line of this level.
bool isObserved(LogLevel level);

void tellObservers(LogLevel level, int code, std::string_view message);

}  // namespace EventSystemHost

#endif
