// Type 6: the ability flags of a server.

#ifndef EVENTSYSTEM_ABILITIESEVENT_H
#define EVENTSYSTEM_ABILITIESEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API AbilitiesEvent : public Event {
 public:
  // Copies `server`, which may be NULL. `flags` are written and read in hexadecimal.
  AbilitiesEvent(int flags, char* server, unsigned long id);
  ~AbilitiesEvent() override;

  // As Event::toString(). A NULL server is written as "(NULL)".
  int toString(char* buffer, unsigned long size) override;

  // As CapacityEvent::fromString().
  static int fromString(const char* text, Event** event);

 private:
  char* m_server;  // owned, or NULL
  int m_flags;
};

}  // namespace EventSystem

#endif
