// The event string in its plain formulation, on the C library's sscanf and snprintf alone: what the
// library must do, to the byte, however it does it. Log lines go to the host as the library's do.
//
// Thread safety: everything works on its arguments only.

#ifndef EVENTSYSTEM_TESTS_ORACLE_EVENTS_EVENTORACLE_H
#define EVENTSYSTEM_TESTS_ORACLE_EVENTS_EVENTORACLE_H

#include "EventSystem/Event.h"

namespace EventSystemTest::Oracle {

// What event.toString(buffer, size) does.
int write(EventSystem::Event& event, char* buffer, unsigned long size);

// What Event::fromString(text, event) does.
int parse(const char* text, EventSystem::Event** event);

// What the class's own fromString(text, event) does; `type` is one of the nine.
int parseSection(int type, const char* text, EventSystem::Event** event);

}  // namespace EventSystemTest::Oracle

#endif
