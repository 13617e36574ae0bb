// The host's log. Declarations only; every call's format is checked by the compiler.
//
// Thread safety: called from any thread, also at once.

#ifndef EVENTSYSTEM_PLATFORM_HOSTLOG_H
#define EVENTSYSTEM_PLATFORM_HOSTLOG_H

#include "EventSystem/Export.h"

extern "C" {

// One line at error, warning or information level. `code` is the number that operators look for;
// each returns it.
EVENTSYSTEM_HOST_API int ErrorA(int code, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
EVENTSYSTEM_HOST_API int WarningA(int code, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
EVENTSYSTEM_HOST_API int InfoA(int code, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

// Whether debug lines are wanted; the library formats none when this is 0.
EVENTSYSTEM_HOST_API int TraceOn(void);
EVENTSYSTEM_HOST_API void __Trace(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // extern "C"

#endif
