// Type 8: an audit record with a message of up to 10 KiB.

#ifndef EVENTSYSTEM_AUDITEVENT_H
#define EVENTSYSTEM_AUDITEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API AuditEvent : public Event {
 public:
  // Copies `msg`, cut at 10239 bytes; NULL is stored as the empty text. `time` is the time of the
  // audited action in seconds since the Unix epoch, independent of the event's date.
  AuditEvent(char* msg, int version, int action, unsigned long time, int loadSize,
             unsigned long id);
  ~AuditEvent() override;

  // As Event::toString(), except that a NULL buffer gives 0 and is not logged.
  int toString(char* buffer, unsigned long size) override;

  // The message, owned by the event.
  virtual char* getPayload();

  // As CapacityEvent::fromString(). The message must have 1 to 10236 bytes.
  static int fromString(const char* text, Event** event);

 private:
  char m_message[10240];
  int m_version;
  int m_action;
  int m_loadSize;
  unsigned long m_time;
};

}  // namespace EventSystem

#endif
