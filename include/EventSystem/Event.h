// The common base of every queued event, and the event string that carries it.
//
// An event string is one line of text: an envelope,
//   EVENT{version:1;type:5;id:12;date:1700000000
// and the section of the event's class, whose last brace closes the envelope. The grammar of all
// nine kinds is described in docs/event-format.md.
//
// Thread safety: an Event is not synchronised; use one object from one thread at a time. The
// static parsers and toString() touch only their arguments and may run on any number of threads.

#ifndef EVENTSYSTEM_EVENT_H
#define EVENTSYSTEM_EVENT_H

#include "EventSystem/Export.h"

namespace EventSystem {

// The number that the envelope carries. 0 is no type.
enum eventType : int {
  kLegacyEvent = 1,
  kImageRepEvent = 2,
  kLSUStatusEvent = 3,
  kServerStatusEvent = 4,
  kCapacityEvent = 5,
  kAbilitiesEvent = 6,
  kActivityEvent = 7,
  kAuditEvent = 8,
  kKelpEvent = 9
};

// Where an event's payload is.
enum eventPayloadType : int {
  kInlinePayload = 0,   // in the event string
  kDetachedPayload = 1  // in a file that the event names
};

class EVENTSYSTEM_API Event {
 public:
  // `date` is in seconds since the Unix epoch; 0 stands for the current time. `id` is 0 for an
  // event that no store has numbered yet.
  Event(eventType type, eventPayloadType payloadType, unsigned long date, unsigned long id);

  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  virtual ~Event();

  // Writes the event string into `buffer`, at most `size` bytes including the terminator; a
  // string that does not fit is cut and terminated.
  // Returns what snprintf returned for the part written last: the envelope here, the class's
  // section in an override (the last half of it for KelpEvent). Callers use the buffer, not the
  // count. A NULL buffer is logged and gives 9 (AuditEvent: 0, without a log line).
  virtual int toString(char* buffer, unsigned long size);

  // The id that a store gave the event or that its event string carried; 0 before either.
  virtual unsigned long getId();
  virtual eventType getType();
  // Creation time in seconds since the Unix epoch.
  virtual unsigned long getDate();

  // Parses an event string of any type into a new object of the right class, with the id and
  // the date of the envelope. Returns 0 and sets `*event`, which the caller deletes; otherwise
  // logs why, sets `*event` to NULL and returns 9. A NULL `event` gives 9. An envelope of another
  // version is read all the same, with an information line.
  static int fromString(const char* string, Event** event);

 private:
  friend class EventStorage;           // assignEventId()
  friend class DSEventStorage;         // assignEventId()
  friend class ClusterDSEventStorage;  // sets the service's id

  unsigned long m_id;
  eventType m_type;
  eventPayloadType m_payloadType;
  unsigned long m_date;
};

}  // namespace EventSystem

#endif
