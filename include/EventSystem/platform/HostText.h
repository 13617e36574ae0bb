// The host's text functions. Declarations only.
//
// Thread safety: pure functions of their arguments.

#ifndef EVENTSYSTEM_PLATFORM_HOSTTEXT_H
#define EVENTSYSTEM_PLATFORM_HOSTTEXT_H

#include "EventSystem/Export.h"

extern "C" {

// Copies `source`, or its first `count` bytes, into `destination`: at most `bound` bytes, the
// terminator included. A NULL source is the empty text. Each returns `destination`.
EVENTSYSTEM_HOST_API char* kvrstrcpy(char* destination, const char* source, unsigned long bound);
EVENTSYSTEM_HOST_API char* kvrstrncpy(char* destination, const char* source, unsigned long count,
                                      unsigned long bound);

// The length of `text`, or `bound` when there is no terminator before it. Never reads past bound.
EVENTSYSTEM_HOST_API unsigned long kvrstrlen(const char* text, unsigned long bound);

// Makes `text` a field of a comma-separated record: wrapped in double quotes, inner quotes
// doubled (RFC 4180), always. At most `size` bytes, terminator included. 0 on success; non-zero
// when the field did not fit and was cut, which leaves its quotes open.
EVENTSYSTEM_HOST_API int QMStringEscapeA(const char* text, char* escaped, unsigned long size);

}  // extern "C"

#endif
