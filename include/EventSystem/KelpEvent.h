// Type 9: an issue of the file-share service.

#ifndef EVENTSYSTEM_KELPEVENT_H
#define EVENTSYSTEM_KELPEVENT_H

#include "EventSystem/Event.h"

namespace EventSystem {

// Thread safety: as Event.
class EVENTSYSTEM_API KelpEvent : public Event {
 public:
  // Copies `string`, which may be NULL. `issue` 3 makes the event carry `file_group`, every other
  // issue `issue_duration`; the other of the two is not written. All codes belong to the producer.
  KelpEvent(int version, int severity, int issue, int share_type, int issue_duration,
            unsigned long file_group, int name, int host, const char* string, unsigned long id);
  ~KelpEvent() override;

  // As Event::toString(). A NULL string is written as "(null)" and reads back as that text.
  int toString(char* buffer, unsigned long size) override;

  // As CapacityEvent::fromString(). A string of more than 1020 bytes comes back cut to 1020.
  static int fromString(const char* text, Event** event);

 private:
  int m_version;
  int m_severity;
  int m_issue;
  int m_shareType;
  int m_issueDuration;
  unsigned long m_fileGroup;
  int m_name;
  int m_host;
  char* m_string;  // owned, or NULL
};

}  // namespace EventSystem

#endif
