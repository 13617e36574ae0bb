#include "EventSystem/ActivityEvent.h"

#include <cstdio>
#include <cstdlib>

#include "EventText.h"

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
  return writeSection(*this, buffer, size,
                      ";{ACTIVITYEVENT{version:1;action:%d;time:%lu;severity:%d;msg:%s;}}",
                      m_action, m_time, m_severity, m_msg == nullptr ? "" : m_msg);
}

int ActivityEvent::fromString(const char* text, Event** event) {
  SectionReader reader(text, event);
  if (!reader.find("ACTIVITYEVENT")) return kGeneralFailure;
  int version = 0;
  int action = 0;
  unsigned long time = 0;
  int severity = 0;
  if (sscanf(reader.section(), "ACTIVITYEVENT{version:%d;action:%d;time:%lu;severity:%d;msg:",
             &version, &action, &time, &severity) != 4) {
    return reader.fail(SectionReader::kBadFormat);
  }
  char msg[1024];
  if (!reader.copyLast(";msg:", msg)) return kGeneralFailure;
  return reader.accept(std::make_unique<ActivityEvent>(action, time, severity, msg, 0));
}

}  // namespace EventSystem
