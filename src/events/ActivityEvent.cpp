#include "EventSystem/ActivityEvent.h"

#include <cstdlib>

#include "EventText.h"
#include "Sections.h"

namespace EventSystem {

ActivityEvent::ActivityEvent(int action, unsigned long time, int severity, const char* msg,
                             unsigned long id)
    : Event(kActivityEvent, kInlinePayload, 0, id),
      m_msg(duplicateText(msg)),
      m_action(action),
      m_severity(severity),
      m_time(time) {}

ActivityEvent::~ActivityEvent() {
  free(m_msg);
}

int ActivityEvent::toString(char* buffer, unsigned long size) {
  // The brace before the tag is part of the format, and the version is written, never kept.
  return SectionWriter(*this, buffer, size)
      .write(";{ACTIVITYEVENT{version:1;action:", m_action, ";time:", m_time,
             ";severity:", m_severity, ";msg:", Text{m_msg == nullptr ? "" : m_msg}, ";}}");
}

bool readActivityEvent(SectionReader& section) {
  int version = 0;
  int action = 0;
  unsigned long time = 0;
  int severity = 0;
  char msg[1024];
  return section.open("ACTIVITYEVENT", "{version:", version, ";action:", action, ";time:", time,
                      ";severity:", severity) &&
         section.readLast(";msg:", msg) &&
         section.accept(std::make_unique<ActivityEvent>(action, time, severity, msg, 0));
}

int ActivityEvent::fromString(const char* text, Event** event) {
  return readSection(text, event, readActivityEvent);
}

}  // namespace EventSystem
