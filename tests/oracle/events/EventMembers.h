// The private members of events, for those who compare two events or write one without its class.
//
// Thread safety: reads of the event, except for setEnvelope().

#ifndef EVENTSYSTEM_TESTS_ORACLE_EVENTS_EVENTMEMBERS_H
#define EVENTSYSTEM_TESTS_ORACLE_EVENTS_EVENTMEMBERS_H

#include "EventSystem/Event.h"

namespace EventSystemTest {

void setEnvelope(EventSystem::Event& event, unsigned long id, unsigned long date);

// Whether both are of the same class and hold the same in every member; texts are compared byte by
// byte, and a NULL text equals only NULL.
bool sameMembers(EventSystem::Event& one, EventSystem::Event& other);

}  // namespace EventSystemTest

#endif
