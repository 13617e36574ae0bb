// Symbol visibility. The shared library is built with hidden visibility; what carries
// EVENTSYSTEM_API is its public face, what carries EVENTSYSTEM_HOST_API is supplied by the host.

#ifndef EVENTSYSTEM_EXPORT_H
#define EVENTSYSTEM_EXPORT_H

#define EVENTSYSTEM_API __attribute__((visibility("default")))
#define EVENTSYSTEM_HOST_API __attribute__((visibility("default")))

#endif
