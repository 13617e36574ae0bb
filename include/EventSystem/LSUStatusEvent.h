// Type 3: a storage unit changed state.

#ifndef EVENTSYSTEM_LSUSTATUSEVENT_H
#define EVENTSYSTEM_LSUSTATUSEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API LSUStatusEvent : public Event {
 public:
  // The valid states are 0, 1 and 2; the library treats them as numbers.
  enum lsuState : unsigned int {};

  // Copies `server`, which may be NULL. A state above 2 is stored as 1.
  LSUStatusEvent(char* server, lsuState state, unsigned long id);
  ~LSUStatusEvent() override;

  // As Event::toString(). A NULL server is written as "(null)" and reads back as that text.
  int toString(char* buffer, unsigned long size) override;

  // As CapacityEvent::fromString().
  static int fromString(const char* text, Event** event);

  unsigned int getState();

 private:
  char* m_server;  // owned, or NULL
  lsuState m_state;
};

}  // namespace EventSystem

#endif
