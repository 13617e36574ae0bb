// Type 7: an action with a severity and a message.

#ifndef EVENTSYSTEM_ACTIVITYEVENT_H
#define EVENTSYSTEM_ACTIVITYEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API ActivityEvent : public Event {
 public:
  // Copies `msg`, which may be NULL. `time` is the producer's own, in seconds since the Unix
  // epoch, and independent of the event's date.
  ActivityEvent(int action, unsigned long time, int severity, const char* msg, unsigned long id);
  ~ActivityEvent() override;

  // As Event::toString(). A NULL message is written as the empty text.
  int toString(char* buffer, unsigned long size) override;

  // As CapacityEvent::fromString(). A message of more than 1020 bytes is refused; an empty one
  // stays the empty text.
  static int fromString(const char* text, Event** event);

 private:
  char* m_msg;  // owned, or NULL
  int m_action;
  int m_severity;
  unsigned long m_time;
};

}  // namespace EventSystem

#endif
