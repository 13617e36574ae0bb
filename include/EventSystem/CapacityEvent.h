// Type 5: capacity figures of a server.

#ifndef EVENTSYSTEM_CAPACITYEVENT_H
#define EVENTSYSTEM_CAPACITYEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API CapacityEvent : public Event {
 public:
  // Copies `server`, which may be NULL. The four figures are in the producer's unit and are
  // carried unchanged.
  CapacityEvent(char* server, unsigned long capacity, unsigned long capacityphys,
                unsigned long used, unsigned long usedphys, unsigned long id);
  ~CapacityEvent() override;

  // As Event::toString(). A NULL server is written as "(NULL)".
  int toString(char* buffer, unsigned long size) override;

  // Parses the section of a complete event string into a new event with id 0 and the current
  // date. Returns 0 and the caller's event, or logs, sets `*event` to NULL and returns 9. A server
  // name of 125 bytes or more is refused.
  static int fromString(const char* text, Event** event);

 private:
  char* m_server;  // owned, or NULL
  unsigned long m_capacity;
  unsigned long m_capacityphys;
  unsigned long m_used;
  unsigned long m_usedphys;
};

}  // namespace EventSystem

#endif
