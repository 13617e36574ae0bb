#include "Sections.h"

#include "EventSystem/ResultCode.h"
#include "EventSystem/platform/HostLog.h"

namespace EventSystem {

bool refuseArguments(Event** event) {
  if (event == nullptr) {
    ErrorA(kGeneralFailure, "%s The event pointer is NULL.", "fromString");
  } else {
    ErrorA(kGeneralFailure, "%s The event string buffer is NULL.", "fromString");
    *event = nullptr;
  }
  return false;
}

int readSection(const char* text, Event** event, SectionParser parse) {
  if (!haveArguments(text, event)) return kGeneralFailure;
  SectionReader section(text, text, event);
  return parse(section) ? kSuccess : kGeneralFailure;
}

}  // namespace EventSystem
