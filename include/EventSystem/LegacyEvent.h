// Type 1: an opaque payload text kept from an older event scheme.

#ifndef EVENTSYSTEM_LEGACYEVENT_H
#define EVENTSYSTEM_LEGACYEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API LegacyEvent : public Event {
 public:
  // Copies `payload`, cut at 2047 bytes; NULL is stored as the empty text.
  LegacyEvent(char* payload, unsigned long id);
  ~LegacyEvent() override;

  // As Event::toString().
  int toString(char* buffer, unsigned long size) override;

  // The payload, owned by the event.
  virtual char* getPayload();

  // As CapacityEvent::fromString(). A payload of more than 1020 bytes can be written but is
  // refused here.
  static int fromString(const char* text, Event** event);

 private:
  char m_payload[2048];
};

}  // namespace EventSystem

#endif
